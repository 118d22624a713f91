// The world a scenario runs in keeps its promises: a fresh data directory
// per test, a registry that starts empty, the application window's record of
// posted requests, the switches of the system family and resource module.
#include <gtest/gtest.h>

#include <string>

#include "platform/zrinfo.h"
#include "platform/zrutil.h"
#include "tests/driver/world.h"

namespace {

using namespace zr::test;

constexpr char kKey[] = "SOFTWARE\\Quillmark\\Zephyrion\\Settings";

class World : public ::testing::Test {
protected:
    void SetUp() override { world_reset(); }
};

TEST_F(World, DataDirectoryIsFreshPerTestAndStableWithinOne) {
    const std::string dir = data_dir();
    EXPECT_EQ(dir, data_dir());
    EXPECT_NE(dir.back(), '\\');
    EXPECT_EQ(data_path("userex.gui"), dir + "\\userex.gui");
    EXPECT_FALSE(read_file(data_path("userex.gui")).has_value());

    const std::string bytes("a\r\nb\0c", 6);
    write_file(data_path("userex.gui"), bytes);
    EXPECT_EQ(read_file(data_path("userex.gui")), bytes);
    remove_file(data_path("userex.gui"));
    EXPECT_FALSE(read_file(data_path("userex.gui")).has_value());

    write_file(data_path("left.dat"), "x");
    world_reset();
    EXPECT_NE(data_dir(), dir);
    EXPECT_FALSE(read_file(data_path("left.dat")).has_value());
    EXPECT_FALSE(read_file(dir + "\\left.dat").has_value()) << "the old directory is removed";
}

TEST_F(World, RegistryStartsWithoutTheProductKeys) {
    EXPECT_FALSE(reg_key_exists("SOFTWARE\\Quillmark"));
    reg_set_dword(kKey, "prefetch_settings", 2);
    reg_set_string(kKey, "proxy_path", "C:\\Zephyrion");
    reg_create_key("SOFTWARE\\Quillmark\\Empty");
    EXPECT_EQ(reg_get_dword(kKey, "prefetch_settings"), 2u);
    EXPECT_EQ(reg_get_string(kKey, "proxy_path"), "C:\\Zephyrion");
    EXPECT_FALSE(reg_get_dword(kKey, "proxy_path").has_value()) << "a string is no DWORD";
    EXPECT_FALSE(reg_get_string(kKey, "missing").has_value());
    EXPECT_TRUE(reg_key_exists("SOFTWARE\\Quillmark\\Empty"));

    reg_delete_tree("SOFTWARE\\Quillmark\\Zephyrion");
    EXPECT_FALSE(reg_key_exists(kKey));
    EXPECT_TRUE(reg_key_exists("SOFTWARE\\Quillmark\\Empty"));
    world_reset();
    EXPECT_FALSE(reg_key_exists("SOFTWARE\\Quillmark\\Empty"));
}

TEST_F(World, ApplicationWindowRecordsPostedRequests) {
    HWND app = create_app_window();
    ASSERT_NE(app, nullptr);
    EXPECT_EQ(FindWindowA("Zephyrion", nullptr), app);
    EXPECT_TRUE(app_window_messages().empty()) << "creation messages are not requests";
    PostMessageA(app, WM_USER + 4, 1, 2);
    PostMessageA(FindWindowA("Zephyrion", nullptr), 0x041F, 0, 0);
    const std::vector<PostedMessage> posted = app_window_messages();
    ASSERT_EQ(posted.size(), 2u);
    EXPECT_EQ(posted[0].message, static_cast<UINT>(WM_USER + 4));
    EXPECT_EQ(posted[0].wparam, 1u);
    EXPECT_EQ(posted[0].lparam, 2);
    EXPECT_EQ(posted[1].message, 0x041Fu);

    world_reset();
    EXPECT_EQ(FindWindowA("Zephyrion", nullptr), nullptr) << "no window is left over";
    EXPECT_TRUE(app_window_messages().empty());
    EXPECT_NE(create_app_window(), nullptr) << "the class can be used again";
}

TEST_F(World, SystemFamilyResourceModuleAndHelpAreSwitchedAndReset) {
    EXPECT_TRUE(is_this_winnt());
    set_nt_family(false);
    EXPECT_FALSE(is_this_winnt());

    set_resource_module_missing(true);
    EXPECT_EQ(LoadLibraryA("zrres.dll"), nullptr);

    show_help_file(nullptr);
    show_help_file("cache.html");
    EXPECT_EQ(help_requests(), (std::vector<std::string>{"", "cache.html"}));

    world_reset();
    EXPECT_TRUE(is_this_winnt());
    HMODULE module = LoadLibraryA("zrres.dll");
    EXPECT_NE(module, nullptr);
    if (module != nullptr) FreeLibrary(module);
    EXPECT_TRUE(help_requests().empty());
}

}  // namespace
