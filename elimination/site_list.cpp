// Operations of the user site list.
#include "elimination/site_list.h"

#include <utility>

void append_site(UserSiteList& list, SiteEntry entry) { list.entries.push_back(std::move(entry)); }

bool replace_site(UserSiteList& list, size_t position, SiteEntry entry) {
    if (position >= list.entries.size()) return false;
    list.entries[position] = std::move(entry);
    return true;
}

bool remove_site(UserSiteList& list, size_t position) {
    if (position >= list.entries.size()) return false;
    list.entries.erase(list.entries.begin() + static_cast<std::ptrdiff_t>(position));
    return true;
}
