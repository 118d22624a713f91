// The site elimination page of the settings sheet (template 2005): the maker's
// advertising list and its aggressive part, the use of the user site list
// (registry value site_elimination, written when its box is clicked), adding
// and removing sites, and four flags of the selected sites.  The page
// procedure itself, elimination_page_proc, is declared in settings/pages.h.
//
// A list row stands for the site entries whose names equal its text with the
// letters A-Z taken as a-z.  Row texts are read at their full length, so a
// name longer than 1,023 characters matches like any other.
#pragma once

#include <cstdint>

#include "platform/win.h"

// Control identifiers of template 2005.
enum EliminationControl : int {
    kSiteRows = 300,
    kAdList = 301,
    kFlagB = 302,
    kFlagP = 303,
    kFlagA = 304,
    kSelectAll = 305,
    kSelectNone = 306,
    kAddSite = 307,
    kRemoveSites = 308,
    kFlagD = 309,
    kAggressiveOn = 310,
    kAggressiveOff = 311,
    kUseSiteList = 312,
};

// Site flags the page edits, and those that get a site listed.
inline constexpr uint32_t kSiteFlagP = 0x00000001;
inline constexpr uint32_t kSiteFlagB = 0x00000002;
inline constexpr uint32_t kSiteFlagD = 0x00000010;
inline constexpr uint32_t kSiteFlagA = 0x00000080;
inline constexpr uint32_t kSiteFlagO = 0x00010000;
inline constexpr uint32_t kListedFlags = kSiteFlagO | kSiteFlagD | kSiteFlagB | kSiteFlagP | kSiteFlagA;

// Rebuilds the rows from the user site list and sets the page-wide controls.
void fill_site_list(HWND page);
// Shows the flags of the first selected row in 302, 303, 304 and 309.
void show_site_flags(HWND page);
// Sets or clears `bit` on every site entry of every selected row.
void change_site_flag(HWND page, bool set, uint32_t bit);
// Asks, then removes for each selected row the first site entry of its name.
void remove_selected_sites(HWND page);
