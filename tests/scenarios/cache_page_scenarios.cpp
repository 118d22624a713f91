// The cache page as a user sees it: the cache size as a share of the cache
// drive, the live size of the cache, the request to empty the cache, the
// build number and the skin.
#include <gtest/gtest.h>

#include <cctype>
#include <cstdio>
#include <string>

#include "settings/context.h"
#include "tests/driver/user.h"
#include "tests/driver/world.h"
#include "zrsettings.h"

namespace {

using namespace zr::test;

constexpr char kProduct[] = "SOFTWARE\\Quillmark\\Zephyrion";
constexpr char kMaker[] = "Software\\Quillmark";
constexpr char kInvalidSkin[] = "The file you have chosen is not a valid Zephyrion Skin file.";
constexpr int kApplyButton = 0x3021;

int track_position(const Modal& m) { return static_cast<int>(SendMessageA(m.item(303), TBM_GETPOS, 0, 0)); }
bool apply_enabled(const Modal& m) { return IsWindowEnabled(GetDlgItem(m.window, kApplyButton)); }
std::string megabytes(uint32_t mb) { return std::to_string(mb) + " MB"; }
// 304 reads "<percent>% " and the words of the resource module.
void expect_percent(const Modal& m, int percent) {
    const std::string text = m.text(304);
    const std::string lead = std::to_string(percent) + "% ";
    EXPECT_EQ(text.substr(0, lead.size()), lead) << text;
    EXPECT_GT(text.size(), lead.size()) << "the words behind the percentage";
}

// An index in the cache directory naming `name` from byte 12.
std::string index_naming(const std::string& name) {
    std::string field = name;
    field.resize(36, '\0');
    return "HEADER-12345" + field;
}

// A skin file of one of the kinds the skin tests use, installed as
// data_path(as).  Headless skins are text stand-ins; on Windows the real
// modules built with the tests are copied.
enum class Skin { Full, ExportOnly, IconOnly, NotAModule };
std::string install_skin(Skin kind, const char* as) {
    const std::string path = data_path(as);
#ifdef _WIN32
    static const char* const kBuilt[] = {"skin_full.zsk", "skin_export.zsk", "skin_icon.zsk",
                                         "not_a_skin.zsk"};
    char exe[MAX_PATH] = {};
    GetModuleFileNameA(nullptr, exe, sizeof exe);
    std::string dir = exe;
    dir.resize(dir.rfind('\\'));
    for (const char* up : {"\\skins\\", "\\..\\skins\\", "\\..\\..\\skins\\", "\\..\\..\\..\\skins\\"}) {
        if (auto bytes = read_file(dir + up + kBuilt[static_cast<int>(kind)])) {
            write_file(path, *bytes);
            return path;
        }
    }
    ADD_FAILURE() << "test skins not built";
#else
    static const char* const kText[] = {
        "ZRSKIN\nicon 8011\nbitmap 10000\n",
        "ZRSKIN\nexport create_skin_window\n",
        "ZRSKIN\nicon 8011\n",
        "MZ but not a module at all\n",
    };
    write_file(path, kText[static_cast<int>(kind)]);
#endif
    return path;
}

class CachePage : public ::testing::Test {
protected:
    void SetUp() override {
        world_reset();
        reg_create_key(kProduct);
        reg_set_string(kProduct, "cacheDir", data_dir().c_str());
        host.apply_marker = 77;
    }
    void open(User& user) {
        user.run([&] { create_settings_window(nullptr, nullptr, &host); });
    }
    settings_struct host{};
};

TEST_F(CachePage, HalfTheDriveShowsFiftyPercent) {
    const uint32_t drive = set_cache_drive_size(1000);
    ASSERT_GT(drive, 200u);
    host.cache_size_mb = drive / 2;  // 500 MB of 1,000 MB headless
    User user;
    user.check([&](const Modal& m) {
            EXPECT_EQ(m.text(302), megabytes(drive / 2));
            EXPECT_EQ(track_position(m), 50);
            expect_percent(m, 50);
            EXPECT_EQ(m.text(306), "");
        })
        .cancel();
    open(user);
}

TEST_F(CachePage, SizeAboveTheDriveShowsAHundredAndTheTrackBarStopsAtNinety) {
    const uint32_t drive = set_cache_drive_size(1000);
    host.cache_size_mb = drive + drive / 2;
    User user;
    user.check([](const Modal& m) {
            EXPECT_EQ(track_position(m), 90);
            expect_percent(m, 100);
        })
        .scroll(303, TB_THUMBTRACK, 90)
        .check([&](const Modal& m) { EXPECT_EQ(m.text(302), megabytes(90 * drive / 100)); })
        .ok();
    open(user);
    EXPECT_EQ(host.cache_size_mb, 90 * drive / 100);  // 900 on 1,000 MB
}

TEST_F(CachePage, DraggingToFiftyOnAnOddDriveDropsTheRest) {
    const uint32_t drive = set_cache_drive_size(1001);
    User user;
    user.scroll(303, TB_THUMBTRACK, 50)
        .check([&](const Modal& m) {
            EXPECT_EQ(m.text(302), megabytes(50 * drive / 100));  // 500 MB of 1,001
            expect_percent(m, 50);
            EXPECT_TRUE(apply_enabled(m));
        })
        .cancel();
    open(user);
}

TEST_F(CachePage, OnlyMovesThatEndSomewhereChangeTheSize) {
    const uint32_t drive = set_cache_drive_size(1000);
    host.cache_size_mb = 10 * drive / 100;
    User user;
    const struct {
        int code, position;
        bool moves;
    } moves[] = {
        {TB_LINEUP, 20, true},     {TB_LINEDOWN, 21, true},
        {TB_PAGEUP, 30, true},     {TB_PAGEDOWN, 40, true},
        {TB_TOP, 3, true},         {TB_BOTTOM, 90, true},
        {TB_THUMBTRACK, 60, true}, {TB_THUMBPOSITION, 70, false},
        {TB_ENDTRACK, 80, false},
    };
    uint32_t expected = host.cache_size_mb;
    for (const auto& move : moves) {
        if (move.moves) expected = static_cast<uint32_t>(move.position) * drive / 100;
        user.scroll(303, move.code, move.position).check([=](const Modal& m) {
            EXPECT_EQ(m.text(302), megabytes(expected)) << "scroll code " << move.code;
        });
    }
    user.ok();
    open(user);
    EXPECT_EQ(host.cache_size_mb, expected);  // the last move that ended somewhere: 60%
    EXPECT_EQ(host.apply_marker, 2u);
}

TEST_F(CachePage, LiveSizeOfTheCacheDataFile) {
    write_file(data_path("cache_data"), index_naming("cache.dat"));
    write_file(data_path("cache.dat"), std::string(1048575, 'c'));
    User user;
    const struct {
        size_t bytes;
        const char* shown;
    } sizes[] = {{1048575, "1023 KB"}, {1048576, "1 MB"}, {5000000, "4 MB"}, {0, "0 KB"}};
    user.check([](const Modal& m) { EXPECT_EQ(m.text(301), "1023 KB") << "shown when the page opens"; });
    for (const auto& size : sizes) {
        user.check([=](const Modal&) { write_file(data_path("cache.dat"), std::string(size.bytes, 'c')); })
            .wait(600)
            .check([=](const Modal& m) { EXPECT_EQ(m.text(301), size.shown) << size.bytes; });
    }
    user.cancel();
    open(user);
}

TEST_F(CachePage, MissingIndexLeavesTheLastSizeShown) {
    write_file(data_path("cache_data"), index_naming("cache.dat"));
    write_file(data_path("cache.dat"), std::string(2048, 'c'));
    User user;
    user.check([](const Modal& m) { EXPECT_EQ(m.text(301), "2 KB"); })
        .check([](const Modal&) { remove_file(data_path("cache_data")); })
        .wait(1100)
        .check([](const Modal& m) { EXPECT_EQ(m.text(301), "2 KB"); })
        .cancel();
    open(user);
}

TEST_F(CachePage, BuildNumberIsTheTextAfterBuild) {
    reg_create_key(kMaker);
    reg_set_string(kMaker, "zephyrion_pi", "Zephyrion 3.0 build 127");
    User user;
    user.check([](const Modal& m) { EXPECT_EQ(m.text(312), "Build number  127"); }).cancel();
    open(user);
}

TEST_F(CachePage, AnsweringNoSendsNothingAndLeavesApplyAsItWas) {
    create_app_window();
    User user;
    user.answer_box(IDNO).click(305).check([](const Modal& m) { EXPECT_FALSE(apply_enabled(m)); }).ok();
    open(user);
    ASSERT_EQ(user.boxes().size(), 1u);
    EXPECT_EQ(user.boxes()[0].caption, "Reset Cache?");
    EXPECT_EQ(user.boxes()[0].style, static_cast<UINT>(MB_YESNO | MB_ICONQUESTION | MB_TOPMOST));
    EXPECT_NE(user.boxes()[0].owner, nullptr) << "owned by the sheet";
    EXPECT_TRUE(app_window_messages().empty());
    EXPECT_EQ(host.apply_marker, 77u);
}

// While a question box or file dialog of the page is open, Reset brings the
// open question back to the top and asks nothing; the skin button does nothing.
TEST_F(CachePage, SecondRequestWhileAQuestionIsOpenAsksNothing) {
    create_app_window();
    HWND question = CreateWindowExA(0, "#32770", "Reset Cache?", WS_POPUP, 0, 0, 100, 50, nullptr, nullptr,
                                    nullptr, nullptr);
    ASSERT_NE(question, nullptr);
    User user;
    user.check([&](const Modal&) {
            EXPECT_FALSE(GetWindowLongA(question, GWL_EXSTYLE) & WS_EX_TOPMOST);
            g_settings.modal_guard = 1;
        })
        .click(305)
        .click(311)
        .check([&](const Modal&) {
            EXPECT_TRUE(GetWindowLongA(question, GWL_EXSTYLE) & WS_EX_TOPMOST);
            g_settings.modal_guard = 0;
        })
        .cancel();
    open(user);
    DestroyWindow(question);
    EXPECT_TRUE(user.boxes().empty());
    EXPECT_TRUE(app_window_messages().empty());
}

TEST_F(CachePage, AnsweringYesAsksTheApplicationToEmptyTheCache) {
    create_app_window();
    User user;
    user.answer_box(IDYES).click(305).cancel();
    open(user);
    const auto posted = app_window_messages();
    ASSERT_EQ(posted.size(), 1u);
    EXPECT_EQ(posted[0].message, 1028u);
    EXPECT_EQ(posted[0].wparam, 0u);
    EXPECT_EQ(posted[0].lparam, 0);
}

TEST_F(CachePage, EditThenOkReachesTheHostRecord) {
    const uint32_t drive = set_cache_drive_size(1000);
    User user;
    user.scroll(303, TB_THUMBTRACK, 40).click(300).ok();
    open(user);
    EXPECT_EQ(host.cache_size_mb, 40 * drive / 100);
    EXPECT_EQ(host.cache_option_300, 1);
    EXPECT_EQ(host.apply_marker, 2u);
}

TEST_F(CachePage, UnknownDriveShowsNoShareAndKeepsTheSize) {
    reg_set_string(kProduct, "cacheDir", "Q:\\Cache");  // no such drive in either world
    host.cache_size_mb = 500;
    User user;
    user.check([](const Modal& m) {
            EXPECT_EQ(m.text(302), "500 MB");
            expect_percent(m, 0);
            EXPECT_EQ(track_position(m), 3);
            EXPECT_FALSE(m.enabled(303));
            // A move that still arrives is ignored: there is no drive to take a share of.
            SendMessageA(m.page, WM_HSCROLL, MAKEWPARAM(TB_THUMBTRACK, 50),
                         reinterpret_cast<LPARAM>(m.item(303)));
            EXPECT_EQ(m.text(302), "500 MB");
        })
        .ok();
    open(user);
    EXPECT_EQ(host.cache_size_mb, 500u);
    EXPECT_EQ(host.apply_marker, 77u);
}

TEST_F(CachePage, DriveOfSizeZeroIsTreatedAsUnknown) {
    if (set_cache_drive_size(0) != 0) GTEST_SKIP() << "a real drive cannot be given the size 0";
    host.cache_size_mb = 500;
    User user;
    user.check([](const Modal& m) {
            expect_percent(m, 0);
            EXPECT_EQ(track_position(m), 3);
            EXPECT_FALSE(m.enabled(303));
        })
        .cancel();
    open(user);
}

TEST_F(CachePage, ChoosingAUsableSkinSetsItOnApply) {
    const std::string full = install_skin(Skin::Full, "Ocean.zsk");
    const std::string exported = install_skin(Skin::ExportOnly, "window.zsk");
    User user;
    user.choose_file(full)
        .click(311)
        .check([](const Modal& m) { EXPECT_EQ(m.text(310), "Ocean.zsk"); })
        .apply()
        .choose_file(exported)
        .click(311)
        .check([](const Modal& m) { EXPECT_EQ(m.text(310), "window.zsk"); })
        .ok();
    open(user);
    EXPECT_EQ(std::string(host.skin_path), exported);
    EXPECT_EQ(host.skin_changed, 1);
    EXPECT_TRUE(user.boxes().empty());
}

TEST_F(CachePage, SameSkinInOtherLetterCaseChangesNothing) {
    const std::string skin = install_skin(Skin::Full, "ocean.zsk");
    std::snprintf(host.skin_path, sizeof host.skin_path, "%s", skin.c_str());
    std::string shouted = skin;
    for (char& c : shouted) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    User user;
    user.check([](const Modal& m) { EXPECT_EQ(m.text(310), "ocean.zsk"); })
        .choose_file(shouted)
        .click(311)
        .check([](const Modal& m) {
            EXPECT_EQ(m.text(310), "ocean.zsk");
            EXPECT_FALSE(apply_enabled(m));
        })
        .choose_file("")  // cancelled
        .click(311)
        .ok();
    open(user);
    EXPECT_EQ(host.apply_marker, 77u);
    EXPECT_EQ(host.skin_changed, 0);
    EXPECT_TRUE(user.boxes().empty());
}

TEST_F(CachePage, UnusableSkinsAreRefusedWithAMessage) {
    const std::string icon_only = install_skin(Skin::IconOnly, "icon.zsk");
    const std::string not_module = install_skin(Skin::NotAModule, "text.zsk");
    User user;
    user.choose_file(icon_only).answer_box(IDOK).click(311);
    user.choose_file(not_module).answer_box(IDOK).click(311);
    user.choose_file(data_path("missing.zsk")).answer_box(IDOK).click(311);
    user.check([](const Modal& m) { EXPECT_FALSE(apply_enabled(m)); }).ok();
    open(user);
    ASSERT_EQ(user.boxes().size(), 3u);
    for (const auto& box : user.boxes()) {
        EXPECT_EQ(box.text, kInvalidSkin);
        EXPECT_EQ(box.owner, nullptr);
        EXPECT_EQ(box.style, static_cast<UINT>(MB_TOPMOST));
    }
    EXPECT_EQ(std::string(host.skin_path), "");
    EXPECT_EQ(host.apply_marker, 77u);
}

TEST_F(CachePage, SkinPathLongerThanTheRecordHoldsIsRefused) {
#ifdef _WIN32
    GTEST_SKIP() << "the real open-file dialog hands back no path beyond 259 characters";
#endif
    const std::string long_path = data_dir() + "\\" + std::string(300, 's') + ".zsk";
    User user;
    user.choose_file(long_path).answer_box(IDOK).click(311).ok();
    open(user);
    ASSERT_EQ(user.boxes().size(), 1u);
    EXPECT_NE(user.boxes()[0].text.find("too long"), std::string::npos) << user.boxes()[0].text;
    EXPECT_EQ(user.boxes()[0].style, static_cast<UINT>(MB_TOPMOST));
    EXPECT_EQ(std::string(host.skin_path), "");
    EXPECT_EQ(host.apply_marker, 77u);
}

}  // namespace
