// The in-house pieces that differ by world, headless: resource strings from
// the generated tables, drive sizes and help requests.
#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "platform/headless/files.h"
#include "platform/headless/inhouse_headless.h"
#include "platform/restable.h"
#include "platform/zrinfo.h"
#include "platform/zrutil.h"

namespace {

TEST(ResourceString, IsCutToTheBufferAndTerminated) {
    HMODULE module = LoadLibraryA("zrres.dll");
    ASSERT_NE(module, nullptr);
    ASSERT_GT(zr::res::kStringCount, 0u);
    // The longest string of the module.
    const zr::res::StringResource* longest = &zr::res::kStrings[0];
    for (size_t i = 1; i < zr::res::kStringCount; ++i)
        if (std::strlen(zr::res::kStrings[i].text) > std::strlen(longest->text))
            longest = &zr::res::kStrings[i];
    const std::string full = longest->text;
    ASSERT_GT(full.size(), 8u);

    char roomy[1024];
    EXPECT_EQ(load_res_string(module, static_cast<UINT>(longest->id), roomy, sizeof roomy),
              static_cast<int>(full.size()));
    EXPECT_EQ(roomy, full);

    std::unique_ptr<char[]> tight(new char[8]);
    EXPECT_EQ(load_res_string(module, static_cast<UINT>(longest->id), tight.get(), 8), 7);
    EXPECT_EQ(std::string(tight.get()), full.substr(0, 7));

    std::strcpy(roomy, "stale");
    EXPECT_EQ(load_res_string(module, 65000, roomy, sizeof roomy), 0);
    EXPECT_STREQ(roomy, "");
    EXPECT_EQ(load_res_string(module, static_cast<UINT>(longest->id), roomy, 0), 0);
    FreeLibrary(module);
}

TEST(DriveInfo, SizesComeFromTestsOrTheMappedHostDirectory) {
    zr::headless::clear_drive_sizes();
    zr::headless::unmap_drives();
    DWORD total = 1, free = 1;
    EXPECT_FALSE(get_fixed_drive_info("Q:\\", &total, &free)) << "an unmapped drive is unknown";
    EXPECT_EQ(total, 1u);

    zr::headless::set_drive_size("q:\\", 2048, 512);
    EXPECT_TRUE(get_fixed_drive_info("Q:\\", &total, &free));
    EXPECT_EQ(total, 2048u);
    EXPECT_EQ(free, 512u);
    EXPECT_TRUE(get_fixed_drive_info("Q:", &total, &free));
    EXPECT_FALSE(get_fixed_drive_info("Q:\\Cache", &total, &free)) << "only drive roots";
    EXPECT_FALSE(get_fixed_drive_info(nullptr, &total, &free));
    zr::headless::clear_drive_sizes();

    zr::headless::map_drive('R', std::filesystem::temp_directory_path().string());
    EXPECT_TRUE(get_fixed_drive_info("R:\\", &total, &free));
    EXPECT_GT(total, 0u);
    EXPECT_LE(free, total);
    zr::headless::unmap_drives();
}

TEST(HelpFile, RequestsAreRecorded) {
    zr::headless::clear_help_requests();
    show_help_file(nullptr);
    show_help_file("cache.html");
    EXPECT_EQ(zr::headless::help_requests(), (std::vector<std::string>{"", "cache.html"}));
    zr::headless::clear_help_requests();
    EXPECT_TRUE(zr::headless::help_requests().empty());
}

}  // namespace
