// The site elimination page with a large user site list, headless: how long
// filling the rows takes, against filling them, selecting every row,
// toggling a flag on all of them and removing them all.  The second must stay
// within three times the first.
//
// Usage: elimination_page_bench [sites] [rounds]   (default 100000 sites, 3 rounds)
// Prints the best time of each over the rounds and the ratio; exits 1 when the
// ratio is above 3.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "elimination/elimination_page.h"
#include "platform/headless/registry.h"
#include "platform/headless/ui.h"
#include "settings/context.h"
#include "settings/pages.h"
#include "settings/store.h"

namespace {

using Clock = std::chrono::steady_clock;

double seconds_since(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

// Sites in an order that is not the rows' order, with a mix of flags, some
// of them unlisted, and some names differing only in letter case.
UserSiteList make_sites(int count) {
    UserSiteList list;
    list.entries.reserve(static_cast<size_t>(count));
    const uint32_t flags[] = {0, 0x1, 0x80, 0x2, 0x10, 0x10000, 0x81, 0x4};
    for (int i = 0; i < count; ++i) {
        const unsigned scrambled = (static_cast<unsigned>(i) * 2654435761u) % static_cast<unsigned>(count);
        char name[64];
        std::snprintf(name, sizeof name, "%s%07u.example.com", i % 16 == 0 ? "Ads" : "ads", scrambled);
        list.entries.push_back(SiteEntry{flags[i % 8], kSiteEntry, name});
    }
    return list;
}

void click(HWND page, int id) { SendMessageA(GetDlgItem(page, id), BM_CLICK, 0, 0); }

struct Times {
    double fill = 1e9;                        // fill alone
    double sequence = 1e9;                    // fill + select all + flag + select all + remove
    double select = 0, flag = 0, remove = 0;  // parts of the best sequence
    int rows_after = -1;
    size_t sites_after = 0;
};

}  // namespace

int main(int argc, char** argv) {
    const int count = argc > 1 ? std::atoi(argv[1]) : 100000;
    const int rounds = argc > 2 ? std::atoi(argv[2]) : 3;

    zr::headless::reset_ui();
    zr::headless::registry_set_dword(kSettingsKey, "site_elimination", 1);
    g_settings.resource_module = LoadLibraryA("zrres.dll");
    const UserSiteList sites = make_sites(count);

    Times best;
    zr::headless::set_message_box_hook([](HWND, const char*, const char*, UINT) { return IDYES; });
    zr::headless::set_modal_hook([&](HWND page) {
        for (int round = 0; round < rounds; ++round) {
            g_settings.user_sites = sites;
            Clock::time_point start = Clock::now();
            fill_site_list(page);
            best.fill = std::min(best.fill, seconds_since(start));

            g_settings.user_sites = sites;
            start = Clock::now();
            fill_site_list(page);
            const Clock::time_point filled = Clock::now();
            click(page, kSelectAll);
            const Clock::time_point selected = Clock::now();
            click(page, kFlagP);
            const Clock::time_point flagged = Clock::now();
            click(page, kSelectAll);
            click(page, kRemoveSites);
            const double sequence = seconds_since(start);
            if (sequence < best.sequence) {
                best.sequence = sequence;
                best.select = std::chrono::duration<double>(selected - filled).count();
                best.flag = std::chrono::duration<double>(flagged - selected).count();
                best.remove = std::chrono::duration<double>(Clock::now() - flagged).count();
            }
            best.rows_after = static_cast<int>(SendMessageA(GetDlgItem(page, kSiteRows), LB_GETCOUNT, 0, 0));
            best.sites_after = g_settings.user_sites.entries.size();
        }
        EndDialog(page, 0);
    });
    DialogBoxParamA(g_settings.resource_module, MAKEINTRESOURCEA(2005), nullptr, elimination_page_proc, 0);

    const double ratio = best.sequence / best.fill;
    std::printf("sites %d, rounds %d\n", count, rounds);
    std::printf("fill alone                                   %9.1f ms\n", best.fill * 1e3);
    std::printf("fill + select all + flag + select all + remove %7.1f ms\n", best.sequence * 1e3);
    std::printf("  of which select all %.1f ms, flag toggle %.1f ms, select all + remove %.1f ms\n",
                best.select * 1e3, best.flag * 1e3, best.remove * 1e3);
    std::printf("ratio %.2f (limit 3.00); rows left %d, sites left %zu\n", ratio, best.rows_after,
                best.sites_after);
    return ratio <= 3.0 ? 0 : 1;
}
