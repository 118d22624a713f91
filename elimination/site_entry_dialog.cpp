// The site entry dialog.
#include "elimination/site_entry_dialog.h"

#include <cstring>
#include <utility>

#include "settings/context.h"

char g_entry_initial_name[1024];
char g_entry_initial_second[1024];

namespace {

// Shown when OK is pressed with a name that userex.gui cannot carry.
constexpr char kNameRefused[] =
    "A site name cannot contain \"#\", a tab or a line break.\n"
    "Please change the name.";

void field_text(HWND dialog, int id, char* buffer, int capacity) {
    buffer[0] = '\0';
    GetWindowTextA(GetDlgItem(dialog, id), buffer, capacity);
}

void press_ok(HWND dialog) {
    char name[1024];
    field_text(dialog, kEntryName, name, sizeof name);
    if (!site_name_storable(name)) {
        MessageBoxA(dialog, kNameRefused, nullptr, MB_OK | MB_ICONEXCLAMATION | MB_TOPMOST);
        SetFocus(GetDlgItem(dialog, kEntryName));
        return;
    }
    if (name[0] != '\0') {
        SiteEntry entry;
        entry.flags = 0;
        entry.kind = kSiteEntry;
        entry.name = name;
        append_site(g_settings.user_sites, std::move(entry));
        g_settings.working.site_list_changed = 1;
    }
    EndDialog(dialog, IDOK);
}

}  // namespace

bool site_name_storable(const char* name) {
    for (const char* c = name; *c != '\0'; ++c) {
        if (*c == '#' || (*c >= 0x09 && *c <= 0x0D)) return false;
    }
    return true;
}

void update_entry_ok(HWND dialog, const char* initial_first, const char* initial_second) {
    char first[1024];
    char second[1024];
    field_text(dialog, kEntryName, first, sizeof first);
    field_text(dialog, kEntrySecond, second, sizeof second);
    HWND ok = GetDlgItem(dialog, IDOK);
    if (initial_first != nullptr && initial_second != nullptr && std::strcmp(first, initial_first) == 0 &&
        std::strcmp(second, initial_second) == 0) {
        EnableWindow(ok, FALSE);
        return;
    }
    EnableWindow(ok, first[0] != '\0' ? TRUE : FALSE);
}

INT_PTR CALLBACK site_entry_dialog_proc(HWND dialog, UINT message, WPARAM wparam, LPARAM) {
    switch (message) {
        case WM_INITDIALOG:
            std::memset(g_entry_initial_name, 0, sizeof g_entry_initial_name);
            std::memset(g_entry_initial_second, 0, sizeof g_entry_initial_second);
            field_text(dialog, kEntryName, g_entry_initial_name, sizeof g_entry_initial_name);
            field_text(dialog, kEntrySecond, g_entry_initial_second, sizeof g_entry_initial_second);
            EnableWindow(GetDlgItem(dialog, IDOK), FALSE);
            update_entry_ok(dialog, g_entry_initial_name, g_entry_initial_second);
            ShowWindow(GetDlgItem(dialog, kEntrySecond), SW_HIDE);
            ShowWindow(GetDlgItem(dialog, kEntrySecondLabel), SW_HIDE);
            return TRUE;
        case WM_COMMAND:
            update_entry_ok(dialog, g_entry_initial_name, g_entry_initial_second);
            if (LOWORD(wparam) == IDOK) {
                press_ok(dialog);
            } else if (LOWORD(wparam) == IDCANCEL) {
                EndDialog(dialog, IDCANCEL);
            }
            break;
        case WM_NOTIFY:
            update_entry_ok(dialog, g_entry_initial_name, g_entry_initial_second);
            break;
        case WM_CLOSE:
            EndDialog(dialog, LOWORD(wparam));
            break;
        default:
            break;
    }
    return 0;
}
