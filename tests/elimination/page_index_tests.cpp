// The grouping of site entries by folded name must give the page exactly what
// comparing each row with every entry gives: the same entries changed by a
// flag change, the same entries removed by a remove.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "elimination/site_index.h"

namespace {

SiteEntry site(std::string name, uint32_t flags = 0) { return SiteEntry{flags, kSiteEntry, std::move(name)}; }
SiteEntry kept(std::string line) { return SiteEntry{0, kKeptLine, std::move(line)}; }

// Reference: every row compared with every entry.
void naive_change(UserSiteList& list, const std::vector<std::string>& rows, bool set, uint32_t bit) {
    for (const std::string& row : rows) {
        for (SiteEntry& entry : list.entries) {
            if (entry.kind == kSiteEntry && site_names_match(entry.name, row)) {
                entry.flags = set ? entry.flags | bit : entry.flags & ~bit;
            }
        }
    }
}
void naive_remove(UserSiteList& list, const std::vector<std::string>& rows) {
    for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
        for (size_t i = 0; i < list.entries.size(); ++i) {
            if (list.entries[i].kind == kSiteEntry && site_names_match(list.entries[i].name, *row)) {
                list.entries.erase(list.entries.begin() + static_cast<long>(i));
                break;
            }
        }
    }
}

// The same operations through the index, as the page does them.
void indexed_change(UserSiteList& list, const std::vector<std::string>& rows, bool set, uint32_t bit) {
    SiteIndex index;
    build_site_index(index, list);
    for (const std::string& row : rows) {
        const uint32_t slot = find_site_group(index, list, row);
        if (slot == kNoSite) continue;
        for (uint32_t p = index.slot_first[slot]; p != kNoSite; p = index.next[p]) {
            list.entries[p].flags = set ? list.entries[p].flags | bit : list.entries[p].flags & ~bit;
        }
    }
}
void indexed_remove(UserSiteList& list, const std::vector<std::string>& rows) {
    SiteIndex index;
    build_site_index(index, list);
    std::vector<uint8_t> marked(list.entries.size(), 0);
    for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
        const uint32_t slot = find_site_group(index, list, *row);
        if (slot == kNoSite) continue;
        const uint32_t p = take_first_site(index, slot);
        if (p != kNoSite) marked[p] = 1;
    }
    remove_marked_sites(list, marked);
}

bool same(const UserSiteList& a, const UserSiteList& b) {
    if (a.entries.size() != b.entries.size()) return false;
    for (size_t i = 0; i < a.entries.size(); ++i) {
        const SiteEntry& x = a.entries[i];
        const SiteEntry& y = b.entries[i];
        if (x.flags != y.flags || x.kind != y.kind || x.name != y.name) return false;
    }
    return true;
}

TEST(SiteNames, FoldOnlyTheLettersAToZ) {
    struct Case {
        const char* a;
        const char* b;
        bool match;
    } cases[] = {
        {"News.Example", "news.example", true},
        {"ABC", "abc", true},
        {"abc", "abcd", false},
        {"\xC4pfel", "\xE4pfel", false},  // Latin-1 letters are not folded
        {"[", "{", false},                // 0x5B and 0x7B differ by 32 but are no letters
        {"@", "`", false},
        {"", "", true},
        {"a b", "A B", true},
    };
    for (const Case& c : cases) EXPECT_EQ(site_names_match(c.a, c.b), c.match) << c.a << " / " << c.b;
}

TEST(SiteIndex, GroupsInListOrderAndLeavesKeptLinesOut) {
    UserSiteList list;
    list.entries = {site("Ads.Example", 1), kept("ads.example"), site("other"), site("ADS.example", 4),
                    site("ads.exampl")};
    SiteIndex index;
    build_site_index(index, list);
    const uint32_t slot = find_site_group(index, list, "ads.EXAMPLE");
    ASSERT_NE(slot, kNoSite);
    std::vector<uint32_t> positions;
    for (uint32_t p = index.slot_first[slot]; p != kNoSite; p = index.next[p]) positions.push_back(p);
    EXPECT_EQ(positions, (std::vector<uint32_t>{0, 3}));
    EXPECT_EQ(find_site_group(index, list, "missing"), kNoSite);
    EXPECT_EQ(find_site_group(index, list, ""), kNoSite);

    EXPECT_EQ(take_first_site(index, slot), 0u);
    EXPECT_EQ(take_first_site(index, slot), 3u);
    EXPECT_EQ(take_first_site(index, slot), kNoSite);
    // An emptied group is still found, and stays empty.
    EXPECT_EQ(find_site_group(index, list, "Ads.Example"), slot);
}

TEST(SiteIndex, EmptyList) {
    UserSiteList list;
    SiteIndex index;
    build_site_index(index, list);
    EXPECT_EQ(find_site_group(index, list, "a"), kNoSite);
    remove_marked_sites(list, {});
    EXPECT_TRUE(list.entries.empty());
}

TEST(SiteIndex, RemovalKeepsTheOthersInOrder) {
    UserSiteList list;
    list.entries = {site("a"), kept("# c\n"), site("b"), site("c"), site("d")};
    remove_marked_sites(list, {1, 0, 0, 1, 0});
    ASSERT_EQ(list.entries.size(), 3u);
    EXPECT_EQ(list.entries[0].name, "# c\n");
    EXPECT_EQ(list.entries[1].name, "b");
    EXPECT_EQ(list.entries[2].name, "d");
}

// Random lists full of names that differ only in case, repeated names, kept
// lines with a site's text, and rows that match nothing.
TEST(SiteIndex, AgreesWithComparingEveryEntry) {
    std::mt19937 random(20261123);
    const std::vector<std::string> stems = {"ads", "Ads",   "ADS",   "track.er", "Track.Er",
                                            "x",   "\xC4x", "\xE4x", ""};
    for (int round = 0; round < 300; ++round) {
        UserSiteList list;
        const int size = static_cast<int>(random() % 40);
        for (int i = 0; i < size; ++i) {
            const std::string& stem = stems[random() % stems.size()];
            if (random() % 6 == 0) {
                list.entries.push_back(kept(stem));
            } else {
                list.entries.push_back(site(stem.empty() ? "   " : stem, random() % 0x200));
            }
        }
        std::vector<std::string> rows;
        const int row_count = static_cast<int>(random() % 12);
        for (int i = 0; i < row_count; ++i) rows.push_back(stems[random() % stems.size()]);

        UserSiteList expected = list;
        UserSiteList actual = list;
        const bool set = random() % 2 == 0;
        naive_change(expected, rows, set, 0x10);
        indexed_change(actual, rows, set, 0x10);
        ASSERT_TRUE(same(expected, actual)) << "change, round " << round;
        naive_remove(expected, rows);
        indexed_remove(actual, rows);
        ASSERT_TRUE(same(expected, actual)) << "remove, round " << round;
    }
}

TEST(SiteIndex, ManyEntriesOfOneName) {
    UserSiteList list;
    for (int i = 0; i < 5000; ++i)
        list.entries.push_back(site(i % 2 ? "Same" : "same", static_cast<uint32_t>(i)));
    std::vector<std::string> rows(4999, "SAME");
    indexed_remove(list, rows);
    ASSERT_EQ(list.entries.size(), 1u);
    EXPECT_EQ(list.entries[0].flags, 4999u);
}

}  // namespace
