// The site elimination page and the site entry dialog as a user sees them,
// and what reaches the host's record, the registry and the data files.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/driver/user.h"
#include "tests/driver/world.h"
#include "zrsettings.h"

namespace {

using namespace zr::test;

constexpr char kSettings[] = "SOFTWARE\\Quillmark\\Zephyrion\\Settings";
constexpr int kPage = 2;  // the site elimination page
constexpr int kFlagBoxes[] = {302, 303, 304, 309};

std::vector<std::string> rows(const Modal& m) {
    HWND list = m.item(300);
    std::vector<std::string> texts;
    const int count = static_cast<int>(SendMessageA(list, LB_GETCOUNT, 0, 0));
    for (int i = 0; i < count; ++i) {
        std::string text(static_cast<size_t>(SendMessageA(list, LB_GETTEXTLEN, i, 0)) + 1, '\0');
        text.resize(
            static_cast<size_t>(SendMessageA(list, LB_GETTEXT, i, reinterpret_cast<LPARAM>(text.data()))));
        texts.push_back(text);
    }
    return texts;
}

std::vector<std::string> sorted(std::vector<std::string> texts) {
    std::sort(texts.begin(), texts.end());
    return texts;
}

int selected_count(const Modal& m) {
    return static_cast<int>(SendMessageA(m.item(300), LB_GETSELCOUNT, 0, 0));
}

class EliminationPage : public ::testing::Test {
protected:
    void SetUp() override {
        world_reset();
        reg_create_key(kSettings);
        reg_set_string(kSettings, "proxy_path", data_dir().c_str());
        reg_set_dword(kSettings, "site_elimination", 1);
    }
    void sites(const std::string& text) { write_file(data_path("userex.gui"), text); }
    std::string userex() { return read_file(data_path("userex.gui")).value_or("<missing>"); }
    void open(User& user) {
        user.run([&] { EXPECT_EQ(create_settings_window(nullptr, nullptr, &host), TRUE); });
    }
    settings_struct host{};
};

TEST_F(EliminationPage, NothingSelectedLeavesTheFlagBoxesAndRemoveDisabled) {
    sites("a.example p\r\nb.example d\r\n");
    const auto nothing_selected = [](const Modal& m) {
        EXPECT_EQ(selected_count(m), 0);
        for (const int id : kFlagBoxes) {
            EXPECT_FALSE(m.enabled(id)) << id;
            EXPECT_EQ(m.checked(id), BST_UNCHECKED) << id;
        }
        EXPECT_FALSE(m.enabled(308));
        EXPECT_TRUE(m.enabled(305));
        EXPECT_TRUE(m.enabled(306));
        EXPECT_TRUE(m.enabled(307));
    };
    User user;
    user.show_page(kPage)
        .check(nothing_selected)
        .click(305)
        .check([](const Modal& m) {
            EXPECT_EQ(selected_count(m), 2);
            EXPECT_TRUE(m.enabled(308));
            EXPECT_TRUE(m.enabled(309));
        })
        .click(306)
        .check(nothing_selected)
        .cancel();
    open(user);
}

// What one selected site shows: its flags, and which boxes the rule enables.
TEST_F(EliminationPage, SelectedSiteShowsItsFlagsUnderTheEnablingRule) {
    // Rows in the same order sorted or not; the two g rows share a name, and
    // of its two entries the last one in the list decides.
    sites(
        "a.example d\r\nb.example bd\r\nc.example b\r\nd.example pa\r\ne.example o\r\nf.example \r\n"
        "g.example p\r\nG.example a\r\n");
    struct Case {
        int row;
        int b, p, a, d;               // checked
        bool b_on, p_on, a_on, d_on;  // enabled
    } cases[] = {
        {0, 0, 0, 0, 1, false, false, false, true}, {1, 1, 0, 0, 1, false, false, false, true},
        {2, 1, 0, 0, 0, true, false, false, true},  {3, 0, 1, 1, 0, true, true, true, true},
        {4, 0, 0, 0, 0, true, true, true, true},    {5, 0, 0, 0, 0, true, true, true, true},
        {6, 0, 0, 1, 0, true, true, true, true},    {7, 0, 0, 1, 0, true, true, true, true},
    };
    User user;
    user.show_page(kPage);
    for (const Case& c : cases) {
        user.select_rows(300, {c.row}).check([c](const Modal& m) {
            SCOPED_TRACE(c.row);
            EXPECT_EQ(m.checked(302), c.b);
            EXPECT_EQ(m.checked(303), c.p);
            EXPECT_EQ(m.checked(304), c.a);
            EXPECT_EQ(m.checked(309), c.d);
            EXPECT_EQ(m.enabled(302), c.b_on);
            EXPECT_EQ(m.enabled(303), c.p_on);
            EXPECT_EQ(m.enabled(304), c.a_on);
            EXPECT_EQ(m.enabled(309), c.d_on);
            EXPECT_TRUE(m.enabled(308));
        });
    }
    user.cancel();
    open(user);
}

TEST_F(EliminationPage, FlagClickChangesEverySelectedSite) {
    sites("a.example \r\nb.example pd\r\n");
    User user;
    user.show_page(kPage)
        .select_rows(300, {0, 1})
        .check([](const Modal& m) { EXPECT_EQ(m.checked(303), BST_UNCHECKED) << "the first row decides"; })
        .click(303)
        .apply()
        .check([&](const Modal&) { EXPECT_EQ(userex(), "a.example p\r\nb.example pd\r\n"); })
        .click(303)
        .ok();
    open(user);
    EXPECT_EQ(userex(), "a.example \r\nb.example d\r\n");
}

TEST_F(EliminationPage, CheckingBDisablesPAndA) {
    sites("a.example \r\n");
    User user;
    user.show_page(kPage)
        .select_rows(300, {0})
        .click(302)
        .check([](const Modal& m) {
            EXPECT_FALSE(m.enabled(303));
            EXPECT_FALSE(m.enabled(304));
            EXPECT_TRUE(m.enabled(302));
        })
        .click(309)
        .check([](const Modal& m) {
            EXPECT_FALSE(m.enabled(302));
            EXPECT_TRUE(m.enabled(309));
        })
        .ok();
    open(user);
    EXPECT_EQ(userex(), "a.example bd\r\n");
}

TEST_F(EliminationPage, UnlistedSiteSurvivesApply) {
    sites("hidden.example r\r\n# mine\r\nshown.example \r\nother.example Sx\r\n");
    User user;
    user.show_page(kPage)
        .check([](const Modal& m) { EXPECT_EQ(rows(m), std::vector<std::string>{"shown.example"}); })
        .click(301)
        .ok();
    open(user);
    EXPECT_EQ(host.apply_marker, 2u);
    EXPECT_EQ(userex(), "hidden.example r\r\n# mine\r\nshown.example \r\nother.example xS\r\n");
}

TEST_F(EliminationPage, NamesDifferingInCaseAreTwoRowsThatShareEdits) {
    sites("News.Example a\r\nnews.example \r\nlast.example \r\n");
    User user;
    user.show_page(kPage)
        .check([](const Modal& m) {
            EXPECT_EQ(sorted(rows(m)),
                      (std::vector<std::string>{"News.Example", "last.example", "news.example"}));
        })
        .select_rows(300, {1})  // a news row, in either order of the rows
        .click(309)
        .apply()
        .check([&](const Modal&) {
            EXPECT_EQ(userex(), "News.Example ad\r\nnews.example d\r\nlast.example \r\n");
        })
        .select_rows(300, {1})
        .answer_box(IDYES)
        .click(308)
        .check([](const Modal& m) {
            EXPECT_EQ(rows(m).size(), 2u);
            EXPECT_EQ(selected_count(m), 0);
            EXPECT_EQ(m.checked(304), BST_UNCHECKED);
            for (const int id : {302, 303, 304, 308, 309}) EXPECT_FALSE(m.enabled(id)) << id;
        })
        .ok();
    open(user);
    EXPECT_EQ(userex(), "news.example d\r\nlast.example \r\n") << "the first in list order goes";
    EXPECT_EQ(host.site_list_changed, 1);
}

TEST_F(EliminationPage, RemoveAsksTheSheetWindowAndNoKeepsTheSites) {
    sites("a.example \r\nb.example \r\n");
    HWND sheet = nullptr;
    User user;
    user.show_page(kPage)
        .check([&](const Modal& m) { sheet = m.window; })
        .click(305)
        .answer_box(IDNO)
        .click(308)
        .check([](const Modal& m) { EXPECT_EQ(rows(m).size(), 2u); })
        .click(305)
        .answer_box(IDYES)
        .click(308)
        .check([](const Modal& m) { EXPECT_TRUE(rows(m).empty()); })
        .cancel();
    open(user);
    ASSERT_EQ(user.boxes().size(), 2u);
    const User::BoxSeen& box = user.boxes()[0];
    EXPECT_EQ(box.owner, sheet);
    EXPECT_EQ(box.style, static_cast<UINT>(MB_YESNO | MB_ICONQUESTION | MB_TOPMOST));
    EXPECT_FALSE(box.text.empty());
    EXPECT_FALSE(box.caption.empty());
    EXPECT_EQ(userex(), "a.example \r\nb.example \r\n") << "cancel keeps the file";
}

TEST_F(EliminationPage, UseOfTheSiteListIsWrittenAtOnce) {
    sites("a.example \r\n");
    User user;
    user.show_page(kPage)
        .select_rows(300, {0})
        .click(312)
        .check([](const Modal& m) {
            EXPECT_EQ(reg_get_dword(kSettings, "site_elimination"), 0u);
            for (const int id : {300, 307, 308, 302, 303, 304, 309}) EXPECT_FALSE(m.enabled(id)) << id;
            EXPECT_TRUE(m.enabled(305));
            EXPECT_TRUE(m.enabled(306));
        })
        .click(312)
        .check([](const Modal& m) {
            EXPECT_EQ(reg_get_dword(kSettings, "site_elimination"), 1u);
            for (const int id : {300, 307, 308, 302, 303, 304, 309}) EXPECT_TRUE(m.enabled(id)) << id;
        })
        .click(312)
        .cancel();
    open(user);
    EXPECT_EQ(reg_get_dword(kSettings, "site_elimination"), 0u) << "a cancel does not restore it";

    User again;
    again.show_page(kPage)
        .check([](const Modal& m) {
            EXPECT_EQ(m.checked(312), BST_UNCHECKED);
            EXPECT_FALSE(m.enabled(300));
            EXPECT_FALSE(m.enabled(307));
        })
        .cancel();
    open(again);
}

TEST_F(EliminationPage, AdvertisingListSwitchesAndAggressiveChange) {
    struct Case {
        uint8_t ad, aggressive;
        int click;
        uint8_t aggressive_after, changed_after;
    } cases[] = {
        {1, 1, 310, 1, 0},  // already chosen: no change noted
        {1, 0, 311, 0, 0},
        {1, 0, 310, 1, 1},
        {1, 1, 311, 0, 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.click);
        SetUp();
        host = settings_struct{};
        host.ad_list_on = c.ad;
        host.aggressive_elimination = c.aggressive;
        User user;
        user.show_page(kPage).click(c.click).ok();
        open(user);
        EXPECT_EQ(host.aggressive_elimination, c.aggressive_after);
        EXPECT_EQ(host.aggressive_changed, c.changed_after);
        EXPECT_EQ(host.apply_marker, 2u);
    }

    host = settings_struct{};
    User user;
    user.show_page(kPage)
        .check([](const Modal& m) {
            EXPECT_FALSE(m.enabled(310));
            EXPECT_FALSE(m.enabled(311));
            EXPECT_EQ(m.checked(311), BST_CHECKED);
        })
        .click(301)
        .check([](const Modal& m) {
            EXPECT_TRUE(m.enabled(310));
            EXPECT_TRUE(m.enabled(311));
        })
        .ok();
    open(user);
    EXPECT_EQ(host.ad_list_on, 1);
}

TEST_F(EliminationPage, EntryDialogOkFollowsTheName) {
    sites("a.example \r\n");
    User user;
    user.show_page(kPage)
        .click(307)
        .check([](const Modal& m) {
            EXPECT_FALSE(m.enabled(IDOK));
            EXPECT_FALSE(m.visible(302));
            EXPECT_FALSE(m.visible(251));
        })
        .type(300, "x")
        .check([](const Modal& m) { EXPECT_TRUE(m.enabled(IDOK)); })
        .type(300, "")
        .check([](const Modal& m) { EXPECT_FALSE(m.enabled(IDOK)) << "the initial text again"; })
        .type(300, "kept.example")
        .cancel()
        .click(307)
        .type(300, "closed.example")
        .close()
        .click(307)
        .type(300, "a.example")
        .ok()
        .check([](const Modal& m) {
            EXPECT_EQ(rows(m), (std::vector<std::string>{"a.example", "a.example"}));
            EXPECT_EQ(selected_count(m), 0);
        })
        .ok();
    open(user);
    EXPECT_EQ(userex(), "a.example \r\na.example \r\n") << "a name already listed is added again";
}

TEST_F(EliminationPage, NameOfSpacesSurvivesApplyAndReload) {
    User user;
    user.show_page(kPage)
        .click(307)
        .type(300, "   ")
        .ok()
        .apply()
        .check([&](const Modal& m) {
            EXPECT_EQ(userex(), "%20%20%20 \r\n");
            EXPECT_EQ(rows(m), std::vector<std::string>{"   "});
        })
        .ok();
    open(user);

    User again;
    again.show_page(kPage)
        .check([](const Modal& m) { EXPECT_EQ(rows(m), std::vector<std::string>{"   "}); })
        .cancel();
    open(again);
}

TEST_F(EliminationPage, NameTheFileCannotCarryIsRefusedAndTheDialogStays) {
    const char* const bad[] = {"ads#1.example", "tab\there", "form\ffeed"};
    User user;
    user.show_page(kPage).click(307);
    for (const char* name : bad) {
        user.type(300, name).answer_box(IDOK).ok().check([name](const Modal& m) {
            SCOPED_TRACE(name);
            EXPECT_NE(m.item(300), nullptr) << "the entry dialog is still open";
            EXPECT_EQ(m.text(300), name);
            EXPECT_TRUE(m.enabled(IDOK));
        });
    }
    user.type(300, "good name").ok().ok();
    open(user);
    ASSERT_EQ(user.boxes().size(), 3u);
    for (const User::BoxSeen& box : user.boxes()) {
        EXPECT_NE(box.text.find('#'), std::string::npos) << box.text;
        EXPECT_TRUE(box.style & MB_TOPMOST);
    }
    EXPECT_EQ(userex(), "good%20name \r\n");
}

// Names up to the longest line the file holds: the rows are matched whole.
TEST_F(EliminationPage, LongNamesAreEditedAndRemovedWhole) {
    const std::string long_a = "a" + std::string(1500, 'x');
    const std::string long_b = "b" + std::string(2040, 'y');
    sites(long_a + " \r\n" + long_b + " d\r\n");
    User user;
    user.show_page(kPage)
        .check([&](const Modal& m) {
            EXPECT_EQ(rows(m), (std::vector<std::string>{long_a, long_b}));
        })
        .select_rows(300, {0, 1})
        .click(303)
        .apply()
        .check([&](const Modal&) { EXPECT_EQ(userex(), long_a + " p\r\n" + long_b + " pd\r\n"); })
        .select_rows(300, {1})
        .check([](const Modal& m) { EXPECT_EQ(m.checked(309), BST_CHECKED); })
        .answer_box(IDYES)
        .click(308)
        .ok();
    open(user);
    EXPECT_EQ(userex(), long_a + " p\r\n");
}

// Tick the advertising list, add a site, Apply: the record, userex.gui and
// exclude.gui (the user's sites, then the advertising list) byte for byte.
TEST_F(EliminationPage, RoadOfOneEdit) {
    sites("# my sites\r\nold.example p\r\n\r\nquiet.example r\r\n");
    write_file(data_path("excad.dat"), "tracker.example ap\r\nbanner.example \r\n");
    write_file(data_path("aggressive.dat"), "popup.example b\r\n");
    host.aggressive_elimination = 0;
    host.apply_marker = 77;
    User user;
    user.show_page(kPage)
        .click(301)
        .click(307)
        .type(300, "ads.example")
        .ok()
        .apply()
        .check([&](const Modal& m) {
            EXPECT_EQ(host.ad_list_on, 1);
            EXPECT_EQ(host.site_list_changed, 1);
            EXPECT_EQ(host.apply_marker, 2u);
            EXPECT_EQ(sorted(rows(m)), (std::vector<std::string>{"ads.example", "old.example"}));
        })
        .cancel();
    open(user);
    const std::string user_sites = "# my sites\r\nold.example p\r\n\r\nquiet.example r\r\nads.example \r\n";
    EXPECT_EQ(userex(), user_sites);
    EXPECT_EQ(read_file(data_path("exclude.gui")).value_or("<missing>"),
              user_sites + "tracker.example ap\r\nbanner.example \r\n");
}

}  // namespace
