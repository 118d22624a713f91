// The site elimination page.
#include "elimination/elimination_page.h"

#include <string>
#include <vector>

#include "elimination/site_entry_dialog.h"
#include "elimination/site_index.h"
#include "platform/zrutil.h"
#include "settings/context.h"
#include "settings/pages.h"
#include "settings/store.h"

namespace {

constexpr int kAskRemoveText = 6032;
constexpr int kAskRemoveCaption = 6033;
constexpr int kSiteEntryTemplate = 2007;

bool is_listed(const SiteEntry& entry) {
    return entry.kind == kSiteEntry && (entry.flags == 0 || (entry.flags & kListedFlags) != 0);
}

void enable(HWND page, int id, bool on) { EnableWindow(GetDlgItem(page, id), on ? TRUE : FALSE); }
bool is_checked(HWND page, int id) { return IsDlgButtonChecked(page, id) == BST_CHECKED; }
void set_check(HWND page, int id, bool on) { CheckDlgButton(page, id, on ? BST_CHECKED : BST_UNCHECKED); }

LRESULT rows(HWND page, UINT message, WPARAM wparam, LPARAM lparam) {
    return SendMessageA(GetDlgItem(page, kSiteRows), message, wparam, lparam);
}

int selected_count(HWND page) {
    const LRESULT count = rows(page, LB_GETSELCOUNT, 0, 0);
    return count > 0 ? static_cast<int>(count) : 0;
}

// The indices of the selected rows, ascending; fewer than `count` when the
// list box returns fewer.
std::vector<int> selected_rows(HWND page, int count) {
    std::vector<int> indices(static_cast<size_t>(count));
    const LRESULT got =
        rows(page, LB_GETSELITEMS, static_cast<WPARAM>(count), reinterpret_cast<LPARAM>(indices.data()));
    indices.resize(got > 0 ? static_cast<size_t>(got) : 0);
    return indices;
}

// The whole text of `row` of the list box `list` into `text` (empty when
// there is no such row).  The buffer is sized from the row's length, so no
// name is cut or overrun.  The caller looks the list box up once, not per row.
void row_text(HWND list, int row, std::string& text) {
    const LRESULT length = SendMessageA(list, LB_GETTEXTLEN, static_cast<WPARAM>(row), 0);
    if (length <= 0) {
        text.clear();
        return;
    }
    text.assign(static_cast<size_t>(length) + 1, '\0');
    const LRESULT got =
        SendMessageA(list, LB_GETTEXT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(text.data()));
    text.resize(got > 0 && got <= length ? static_cast<size_t>(got) : 0);
}

DWORD read_site_elimination() {
    DWORD value = 0;
    kRegKey key;
    if (key.Open(HKEY_LOCAL_MACHINE, kSettingsKey, kFullAccess)) {
        key.GetDWORD("site_elimination", &value);
        key.Close();
    }
    return value;
}

void write_site_elimination(DWORD value) {
    kRegKey key;
    if (key.Open(HKEY_LOCAL_MACHINE, kSettingsKey, kFullAccess)) {
        key.SetDWORD("site_elimination", value);
        key.Close();
    }
}

// While no row is selected the four flag boxes are disabled; otherwise 309
// is enabled, a checked 309 disables 302-304, and a checked 302 disables 303
// and 304.
void apply_flag_rule(HWND page) {
    if (selected_count(page) == 0) {
        for (const int id : {kFlagB, kFlagP, kFlagA, kFlagD}) enable(page, id, false);
        return;
    }
    enable(page, kFlagD, true);
    const bool d = is_checked(page, kFlagD);
    const bool b = is_checked(page, kFlagB);
    enable(page, kFlagB, !d);
    enable(page, kFlagP, !d && !b);
    enable(page, kFlagA, !d && !b);
}

void set_aggressive(HWND page, uint8_t value) {
    settings_struct& working = g_settings.working;
    if ((working.aggressive_elimination != 0) != (value != 0)) working.aggressive_changed = 1;
    working.aggressive_elimination = value;
    mark_changed(page);
}

void use_site_list_clicked(HWND page) {
    const bool on = is_checked(page, kUseSiteList);
    write_site_elimination(on ? 1 : 0);
    enable(page, kSiteRows, on);
    enable(page, kAddSite, on);
    if (on && selected_count(page) > 0) {
        enable(page, kRemoveSites, true);
        apply_flag_rule(page);
    } else {
        for (const int id : {kRemoveSites, kFlagB, kFlagP, kFlagA, kFlagD}) enable(page, id, false);
    }
    mark_changed(page);
}

void add_site(HWND page) {
    DialogBoxParamA(g_settings.resource_module, MAKEINTRESOURCEA(kSiteEntryTemplate), page,
                    site_entry_dialog_proc, 0);
    fill_site_list(page);
    mark_changed(page);
}

void control_action(HWND page, int id) {
    switch (id) {
        case kAdList: {
            const uint8_t on = is_checked(page, kAdList) ? 1 : 0;
            g_settings.working.ad_list_on = on;
            enable(page, kAggressiveOn, on != 0);
            enable(page, kAggressiveOff, on != 0);
            mark_changed(page);
            break;
        }
        case kFlagB:
        case kFlagD:
            change_site_flag(page, is_checked(page, id), id == kFlagB ? kSiteFlagB : kSiteFlagD);
            mark_changed(page);
            apply_flag_rule(page);
            break;
        case kFlagP:
        case kFlagA:
            change_site_flag(page, is_checked(page, id), id == kFlagP ? kSiteFlagP : kSiteFlagA);
            mark_changed(page);
            break;
        case kSelectAll:
            rows(page, LB_SETSEL, TRUE, -1);
            enable(page, kRemoveSites, true);
            show_site_flags(page);
            break;
        case kSelectNone:
            rows(page, LB_SETSEL, FALSE, -1);
            show_site_flags(page);
            enable(page, kRemoveSites, false);
            break;
        case kAddSite:
            add_site(page);
            break;
        case kRemoveSites:
            remove_selected_sites(page);
            fill_site_list(page);
            mark_changed(page);
            break;
        case kAggressiveOn:
            if (is_checked(page, kAggressiveOn)) set_aggressive(page, 1);
            break;
        case kAggressiveOff:
            if (is_checked(page, kAggressiveOff)) set_aggressive(page, 0);
            break;
        case kUseSiteList:
            use_site_list_clicked(page);
            break;
        default:
            break;
    }
}

}  // namespace

