// The main settings sheet as a host and a user see it.
#include <gtest/gtest.h>

#include <string>

#include "tests/driver/user.h"
#include "tests/driver/world.h"
#include "zrsettings.h"

namespace {

using namespace zr::test;

constexpr char kSettings[] = "SOFTWARE\\Quillmark\\Zephyrion\\Settings";

int current_page_index(const Modal& m) {
    HWND page = reinterpret_cast<HWND>(SendMessageA(m.window, PSM_GETCURRENTPAGEHWND, 0, 0));
    return static_cast<int>(SendMessageA(m.window, PSM_HWNDTOINDEX, reinterpret_cast<WPARAM>(page), 0));
}

class SettingsSheet : public ::testing::Test {
protected:
    void SetUp() override {
        world_reset();
        reg_create_key(kSettings);
        reg_set_string(kSettings, "proxy_path", data_dir().c_str());
        host.apply_marker = 77;
    }
    // Opens the sheet with the scripted user; returns what the module returned.
    int open(User& user) {
        int result = -1;
        user.run([&] { result = create_settings_window(nullptr, nullptr, &host); });
        return result;
    }
    settings_struct host{};
};

TEST_F(SettingsSheet, NtFamilyHasThreePages) {
    set_nt_family(true);
    User user;
    user.check([](const Modal& m) {
            EXPECT_EQ(current_page_index(m), 0);
            EXPECT_FALSE(SendMessageA(m.window, PSM_SETCURSEL, 3, 0)) << "a fourth page exists";
        })
        .show_page(2)
        .check([](const Modal& m) { EXPECT_NE(m.item(300), nullptr) << "site list of the elimination page"; })
        .cancel();
    EXPECT_EQ(open(user), TRUE);
}

TEST_F(SettingsSheet, NineXFamilyAddsTheTcpIpPageLast) {
    set_nt_family(false);
    User user;
    user.show_page(3)
        .check([](const Modal& m) {
            EXPECT_EQ(current_page_index(m), 3);
            EXPECT_NE(m.item(320), nullptr) << "preset buttons of the TCP/IP page";
        })
        .cancel();
    EXPECT_EQ(open(user), TRUE);
}

TEST_F(SettingsSheet, StartPageRequestIsUsedOnce) {
    reg_set_dword(kSettings, "prefetch_settings", 2);
    User first;
    first.check([](const Modal& m) { EXPECT_EQ(current_page_index(m), 2); }).cancel();
    open(first);
    EXPECT_EQ(reg_get_dword(kSettings, "prefetch_settings"), 0u);

    User second;
    second.check([](const Modal& m) { EXPECT_EQ(current_page_index(m), 0); }).cancel();
    open(second);
}

TEST_F(SettingsSheet, OkWithoutAnEditCommitsNothing) {
    User user;
    user.show_page(1).show_page(2).show_page(0).ok();
    EXPECT_EQ(open(user), TRUE);
    EXPECT_EQ(host.apply_marker, 77u);
    EXPECT_FALSE(read_file(data_path("userex.gui")).has_value()) << "no file may be written";
    EXPECT_FALSE(read_file(data_path("exclude.gui")).has_value());
}

TEST_F(SettingsSheet, SheetHasHelpNoContextHelpAndStaysOnTop) {
    User user;
    user.check([](const Modal& m) {
            EXPECT_TRUE(GetWindowLongA(m.window, GWL_EXSTYLE) & WS_EX_TOPMOST);
            EXPECT_FALSE(GetWindowLongA(m.window, GWL_EXSTYLE) & WS_EX_CONTEXTHELP);
            EXPECT_FALSE(GetWindowLongA(m.window, GWL_STYLE) & DS_CONTEXTHELP);
            EXPECT_NE(GetDlgItem(m.window, IDHELP), nullptr);
        })
        .help()
        .cancel();
    open(user);
    EXPECT_EQ(help_requests(), std::vector<std::string>{""});
}

TEST_F(SettingsSheet, SecondOpenBringsTheOpenSheetForward) {
    User user;
    settings_struct other{};
    user.check([&](const Modal& m) {
            EXPECT_EQ(create_settings_window(nullptr, nullptr, &other), TRUE);
            EXPECT_TRUE(IsWindow(m.window));
            EXPECT_TRUE(GetWindowLongA(m.window, GWL_EXSTYLE) & WS_EX_TOPMOST);
        })
        .ok();
    EXPECT_EQ(open(user), TRUE);
    EXPECT_EQ(other.apply_marker, 0u);
}

TEST_F(SettingsSheet, ShowAndHideFollowTheHost) {
    User user;
    user.check([](const Modal& m) {
            state_show_settings_window(0);
            EXPECT_FALSE(IsWindowVisible(m.window));
            state_show_settings_window(1);
            EXPECT_TRUE(IsWindowVisible(m.window));
            state_show_settings_window(2);  // any value but 1 hides
            EXPECT_FALSE(IsWindowVisible(m.window));
            state_show_settings_window(1);
        })
        .cancel();
    open(user);
    state_show_settings_window(1);  // no sheet open: nothing happens
}

TEST_F(SettingsSheet, MissingResourceModuleIsReported) {
    set_resource_module_missing(true);
    User user;
    user.answer_box(IDOK);
    EXPECT_EQ(open(user), FALSE);
    ASSERT_EQ(user.boxes().size(), 1u);
    EXPECT_EQ(user.boxes()[0].text, "Failed to load resource .dll");
    EXPECT_EQ(user.boxes()[0].owner, nullptr);
    EXPECT_EQ(user.boxes()[0].style, static_cast<UINT>(MB_TOPMOST));
}

// Check box 300 of the cache page is the smallest edit a user can make.
TEST_F(SettingsSheet, OkAfterAnEditCommitsOnceAndMarksTheRecord) {
    User user;
    user.show_page(1).show_page(2).show_page(0).click(300).ok();
    open(user);
    EXPECT_EQ(host.cache_option_300, 1);
    EXPECT_EQ(host.apply_marker, 2u);
}

TEST_F(SettingsSheet, CancelThrowsTheEditsAway) {
    User user;
    user.click(300).cancel();
    open(user);
    EXPECT_EQ(host.cache_option_300, 0);
    EXPECT_EQ(host.apply_marker, 77u);

    User again;  // the next opening shows the host's value, not the edit
    again.check([](const Modal& m) { EXPECT_EQ(m.checked(300), BST_UNCHECKED); }).cancel();
    open(again);
}

TEST_F(SettingsSheet, ApplyThenCancelKeepsWhatWasApplied) {
    User user;
    user.click(300)
        .apply()
        .check([](const Modal& m) { EXPECT_FALSE(IsWindowEnabled(GetDlgItem(m.window, 0x3021))); })
        .click(300)
        .cancel();
    open(user);
    EXPECT_EQ(host.cache_option_300, 1);
    EXPECT_EQ(host.apply_marker, 2u);
}

}  // namespace
