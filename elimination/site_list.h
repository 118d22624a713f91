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