void fill_site_list(HWND page) {
    HWND list = GetDlgItem(page, kSiteRows);
    // No drawing while the rows go in: a long list fills in one repaint.
    SendMessageA(list, WM_SETREDRAW, FALSE, 0);
    SendMessageA(list, LB_RESETCONTENT, 0, 0);
    visit_sites(g_settings.user_sites, [list](const SiteEntry& entry, size_t) {
        if (is_listed(entry))
            SendMessageA(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(entry.name.c_str()));
        return true;
    });
    SendMessageA(list, WM_SETREDRAW, TRUE, 0);
    set_check(page, kFlagA, false);
    enable(page, kRemoveSites, false);

    const settings_struct& working = g_settings.working;
    enable(page, kAggressiveOn, working.ad_list_on != 0);
    enable(page, kAggressiveOff, working.ad_list_on != 0);
    set_check(page, kAggressiveOn, working.aggressive_elimination == 1);
    set_check(page, kAggressiveOff, working.aggressive_elimination != 1);
    set_check(page, kAdList, working.ad_list_on == 1);

    const bool use_list = read_site_elimination() != 0;
    enable(page, kAddSite, use_list);
    set_check(page, kUseSiteList, use_list);
    enable(page, kSiteRows, use_list);

    for (const int id : {kFlagB, kFlagP, kFlagA, kFlagD}) enable(page, id, false);
}

