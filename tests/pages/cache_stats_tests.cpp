// The cache statistics over the files of the world the test runs in.
#include <gtest/gtest.h>

#include <string>

#include "pages/cache/cache_stats.h"
#include "settings/store.h"
#include "tests/driver/world.h"

namespace {

using namespace zr::test;

// An index whose name field, from byte 12, holds `name` (NUL-terminated when
// it is shorter than 36 bytes), followed by the proxy's own trailing bytes.
std::string index_naming(const std::string& name) {
    std::string bytes = "HEADER-12345";
    std::string field = name.substr(0, 36);
    field.resize(36, '\0');
    return bytes + field + "trailing bytes the module never reads";
}

class CacheStats : public ::testing::Test {
protected:
    void SetUp() override {
        world_reset();
        reg_create_key(kProductKey);
        reg_set_string(kProductKey, "cacheDir", data_dir().c_str());
    }
};

TEST_F(CacheStats, SizeOfTheDataFileTheIndexNames) {
    write_file(data_path("cache_data"), index_naming("cache0001.dat"));
    write_file(data_path("cache0001.dat"), std::string(5000, 'x'));
    write_file(data_path("cache0002.dat"), std::string(7, 'x'));
    EXPECT_EQ(read_cache_size(), 5000);
    // The proxy moves on to another data file: the next call follows it.
    write_file(data_path("cache_data"), index_naming("cache0002.dat"));
    EXPECT_EQ(read_cache_size(), 7);
}

TEST_F(CacheStats, EmptyDataFileGivesZero) {
    write_file(data_path("cache_data"), index_naming("empty.dat"));
    write_file(data_path("empty.dat"), "");
    EXPECT_EQ(read_cache_size(), 0);
}

TEST_F(CacheStats, NameFillingAll36BytesIsUsedWhole) {
    const std::string name(32, 'n');  // 32 + ".dat" = 36 characters, no NUL in the field
    ASSERT_EQ((name + ".dat").size(), 36u);
    write_file(data_path("cache_data"), index_naming(name + ".dat"));
    write_file(data_path((name + ".dat").c_str()), "12345");
    EXPECT_EQ(read_cache_size(), 5);
}

TEST_F(CacheStats, IndexEndingInsideTheNameFieldGivesTheShorterName) {
    write_file(data_path("cache_data"), "HEADER-12345abc");
    write_file(data_path("abc"), "1234");
    EXPECT_EQ(read_cache_size(), 4);
}

TEST_F(CacheStats, UnknownWhenAnythingIsMissing) {
    const struct {
        const char* what;
        std::string index;  // "" = no index file
        const char* data;   // null = no data file
    } cases[] = {
        {"no index", "", "data.dat"},
        {"index shorter than 12 bytes", "HEADER", "data.dat"},
        {"index of exactly 12 bytes", "HEADER-12345", "data.dat"},
        {"no data file", index_naming("data.dat"), nullptr},
        {"name of another file", index_naming("other.dat"), "data.dat"},
    };
    for (const auto& c : cases) {
        world_reset();
        reg_create_key(kProductKey);
        reg_set_string(kProductKey, "cacheDir", data_dir().c_str());
        if (!c.index.empty()) write_file(data_path("cache_data"), c.index);
        if (c.data != nullptr) write_file(data_path(c.data), "data");
        EXPECT_EQ(read_cache_size(), -1) << c.what;
    }
}

TEST_F(CacheStats, UnknownWithoutTheCacheDirectoryValue) {
    write_file(data_path("cache_data"), index_naming("data.dat"));
    write_file(data_path("data.dat"), "data");
    reg_delete_tree(kProductKey);
    EXPECT_EQ(read_cache_size(), -1);
}

TEST_F(CacheStats, PathThatWouldNotFitIsRefusedNotCut) {
    // A directory of 250 characters leaves no room for "\cache_data".
    const std::string long_dir = data_dir() + "\\" + std::string(250 - data_dir().size() - 1, 'd');
    EXPECT_EQ(read_cache_size_in(long_dir.c_str()), -1);
}

}  // namespace
