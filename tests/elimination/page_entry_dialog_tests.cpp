// The site entry dialog on its own: its results, what it adds to the user
// site list, and the OK rule it shares with the prefetch site dialog.
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "elimination/site_entry_dialog.h"
#include "settings/context.h"
#include "tests/driver/user.h"
#include "tests/driver/world.h"

namespace {

using namespace zr::test;

class SiteEntryDialog : public ::testing::Test {
protected:
    void SetUp() override {
        world_reset();
        g_settings.user_sites.entries.clear();
        g_settings.working = settings_struct{};
        g_settings.resource_module = LoadLibraryA("zrres.dll");
        ASSERT_NE(g_settings.resource_module, nullptr);
    }
    INT_PTR open(User& user) {
        INT_PTR result = -1;
        user.run([&] {
            result = DialogBoxParamA(g_settings.resource_module, MAKEINTRESOURCEA(2007), nullptr,
                                     site_entry_dialog_proc, 0);
        });
        return result;
    }
};

TEST_F(SiteEntryDialog, ResultsAndWhatTheyAdd) {
    struct Case {
        const char* what;
        std::function<void(User&)> script;
        INT_PTR result;
        const char* added;  // null: nothing
    } cases[] = {
        {"ok", [](User& u) { u.type(300, " Ads.Example ").ok(); }, IDOK, " Ads.Example "},
        {"cancel", [](User& u) { u.type(300, "a").cancel(); }, IDCANCEL, nullptr},
        {"close box", [](User& u) { u.type(300, "a").close(); }, 0, nullptr},
        // OK is disabled with an empty name; a command that still arrives closes
        // the dialog and adds nothing.
        {"ok while empty",
         [](User& u) { u.check([](const Modal& m) { SendMessageA(m.window, WM_COMMAND, IDOK, 0); }); }, IDOK,
         nullptr},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        SetUp();
        User user;
        c.script(user);
        EXPECT_EQ(open(user), c.result);
        if (c.added == nullptr) {
            EXPECT_TRUE(g_settings.user_sites.entries.empty());
            EXPECT_EQ(g_settings.working.site_list_changed, 0);
        } else {
            ASSERT_EQ(g_settings.user_sites.entries.size(), 1u);
            const SiteEntry& entry = g_settings.user_sites.entries[0];
            EXPECT_EQ(entry.name, c.added);
            EXPECT_EQ(entry.kind, kSiteEntry);
            EXPECT_EQ(entry.flags, 0u);
            EXPECT_EQ(g_settings.working.site_list_changed, 1);
        }
    }
}

TEST_F(SiteEntryDialog, LongNameIsCutTo1023Characters) {
    User user;
    user.check([](const Modal& m) { SetWindowTextA(m.item(300), std::string(3000, 'n').c_str()); }).ok();
    EXPECT_EQ(open(user), IDOK);
    ASSERT_EQ(g_settings.user_sites.entries.size(), 1u);
    EXPECT_EQ(g_settings.user_sites.entries[0].name, std::string(1023, 'n'));
}

// update_entry_ok, as the prefetch site dialog calls it too.
TEST_F(SiteEntryDialog, OkRuleWithGivenInitialTexts) {
    struct Case {
        const char* first;
        const char* second;
        const char* initial_first;
        const char* initial_second;
        bool ok;
    } cases[] = {
        {"", "", "", "", false},
        {"a", "", "", "", true},
        {"", "3", "", "", false},  // the second field alone never enables OK
        {"site", "3", "site", "3", false},
        {"site", "4", "site", "3", true},
        {"Site", "3", "site", "3", true},  // letter case counts
        {"site", "3", "site", nullptr, true},
        {"", "3", "site", nullptr, false},
        {"site", "", nullptr, "", true},
    };
    User user;
    user.check([&](const Modal& m) {
            for (const Case& c : cases) {
                SetWindowTextA(m.item(300), c.first);
                SetWindowTextA(m.item(302), c.second);
                update_entry_ok(m.window, c.initial_first, c.initial_second);
                EXPECT_EQ(m.enabled(IDOK), c.ok) << c.first << "|" << c.second;
            }
        })
        .cancel();
    open(user);
}

TEST(SiteNameStorable, OnlyWhatTheFileCanCarry) {
    EXPECT_TRUE(site_name_storable(""));
    EXPECT_TRUE(site_name_storable("   "));
    EXPECT_TRUE(site_name_storable("my news%20%"));
    EXPECT_TRUE(site_name_storable("\xE9t\xE9.example"));
    for (const char* bad : {"a#b", "#", "a\tb", "a\nb", "a\vb", "a\fb", "a\rb"}) {
        EXPECT_FALSE(site_name_storable(bad)) << bad;
    }
}

}  // namespace
