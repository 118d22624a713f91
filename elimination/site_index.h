// Site entries grouped by name, the letters A-Z taken as a-z, so that the
// site elimination page finds the entries of a list row without comparing the
// row's text with every entry.  Built for one operation over a list that does
// not change shape meanwhile: flags may change, and removals are only marked
// until one compaction at the end.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "elimination/site_list.h"

inline constexpr uint32_t kNoSite = 0xFFFFFFFFu;

// True when the two names are equal with the letters A-Z taken as a-z (no
// other character is folded).
bool site_names_match(std::string_view a, std::string_view b);

struct SiteIndex {
    uint64_t mask = 0;                 // slot count - 1 (a power of two)
    std::vector<uint64_t> slot_hash;   // hash of the group's folded name
    std::vector<uint32_t> slot_name;   // a position holding the group's name; kNoSite: empty slot
    std::vector<uint32_t> slot_first;  // first position still in the group; kNoSite when none
    std::vector<uint32_t> next;        // by position: next position of the same group, in list order
};

// Groups every site entry of `list` (kept lines are no sites and stay out).
void build_site_index(SiteIndex& index, const UserSiteList& list);

// The slot of the group named `name`, or kNoSite when no site has that name.
uint32_t find_site_group(const SiteIndex& index, const UserSiteList& list, std::string_view name);

// Takes the first position still in group `slot` out of the group and
// returns it; kNoSite when the group is empty.
uint32_t take_first_site(SiteIndex& index, uint32_t slot);

// Removes every entry whose `marked` byte is nonzero in one pass; the others
// keep their order.  `marked` has one byte per entry.
void remove_marked_sites(UserSiteList& list, const std::vector<uint8_t>& marked);
