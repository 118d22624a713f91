// Headless skin files: what a skin module would hold, as text.
#include <gtest/gtest.h>

#include "platform/headless/skins.h"
#include "tests/driver/world.h"

namespace {

using namespace zr::headless;

TEST(HeadlessSkins, ParsesTheEntriesOfASkinFile) {
    auto skin = parse_skin_file(
        "ZRSKIN\r\nicon 8011\r\n# comment\r\n\r\nbitmap 10000\r\nexport create_skin_window\r\n");
    ASSERT_TRUE(skin.has_value());
    EXPECT_EQ(skin->icons, std::vector<int>{8011});
    EXPECT_EQ(skin->bitmaps, std::vector<int>{10000});
    EXPECT_EQ(skin->exports, std::vector<std::string>{"create_skin_window"});
    EXPECT_TRUE(parse_skin_file("ZRSKIN\n").has_value());
}

TEST(HeadlessSkins, AnythingElseIsNoSkin) {
    for (const char* text : {"", "MZ\x90", "zrskin\nicon 8011\n", "ZRSKIN\nicon\n", "ZRSKIN\nicon 80x1\n",
                             "ZRSKIN\ncursor 1\n", "ZRSKIN\nexport \n", "ZRSKIN\nicon -1\n"})
        EXPECT_FALSE(parse_skin_file(text).has_value()) << text;
}

TEST(HeadlessSkins, ModulesAnswerForTheirEntriesAndAreFreedOnce) {
    zr::test::world_reset();
    const std::string path = zr::test::data_path("blue.zsk");
    zr::test::write_file(path, "ZRSKIN\nicon 8011\nexport create_skin_window\n");
    const int before = live_skin_modules();
    HMODULE skin = load_skin_module(path.c_str());
    ASSERT_NE(skin, nullptr);
    EXPECT_TRUE(is_skin_module(skin));
    EXPECT_TRUE(skin_has_icon(skin, 8011));
    EXPECT_FALSE(skin_has_bitmap(skin, 10000));
    EXPECT_NE(skin_export(skin, "create_skin_window"), nullptr);
    EXPECT_EQ(skin_export(skin, "Create_Skin_Window"), nullptr);
    EXPECT_EQ(live_skin_modules(), before + 1);
    EXPECT_TRUE(free_skin_module(skin));
    EXPECT_FALSE(free_skin_module(skin));
    EXPECT_FALSE(is_skin_module(skin));
    EXPECT_EQ(live_skin_modules(), before);

    EXPECT_EQ(load_skin_module(zr::test::data_path("missing.zsk").c_str()), nullptr);
    zr::test::write_file(zr::test::data_path("text.zsk"), "not a skin");
    EXPECT_EQ(load_skin_module(zr::test::data_path("text.zsk").c_str()), nullptr);
}

}  // namespace
