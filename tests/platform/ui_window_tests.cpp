// Windows, the stacking order, messages, timers, message boxes and the
// resource module of the headless layer.
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "platform/headless/files.h"
#include "platform/headless/skins.h"
#include "tests/platform/ui_test_support.h"

namespace zr::headless::test {
namespace {

using WindowsTest = UiTest;

std::vector<UINT>& app_messages() {
    static std::vector<UINT> seen;
    return seen;
}

LRESULT CALLBACK app_proc(HWND h, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message >= WM_USER || message == WM_TIMER) app_messages().push_back(message);
    return DefWindowProcA(h, message, wparam, lparam);
}

HWND make_app_window(const char* title = "Zephyrion") {
    WNDCLASSA wc{};
    wc.lpfnWndProc = app_proc;
    wc.lpszClassName = "Zephyrion";
    RegisterClassA(&wc);
    return CreateWindowExA(0, "Zephyrion", title, WS_OVERLAPPEDWINDOW, 0, 0, 100, 100, nullptr, nullptr,
                           nullptr, nullptr);
}

HWND popup(HWND owner = nullptr, DWORD ex_style = 0) {
    return CreateWindowExA(ex_style, "#32770", "popup", WS_POPUP, 0, 0, 10, 10, owner, nullptr, nullptr,
                           nullptr);
}

TEST_F(WindowsTest, StaleHandlesStayStale) {
    HWND first = popup();
    ASSERT_TRUE(IsWindow(first));
    DestroyWindow(first);
    EXPECT_FALSE(IsWindow(first));
    HWND second = popup();
    EXPECT_NE(second, first);  // handles are never reused
    EXPECT_FALSE(IsWindow(first));
    EXPECT_FALSE(SetWindowTextA(first, "x"));
    reset_ui();
    EXPECT_FALSE(IsWindow(second));
}

TEST_F(WindowsTest, TopmostBandStaysAboveOrdinaryWindows) {
    HWND a = popup(), b = popup(), c = popup();
    EXPECT_EQ(top_level_z_order(), (std::vector<HWND>{c, b, a}));
    SetWindowPos(a, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    EXPECT_TRUE(GetWindowLongA(a, GWL_EXSTYLE) & WS_EX_TOPMOST);
    SetWindowPos(b, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    EXPECT_EQ(top_level_z_order(), (std::vector<HWND>{a, b, c}));  // HWND_TOP stays below the band
    HWND d = popup();
    EXPECT_EQ(top_level_z_order().front(), a);
    EXPECT_EQ(top_level_z_order()[1], d);
    SetWindowPos(a, HWND_NOTOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    EXPECT_FALSE(GetWindowLongA(a, GWL_EXSTYLE) & WS_EX_TOPMOST);
    EXPECT_EQ(top_level_z_order().front(), a);  // top of the ordinary band
    SetWindowPos(c, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER);
    EXPECT_FALSE(GetWindowLongA(c, GWL_EXSTYLE) & WS_EX_TOPMOST);  // SWP_NOZORDER ignores the order
}

TEST_F(WindowsTest, OwnedWindowsStayAboveTheirOwner) {
    HWND owner = popup();
    HWND owned = popup(owner);
    HWND other = popup();
    SetWindowPos(owner, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    EXPECT_EQ(top_level_z_order(), (std::vector<HWND>{owned, owner, other}));
    EXPECT_TRUE(GetWindowLongA(owned, GWL_EXSTYLE) & WS_EX_TOPMOST);
    EXPECT_EQ(GetParent(owned), owner);  // a popup's parent is its owner
    DestroyWindow(owner);
    EXPECT_FALSE(IsWindow(owned));  // owned windows go with their owner
}

TEST_F(WindowsTest, PostedMessagesWaitForTheLoop) {
    HWND app = make_app_window();
    ASSERT_EQ(FindWindowA("zephyrion", nullptr), app);  // class names ignore case
    PostMessageA(app, WM_USER + 4, 0, 0);
    EXPECT_TRUE(app_messages().empty());
    pump();
    EXPECT_EQ(app_messages(), std::vector<UINT>{WM_USER + 4});
    app_messages().clear();
    EXPECT_FALSE(PostMessageA(reinterpret_cast<HWND>(0x1234), WM_USER, 0, 0));
}

TEST_F(WindowsTest, TimersFireOnTheVirtualClock) {
    HWND app = make_app_window();
    app_messages().clear();
    SetTimer(app, 1, 500, nullptr);
    advance_time(499);
    EXPECT_TRUE(app_messages().empty());
    advance_time(1001);
    EXPECT_EQ(app_messages().size(), 3u);  // at 500, 1000 and 1500
    KillTimer(app, 1);
    advance_time(1000);
    EXPECT_EQ(app_messages().size(), 3u);
    SetTimer(app, 2, 100, nullptr);
    DestroyWindow(app);  // a window's timers die with it
    advance_time(1000);
    EXPECT_EQ(app_messages().size(), 3u);
    app_messages().clear();
}

TEST_F(WindowsTest, MessageBoxWindowIsFindableWhileUp) {
    HWND owner = popup();
    HWND seen = nullptr;
    bool owner_enabled = true;
    set_message_box_hook([&](HWND box_owner, const char* text, const char* caption, UINT style) {
        EXPECT_EQ(box_owner, owner);
        EXPECT_STREQ(text, "Empty it?");
        EXPECT_STREQ(caption, "Reset Cache?");
        EXPECT_EQ(style, MB_YESNO | MB_ICONQUESTION | MB_TOPMOST);
        seen = FindWindowA("#32770", "Reset Cache?");
        owner_enabled = IsWindowEnabled(owner);
        return IDYES;
    });
    EXPECT_EQ(MessageBoxA(owner, "Empty it?", "Reset Cache?", MB_YESNO | MB_ICONQUESTION | MB_TOPMOST),
              IDYES);
    ASSERT_NE(seen, nullptr);
    EXPECT_FALSE(owner_enabled);
    EXPECT_FALSE(IsWindow(seen));
    EXPECT_TRUE(IsWindowEnabled(owner));
    EXPECT_EQ(ui::message_box_log().back().answer, IDYES);
    EXPECT_EQ(unanswered_message_boxes(), 0);
}

TEST_F(WindowsTest, UnansweredBoxesAreCountedAndDeclined) {
    struct Case {
        UINT style;
        int answer;
        int unanswered;
    };
    const Case cases[] = {{MB_OK | MB_TOPMOST, IDOK, 0},
                          {MB_YESNO, IDNO, 1},
                          {MB_OKCANCEL, IDCANCEL, 2},
                          {MB_YESNOCANCEL, IDCANCEL, 3}};
    for (const Case& c : cases) {
        EXPECT_EQ(MessageBoxA(nullptr, "text", nullptr, c.style), c.answer);
        EXPECT_EQ(unanswered_message_boxes(), c.unanswered);
        EXPECT_EQ(ui::message_box_log().back().caption, "Error");  // the default caption
    }
}

TEST_F(WindowsTest, ResourceModuleByBareNameOnly) {
    EXPECT_EQ(LoadLibraryA("ZRRES.DLL"), module);
    EXPECT_EQ(LoadLibraryA("C:\\x\\zrres.dll"), nullptr);
    EXPECT_EQ(LoadLibraryA("rasapi32.dll"), nullptr);
    set_resource_module_missing(true);
    EXPECT_EQ(LoadLibraryA("zrres.dll"), nullptr);
    reset_ui();
    EXPECT_NE(LoadLibraryA("zrres.dll"), nullptr);  // available again after a reset
    EXPECT_TRUE(winnt());
}

TEST_F(WindowsTest, StringsAndIconsOfTheResourceModule) {
    ASSERT_GT(zr::res::kStringCount, 0u);
    const zr::res::StringResource& s = zr::res::kStrings[0];
    char buffer[1024];
    EXPECT_EQ(LoadStringA(module, static_cast<UINT>(s.id), buffer, sizeof buffer),
              static_cast<int>(std::strlen(s.text)));
    EXPECT_STREQ(buffer, s.text);
    char small[3];
    EXPECT_EQ(LoadStringA(module, static_cast<UINT>(s.id), small, sizeof small), 2);
    EXPECT_EQ(LoadStringA(module, 65000, buffer, sizeof buffer), 0);
    EXPECT_STREQ(buffer, "");
    if (zr::res::kIconCount > 0) {
        EXPECT_NE(LoadIconA(module, MAKEINTRESOURCEA(zr::res::kIcons[0])), nullptr);
        EXPECT_NE(FindResourceA(module, MAKEINTRESOURCEA(zr::res::kIcons[0]), RT_GROUP_ICON), nullptr);
    }
    EXPECT_EQ(LoadIconA(module, MAKEINTRESOURCEA(1)), nullptr);
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_EQ(LoadStringA(module, static_cast<UINT>(s.id), buffer, sizeof buffer), 0);  // unloaded
}

TEST_F(WindowsTest, SkinFilesLoadAsModules) {
    namespace fs = std::filesystem;
    const fs::path dir = fs::temp_directory_path() / ("zr_ui_skins_" + std::to_string(::getpid()));
    fs::create_directories(dir);
    std::ofstream(dir / "good.zsk") << "ZRSKIN\nicon 8011\nbitmap 10000\nexport create_skin_window\n";
    std::ofstream(dir / "bad.zsk") << "MZ\n";
    map_drive('S', dir.string());
    HMODULE skin = LoadLibraryA("S:\\good.zsk");
    ASSERT_NE(skin, nullptr);
    EXPECT_NE(FindResourceA(skin, MAKEINTRESOURCEA(8011), RT_GROUP_ICON), nullptr);
    EXPECT_EQ(FindResourceA(skin, MAKEINTRESOURCEA(8012), RT_GROUP_ICON), nullptr);
    EXPECT_NE(LoadImageA(skin, MAKEINTRESOURCEA(10000), IMAGE_BITMAP, 0, 0, LR_DEFAULTCOLOR), nullptr);
    EXPECT_NE(GetProcAddress(skin, "create_skin_window"), nullptr);
    EXPECT_EQ(GetProcAddress(skin, "other"), nullptr);
    EXPECT_TRUE(FreeLibrary(skin));
    EXPECT_FALSE(FreeLibrary(skin));
    EXPECT_EQ(LoadLibraryA("S:\\bad.zsk"), nullptr);
    EXPECT_EQ(LoadLibraryA("S:\\missing.zsk"), nullptr);
    EXPECT_EQ(live_skin_modules(), 0);
    unmap_drives();
    fs::remove_all(dir);
}

}  // namespace
}  // namespace zr::headless::test
