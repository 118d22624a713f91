// The settings store over the registry of the world the test runs in.
#include <gtest/gtest.h>

#include <cstring>

#include "settings/store.h"
#include "tests/driver/world.h"

#ifndef _WIN32
#include "platform/headless/registry.h"
#endif

namespace {

using namespace zr::test;

class Store : public ::testing::Test {
protected:
    void SetUp() override { world_reset(); }
};

TEST_F(Store, DriveRootIsTheCacheDirectoryCutAfterItsFirstBackslash) {
    reg_create_key(kProductKey);
    const struct { const char* value; const char* root; } cases[] = {
        {"C:\\Cache\\Data", "C:\\"},
        {"D:\\Cache", "D:\\"},
        {"D:\\", "D:\\"},
        {"\\\\server\\share", "\\"},
        {"Cache", "Cache"},  // no backslash: the whole value
        {"", ""},
    };
    for (const auto& c : cases) {
        reg_set_string(kProductKey, "cacheDir", c.value);
        EXPECT_EQ(cache_drive_root(), c.root) << c.value;
        EXPECT_EQ(cache_directory(), c.value);
    }
}

TEST_F(Store, MissingProductKeyOrValueGivesEmptyDirectories) {
    EXPECT_EQ(cache_directory(), "");
    EXPECT_EQ(cache_drive_root(), "");
    reg_create_key(kProductKey);  // key without the value
    EXPECT_EQ(cache_directory(), "");
    EXPECT_EQ(cache_drive_root(), "");
}

TEST_F(Store, KeyNamesIgnoreLetterCase) {
    reg_create_key("SOFTWARE\\QUILLMARK\\ZEPHYRION\\SETTINGS");
    reg_set_string("software\\quillmark\\zephyrion\\settings", "proxy_path", "C:\\Zephyrion");
    char dir[260] = {};
    ASSERT_TRUE(read_data_directory(dir, sizeof dir));
    EXPECT_STREQ(dir, "C:\\Zephyrion");
}

TEST_F(Store, ReadsKeepTheirDefaultWhenKeyOrValueIsMissing) {
    EXPECT_EQ(read_dword(kSettingsKey, "prefetch_idle_watch_time", 30), 30u);
    char dir[16] = "untouched";
    EXPECT_FALSE(read_data_directory(dir, sizeof dir));

    reg_create_key(kSettingsKey);
    EXPECT_EQ(read_dword(kSettingsKey, "prefetch_idle_watch_time", 30), 30u);
    reg_set_dword(kSettingsKey, "prefetch_idle_watch_time", 45);
    EXPECT_EQ(read_dword(kSettingsKey, "prefetch_idle_watch_time", 30), 45u);
}

TEST_F(Store, WritesNeverCreateAKey) {
    write_dword(kSettingsKey, "site_elimination", 1);
    EXPECT_FALSE(reg_key_exists(kSettingsKey));

    reg_create_key(kProductKey);
    write_dword(kProductKey, "prefetch_always", 0);
    EXPECT_EQ(reg_get_dword(kProductKey, "prefetch_always"), 0u);
    EXPECT_FALSE(reg_key_exists(kSettingsKey));
}

TEST_F(Store, LongValuesAreCutToTheBuffer) {
    reg_create_key(kSettingsKey);
    const std::string long_path = "C:\\" + std::string(400, 'p');
    reg_set_string(kSettingsKey, "proxy_path", long_path.c_str());
    char small[260];
    std::memset(small, 'z', sizeof small);
    ASSERT_TRUE(read_data_directory(small, sizeof small));
    EXPECT_EQ(std::strlen(small), 259u);
    EXPECT_EQ(std::string(small), long_path.substr(0, 259));
}

#ifndef _WIN32
// The native world starts from an embedded demo installation; the store
// finds it through either spelling of the first key component.
TEST_F(Store, DefaultStoreIsADemoInstallation) {
    const auto loaded = zr::headless::registry_load_default_store();
    ASSERT_TRUE(loaded.ok) << "line " << loaded.line << ": " << loaded.message;
    char dir[260] = {};
    ASSERT_TRUE(read_data_directory(dir, sizeof dir));
    EXPECT_STREQ(dir, "C:\\Zephyrion");
    EXPECT_EQ(cache_drive_root(), "C:\\");
    EXPECT_EQ(read_dword(kSettingsKey, "site_elimination", 0), 1u);
    char build[1024] = {};
    EXPECT_TRUE(read_string(kMakerKey, "zephyrion_pi", build, sizeof build));
    // Saving and loading again gives the same tree.
    const std::string saved = zr::headless::registry_save_reg();
    zr::headless::registry_clear();
    ASSERT_TRUE(zr::headless::registry_load_reg(saved).ok);
    EXPECT_EQ(zr::headless::registry_save_reg(), saved);
}
#endif

}  // namespace
