// The in-house helpers: edit-field numbers, resource strings, window
// centring, drive sizes and help requests.
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

struct Window {
    HWND handle;
    explicit Window(HWND h) : handle(h) {}
    ~Window() {
        if (handle != nullptr) DestroyWindow(handle);
    }
};

HWND make_edit(const char* text) {
    return CreateWindowExA(0, "Edit", text, WS_POPUP, 0, 0, 100, 20, nullptr, nullptr, nullptr, nullptr);
}

TEST(EditInt, ReadsTheDocumentedRule) {
    struct Case {
        const char* text;
        UINT expected;
    };
    const std::vector<Case> cases = {
        {"", 0},
        {"0", 0},
        {"1500", 1500},
        {"   42", 42},
        {"\t7", 7},
        {"12abc", 12},
        {"12 34", 12},
        {"abc", 0},
        {"+5", 0},
        {"-", 0},
        {"-1", 0xFFFFFFFFu},
        {"-5", 0xFFFFFFFBu},
        {"4294967295", 0xFFFFFFFFu},
        {"4294967296", 0xFFFFFFFFu},
        {"99999999999999999999999", 0xFFFFFFFFu},
        {"-99999999999", 0xFFFFFFFFu},
        {"0x1F", 0},
        {"007", 7},
    };
    for (const Case& c : cases) {
        Window edit(make_edit(c.text));
        ASSERT_NE(edit.handle, nullptr);
        EXPECT_EQ(Edit_GetInt(edit.handle), c.expected) << '"' << c.text << '"';
    }

    // Only the first 259 characters count: digits beyond them are not read.
    std::string padded(255, ' ');
    padded += "123456";
    Window edit(make_edit(padded.c_str()));
    EXPECT_EQ(Edit_GetInt(edit.handle), 1234u);
}

TEST(EditInt, WritesUnsignedDecimal) {
    Window edit(make_edit("old"));
    char text[32];
    for (UINT value : {0u, 30u, 4294967295u}) {
        Edit_SetInt(edit.handle, value);
        GetWindowTextA(edit.handle, text, sizeof text);
        EXPECT_EQ(std::string(text), std::to_string(value));
        EXPECT_EQ(Edit_GetInt(edit.handle), value);
    }
}

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

TEST(CenterWindow, CentresOnTheReferenceOrTheScreenAndStaysOnScreen) {
    const int screen_w = GetSystemMetrics(SM_CXSCREEN);
    const int screen_h = GetSystemMetrics(SM_CYSCREEN);
    ASSERT_GT(screen_w, 400);
    ASSERT_GT(screen_h, 300);
    Window owner(
        CreateWindowExA(0, "Static", "", WS_POPUP, 100, 50, 400, 300, nullptr, nullptr, nullptr, nullptr));
    Window dialog(
        CreateWindowExA(0, "Static", "", WS_POPUP, 0, 0, 200, 100, nullptr, nullptr, nullptr, nullptr));
    RECT rc{};

    center_window(owner.handle, dialog.handle);
    GetWindowRect(dialog.handle, &rc);
    EXPECT_EQ(rc.left, 100 + (400 - 200) / 2);
    EXPECT_EQ(rc.top, 50 + (300 - 100) / 2);
    EXPECT_EQ(rc.right - rc.left, 200) << "the size is kept";

    center_window(nullptr, dialog.handle);
    GetWindowRect(dialog.handle, &rc);
    EXPECT_EQ(rc.left, (screen_w - 200) / 2);
    EXPECT_EQ(rc.top, (screen_h - 100) / 2);

    // A reference hanging off the top-left corner: the window is pulled back.
    MoveWindow(owner.handle, -300, -300, 200, 100, FALSE);
    center_window(owner.handle, dialog.handle);
    GetWindowRect(dialog.handle, &rc);
    EXPECT_EQ(rc.left, 0);
    EXPECT_EQ(rc.top, 0);
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
