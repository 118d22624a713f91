// The user's own site list: sites with a word of site flags, plus the lines
// of userex.gui that name no site (kept so that they survive a rewrite).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

enum SiteKind : uint32_t { kKeptLine = 0, kSiteEntry = 1 };

struct SiteEntry {
    uint32_t flags = 0;     // site flags; always 0 for a kept line
    uint32_t kind = kKeptLine;
    std::string name;       // site: decoded name; kept line: the line as read, line end included
};

struct UserSiteList {
    std::vector<SiteEntry> entries;
};

// List operations used by the site elimination page and the site entry dialog.
// A new entry goes to the end; a changed entry keeps its position.
void append_site(UserSiteList& list, SiteEntry entry);
// Calls visit(entry, position) for every entry in list order; stops early when
// it returns false.
template <typename Visit>
void visit_sites(const UserSiteList& list, Visit&& visit) {
    for (size_t i = 0; i < list.entries.size(); ++i) {
        if (!visit(list.entries[i], i)) return;
    }
}
// Replaces the entry at `position` (false when there is none).
bool replace_site(UserSiteList& list, size_t position, SiteEntry entry);
// Removes the entry at `position`; the later entries move up by one.
bool remove_site(UserSiteList& list, size_t position);