void show_site_flags(HWND page) {
    for (const int id : {kFlagB, kFlagP, kFlagA, kFlagD}) {
        set_check(page, id, false);
        enable(page, id, false);
    }
    if (selected_count(page) == 0) {
        enable(page, kRemoveSites, false);
        return;
    }
    enable(page, kRemoveSites, true);
    const std::vector<int> first = selected_rows(page, 1);
    if (!first.empty()) {
        std::string text;
        row_text(GetDlgItem(page, kSiteRows), first[0], text);
        // Of several entries of that name, the last in list order decides.
        const SiteEntry* shown = nullptr;
        visit_sites(g_settings.user_sites, [&](const SiteEntry& entry, size_t) {
            if (entry.kind == kSiteEntry && site_names_match(entry.name, text)) shown = &entry;
            return true;
        });
        if (shown != nullptr) {
            set_check(page, kFlagD, (shown->flags & kSiteFlagD) != 0);
            set_check(page, kFlagB, (shown->flags & kSiteFlagB) != 0);
            set_check(page, kFlagP, (shown->flags & kSiteFlagP) != 0);
            set_check(page, kFlagA, (shown->flags & kSiteFlagA) != 0);
        }
    }
    apply_flag_rule(page);
}

void change_site_flag(HWND page, bool set, uint32_t bit) {
    const int count = selected_count(page);
    if (count == 0) return;
    UserSiteList& sites = g_settings.user_sites;
    SiteIndex index;
    build_site_index(index, sites);
    HWND list = GetDlgItem(page, kSiteRows);
    std::string text;
    for (const int row : selected_rows(page, count)) {
        row_text(list, row, text);
        const uint32_t slot = find_site_group(index, sites, text);
        if (slot == kNoSite) continue;
        for (uint32_t position = index.slot_first[slot]; position != kNoSite;
             position = index.next[position]) {
            SiteEntry changed = sites.entries[position];
            changed.flags = set ? (changed.flags | bit) : (changed.flags & ~bit);
            replace_site(sites, position, std::move(changed));
        }
    }
}

void remove_selected_sites(HWND page) {
    const int count = selected_count(page);
    if (count == 0) return;

    char text[1024];
    char caption[1024];
    load_res_string(g_settings.resource_module, kAskRemoveText, text, sizeof text);
    load_res_string(g_settings.resource_module, kAskRemoveCaption, caption, sizeof caption);
    if (MessageBoxA(g_settings.sheet_window, text, caption, MB_YESNO | MB_ICONQUESTION | MB_TOPMOST) !=
        IDYES) {
        return;
    }

    const std::vector<int> selected = selected_rows(page, count);
    if (static_cast<int>(selected.size()) < count) return;

    // From the last selected row to the first, each row takes the first entry
    // of its name that is still there; the entries go in one pass at the end.
    UserSiteList& sites = g_settings.user_sites;
    SiteIndex index;
    build_site_index(index, sites);
    std::vector<uint8_t> removed(sites.entries.size(), 0);
    HWND list = GetDlgItem(page, kSiteRows);
    std::string row;
    for (auto it = selected.rbegin(); it != selected.rend(); ++it) {
        row_text(list, *it, row);
        const uint32_t slot = find_site_group(index, sites, row);
        if (slot == kNoSite) continue;
        const uint32_t position = take_first_site(index, slot);
        if (position == kNoSite) continue;
        removed[position] = 1;
        g_settings.working.site_list_changed = 1;
    }
    remove_marked_sites(sites, removed);
}

INT_PTR CALLBACK elimination_page_proc(HWND page, UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
        case WM_INITDIALOG:
            fill_site_list(page);
            show_site_flags(page);
            break;
        case WM_COMMAND:
            if (LOWORD(wparam) == kSiteRows && HIWORD(wparam) == LBN_SELCHANGE) show_site_flags(page);
            control_action(page, LOWORD(wparam));
            break;
        case WM_NOTIFY:
            handle_page_notify(page, lparam);
            break;
        default:
            break;
    }
    return 0;
}
