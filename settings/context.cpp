#include "settings/context.h"

#include "platform/zrinfo.h"

SettingsContext g_settings{};

void reset_module_state() {
    g_settings.sheet_window = nullptr;
    g_settings.host_record = nullptr;
    g_settings.host_instance = nullptr;
    g_settings.resource_module = nullptr;
    g_settings.changed = 0;
    g_settings.tcp_changed = 0;
    g_settings.page_first_init = 1;
}

void mark_changed(HWND page) {
    SendMessageA(g_settings.sheet_window, PSM_CHANGED, reinterpret_cast<WPARAM>(page), 0);
    g_settings.changed = 1;
}

INT_PTR handle_page_notify(HWND /*page*/, LPARAM lparam) {
    const NMHDR* header = reinterpret_cast<const NMHDR*>(lparam);
    if (header == nullptr) return 0;
    switch (header->code) {
        case PSN_APPLY:
            settings_apply(g_settings.host_record);
            break;
        case PSN_QUERYCANCEL:
            settings_cancel(g_settings.host_record);
            break;
        case PSN_HELP:
            show_help_file(nullptr);
            break;
        default:
            break;
    }
    return 0;
}

void bring_to_front(HWND window) {
    SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE);
    SetWindowPos(window, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE);
}
