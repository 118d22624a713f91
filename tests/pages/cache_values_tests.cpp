// The cache page's arithmetic and texts.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "pages/cache/cache_values.h"

namespace {

TEST(CacheValues, PercentageRoundsToTheNearestWholePercentAndStaysWithin0To100) {
    const struct {
        uint32_t size_mb, drive_mb;
        int percent;
    } cases[] = {
        {500, 1000, 50},
        {500, 1001, 50},
        {4, 1000, 0},
        {5, 1000, 1},
        {994, 1000, 99},
        {995, 1000, 100},
        {1000, 1000, 100},
        {2500, 1000, 100},
        {0, 1000, 0},
        {1, 3, 33},
        {2, 3, 67},
        {0xFFFFFFFFu, 1, 100},
        {1, 0xFFFFFFFFu, 0},
        // No drive size: a share means nothing, and nothing is divided by zero.
        {500, 0, 0},
        {0, 0, 0},
    };
    for (const auto& c : cases)
        EXPECT_EQ(cache_percentage(c.size_mb, c.drive_mb), c.percent) << c.size_mb << "/" << c.drive_mb;
}

TEST(CacheValues, SizeForPositionDropsTheRestInUnsignedArithmetic) {
    const struct {
        uint32_t position, drive_mb, size_mb;
    } cases[] = {
        {50, 1001, 500},
        {90, 1000, 900},
        {3, 1000, 30},
        {3, 33, 0},
        {50, 0, 0},
        // 90 * 50,000,000 is beyond 32 bits: the product wraps before the division.
        {90, 50000000u, static_cast<uint32_t>(90u * 50000000u) / 100u},
    };
    for (const auto& c : cases)
        EXPECT_EQ(cache_size_for_position(c.position, c.drive_mb), c.size_mb) << c.position;
}

TEST(CacheValues, CurrentSizeShowsKilobytesBelowOneMegabyteElseWholeMegabytes) {
    const struct {
        int32_t bytes;
        const char* text;
    } cases[] = {
        {0, "0 KB"},       {1023, "0 KB"},    {1024, "1 KB"},         {1048575, "1023 KB"},
        {1048576, "1 MB"}, {5000000, "4 MB"}, {INT32_MAX, "2047 MB"},
    };
    for (const auto& c : cases) {
        char text[32];
        format_cache_bytes(c.bytes, text, sizeof text);
        EXPECT_STREQ(text, c.text) << c.bytes;
    }
}

TEST(CacheValues, BuildNumberIsEverythingAfterTheFirstLowerCaseBuild) {
    EXPECT_STREQ(build_number_text("Zephyrion 2.1 build 127"), " 127");
    EXPECT_STREQ(build_number_text("build127 build 9"), "127 build 9");
    EXPECT_STREQ(build_number_text("ends in build"), "");
    EXPECT_EQ(build_number_text("Zephyrion 2.1 Build 127"), nullptr);
    EXPECT_EQ(build_number_text(""), nullptr);
}

}  // namespace
