// The in-house pieces that ask the running system, on the real system: the
// family switch, drive sizes and the help page's log switch.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "platform/win.h"
#include "platform/zrinfo.h"
#include "platform/zrutil.h"

namespace {

struct EnvironmentValue {
    const char* name;
    explicit EnvironmentValue(const char* n, const char* value) : name(n) {
        SetEnvironmentVariableA(n, value);
    }
    ~EnvironmentValue() { SetEnvironmentVariableA(name, nullptr); }
};

TEST(SystemFamily, NtUnlessTheSwitchAsksFor9x) {
    EXPECT_TRUE(is_this_winnt());  // Wine reports the NT family
    const struct {
        const char* value;
        bool nt;
    } cases[] = {{"9x", false}, {"9X", false}, {"nt", true}, {"", true}, {"9x ", true}, {"95", true}};
    for (const auto& c : cases) {
        EnvironmentValue family("ZR_WINDOWS_FAMILY", c.value);
        EXPECT_EQ(is_this_winnt(), c.nt) << "ZR_WINDOWS_FAMILY=\"" << c.value << "\"";
    }
    EXPECT_TRUE(is_this_winnt()) << "read at every call";
}

TEST(FixedDrive, SizesOfTheSystemDriveInMegabytes) {
    DWORD total = 0, free_mb = 0;
    ASSERT_TRUE(get_fixed_drive_info("C:\\", &total, &free_mb));
    ULARGE_INTEGER available{}, total_bytes{}, free_bytes{};
    ASSERT_TRUE(GetDiskFreeSpaceExA("C:\\", &available, &total_bytes, &free_bytes));
    EXPECT_EQ(total, static_cast<DWORD>(total_bytes.QuadPart >> 20));
    EXPECT_GT(total, 0u);
    EXPECT_LE(free_mb, total);
}

TEST(FixedDrive, UnknownOrEmptyRootFails) {
    DWORD total = 7, free_mb = 7;
    EXPECT_FALSE(get_fixed_drive_info("", &total, &free_mb));
    EXPECT_FALSE(get_fixed_drive_info(nullptr, &total, &free_mb));
    EXPECT_FALSE(get_fixed_drive_info("Q:\\no such drive\\", &total, &free_mb));
    EXPECT_EQ(total, 7u);
    EXPECT_EQ(free_mb, 7u);
}

TEST(HelpFile, LogSwitchRecordsEachRequestInsteadOfOpening) {
    char directory[MAX_PATH];
    ASSERT_GT(GetTempPathA(sizeof directory, directory), 0u);
    const std::string log = std::string(directory) + "zr-help-test.log";
    DeleteFileA(log.c_str());
    {
        EnvironmentValue help("ZR_HELP_LOG", log.c_str());
        show_help_file(nullptr);
        show_help_file("prefetch.html");
    }
    FILE* in = std::fopen(log.c_str(), "rb");
    ASSERT_NE(in, nullptr);
    char buffer[256] = {};
    const size_t read = std::fread(buffer, 1, sizeof buffer - 1, in);
    std::fclose(in);
    DeleteFileA(log.c_str());
    EXPECT_EQ(std::string(buffer, read), "\nprefetch.html\n");
}

}  // namespace
