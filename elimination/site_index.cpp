// Grouping of site entries by folded name: an open-addressing table of groups,
// each group a chain of positions in list order.
#include "elimination/site_index.h"

#include <cstddef>
#include <utility>

namespace {

unsigned char fold(unsigned char c) { return c >= 'A' && c <= 'Z' ? static_cast<unsigned char>(c + 32) : c; }

uint64_t folded_hash(std::string_view name) {
    uint64_t hash = 0xcbf29ce484222325ull;  // FNV-1a
    for (const char c : name) {
        hash ^= fold(static_cast<unsigned char>(c));
        hash *= 0x100000001b3ull;
    }
    return hash;
}

}  // namespace

bool site_names_match(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i) {
        if (fold(static_cast<unsigned char>(a[i])) != fold(static_cast<unsigned char>(b[i]))) return false;
    }
    return true;
}

void build_site_index(SiteIndex& index, const UserSiteList& list) {
    const size_t count = list.entries.size();
    size_t slots = 16;
    while (slots < count * 2) slots *= 2;
    index.mask = slots - 1;
    index.slot_hash.assign(slots, 0);
    index.slot_name.assign(slots, kNoSite);
    index.slot_first.assign(slots, kNoSite);
    index.next.assign(count, kNoSite);
    // The last position of each group, by slot, to chain in list order.
    std::vector<uint32_t> slot_last(slots, kNoSite);

    for (size_t position = 0; position < count; ++position) {
        const SiteEntry& entry = list.entries[position];
        if (entry.kind != kSiteEntry) continue;
        const uint64_t hash = folded_hash(entry.name);
        uint64_t slot = hash & index.mask;
        while (index.slot_name[slot] != kNoSite &&
               !(index.slot_hash[slot] == hash &&
                 site_names_match(list.entries[index.slot_name[slot]].name, entry.name))) {
            slot = (slot + 1) & index.mask;
        }
        const uint32_t here = static_cast<uint32_t>(position);
        if (index.slot_name[slot] == kNoSite) {
            index.slot_hash[slot] = hash;
            index.slot_name[slot] = here;
            index.slot_first[slot] = here;
        } else {
            index.next[slot_last[slot]] = here;
        }
        slot_last[slot] = here;
    }
}

uint32_t find_site_group(const SiteIndex& index, const UserSiteList& list, std::string_view name) {
    if (index.slot_name.empty()) return kNoSite;
    const uint64_t hash = folded_hash(name);
    uint64_t slot = hash & index.mask;
    while (index.slot_name[slot] != kNoSite) {
        if (index.slot_hash[slot] == hash &&
            site_names_match(list.entries[index.slot_name[slot]].name, name)) {
            return static_cast<uint32_t>(slot);
        }
        slot = (slot + 1) & index.mask;
    }
    return kNoSite;
}

uint32_t take_first_site(SiteIndex& index, uint32_t slot) {
    const uint32_t first = index.slot_first[slot];
    if (first != kNoSite) index.slot_first[slot] = index.next[first];
    return first;
}

void remove_marked_sites(UserSiteList& list, const std::vector<uint8_t>& marked) {
    std::vector<SiteEntry>& entries = list.entries;
    size_t kept = 0;
    for (size_t position = 0; position < entries.size(); ++position) {
        if (position < marked.size() && marked[position] != 0) continue;
        if (kept != position) entries[kept] = std::move(entries[position]);
        ++kept;
    }
    entries.resize(kept);
}
