// The real zrsettings.dll under Wine, through its exported functions: the
// sheet it opens, the start page request, OK without and with an edit, a
// second opening while the sheet is up, hiding and showing, and a missing
// resource module.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "tests/driver/user.h"
#include "tests/driver/world.h"
#include "zrsettings.h"

namespace {

using zr::test::Modal;
using zr::test::User;

const char* const kSettingsKey = "SOFTWARE\\Quillmark\\Zephyrion\\Settings";
constexpr int kCacheCheckBox = 300;  // "Check cached pages for newer versions"

int page_count(HWND sheet) {
    HWND tabs = reinterpret_cast<HWND>(SendMessageA(sheet, PSM_GETTABCONTROL, 0, 0));
    return static_cast<int>(SendMessageA(tabs, TCM_GETITEMCOUNT, 0, 0));
}

int current_page_index(HWND sheet) {
    HWND tabs = reinterpret_cast<HWND>(SendMessageA(sheet, PSM_GETTABCONTROL, 0, 0));
    return static_cast<int>(SendMessageA(tabs, TCM_GETCURSEL, 0, 0));
}

std::string tab_title(HWND sheet, int index) {
    HWND tabs = reinterpret_cast<HWND>(SendMessageA(sheet, PSM_GETTABCONTROL, 0, 0));
    char text[128] = {};
    TCITEMA item{};
    item.mask = TCIF_TEXT;
    item.pszText = text;
    item.cchTextMax = sizeof text;
    SendMessageA(tabs, TCM_GETITEMA, index, reinterpret_cast<LPARAM>(&item));
    return text;
}

// Top-level property sheets of this thread.
BOOL CALLBACK count_sheet(HWND window, LPARAM count) {
    if (FindWindowExA(window, nullptr, "SysTabControl32", nullptr) != nullptr && IsWindowVisible(window))
        ++*reinterpret_cast<int*>(count);
    return TRUE;
}

int open_sheets() {
    int count = 0;
    EnumThreadWindows(GetCurrentThreadId(), count_sheet, reinterpret_cast<LPARAM>(&count));
    return count;
}

class ModuleTest : public ::testing::Test {
protected:
    void SetUp() override {
        zr::test::world_reset();
        zr::test::reg_set_string(kSettingsKey, "proxy_path", zr::test::data_dir().c_str());
        app_ = zr::test::create_app_window();
        std::memset(&record_, 0, sizeof record_);
        record_.cache_size_mb = 50;
        record_.apply_marker = 77;
    }

    int open_settings(User& user) {
        int result = -1;
        user.run([&] { result = create_settings_window(app_, GetModuleHandleA(nullptr), &record_); });
        return result;
    }

    HWND app_ = nullptr;
    settings_struct record_;
};

TEST_F(ModuleTest, SheetHasThreePagesOnNtAndFourWithTcpIpLastOn9x) {
    for (bool nt : {true, false}) {
        SCOPED_TRACE(nt ? "NT family" : "9x family");
        zr::test::set_nt_family(nt);
        int pages = 0;
        std::string last;
        User user;
        user.check([&](const Modal& m) {
                pages = page_count(m.window);
                last = tab_title(m.window, pages - 1);
            })
            .cancel();
        EXPECT_NE(open_settings(user), 0);
        EXPECT_EQ(pages, nt ? 3 : 4);
        if (!nt) {
            EXPECT_NE(last.find("TCP"), std::string::npos) << last;
        }
    }
}

TEST_F(ModuleTest, StartPageComesFromTheRegistryOnce) {
    zr::test::reg_set_dword(kSettingsKey, "prefetch_settings", 2);
    int first = -1;
    User user;
    user.check([&](const Modal& m) { first = current_page_index(m.window); }).cancel();
    open_settings(user);
    EXPECT_EQ(first, 2);
    EXPECT_EQ(zr::test::reg_get_dword(kSettingsKey, "prefetch_settings"), 0u);

    int second = -1;
    User again;
    again.check([&](const Modal& m) { second = current_page_index(m.window); }).cancel();
    open_settings(again);
    EXPECT_EQ(second, 0);
}

TEST_F(ModuleTest, OkWithoutAnEditLeavesTheRecordAlone) {
    const settings_struct before = record_;
    User user;
    user.show_page(1).show_page(2).ok();
    EXPECT_NE(open_settings(user), 0);
    EXPECT_EQ(std::memcmp(&before, &record_, sizeof record_), 0);
    EXPECT_EQ(record_.apply_marker, 77u);
}

TEST_F(ModuleTest, OkAfterAnEditCommitsAndMarksTheRecord) {
    User user;
    user.click(kCacheCheckBox).ok();
    EXPECT_NE(open_settings(user), 0);
    EXPECT_EQ(record_.apply_marker, 2u);
    EXPECT_EQ(record_.cache_option_300, 1);
    EXPECT_EQ(record_.cache_size_mb, 50u);
}

TEST_F(ModuleTest, SecondOpenWhileUpReturnsTrueWithoutASecondSheet) {
    int nested = -1;
    int sheets = 0;
    User user;
    user.check([&](const Modal&) {
            nested = create_settings_window(app_, GetModuleHandleA(nullptr), &record_);
            sheets = open_sheets();
        })
        .cancel();
    EXPECT_NE(open_settings(user), 0);
    EXPECT_NE(nested, 0);
    EXPECT_EQ(sheets, 1);
}

TEST_F(ModuleTest, StateShowHidesAndShowsTheOpenSheet) {
    bool hidden = true, shown = false;
    User user;
    user.check([&](const Modal& m) {
            state_show_settings_window(0);
            hidden = !IsWindowVisible(m.window);
            state_show_settings_window(1);
            shown = IsWindowVisible(m.window) != FALSE;
        })
        .cancel();
    open_settings(user);
    EXPECT_TRUE(hidden);
    EXPECT_TRUE(shown);
    state_show_settings_window(0);  // no sheet open: nothing happens, nothing breaks
}

TEST_F(ModuleTest, MissingResourceModuleIsReportedAndRefused) {
    zr::test::set_resource_module_missing(true);
    User user;
    user.answer_box(IDOK);
    EXPECT_EQ(open_settings(user), 0);
    ASSERT_EQ(user.boxes().size(), 1u);
    EXPECT_EQ(user.boxes()[0].text, "Failed to load resource .dll");
    EXPECT_EQ(user.boxes()[0].owner, nullptr);
    EXPECT_EQ(open_sheets(), 0);
}

// Enabled when the prefetch sheet replaces its placeholder.
TEST_F(ModuleTest, DISABLED_PrefetchSheetOpensWithThreePagesOnItsFirstPage) {
    User warm_up;  // the prefetch sheet uses what the settings sheet loaded
    warm_up.cancel();
    open_settings(warm_up);

    int pages = 0, first = -1;
    User user;
    user.check([&](const Modal& m) {
            pages = page_count(m.window);
            first = current_page_index(m.window);
        })
        .cancel();
    int result = -1;
    user.run([&] { result = create_prefetch_window(app_, GetModuleHandleA(nullptr), &record_); });
    EXPECT_EQ(result, 0);
    EXPECT_EQ(pages, 3);
    EXPECT_EQ(first, 0);
}

}  // namespace
