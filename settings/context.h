// The module-wide state of the main sheet: one per process, zero at load.
#pragma once

#include <cstdint>

#include "elimination/site_list.h"
#include "platform/win.h"
#include "zrsettings.h"

struct SettingsContext {
    settings_struct working;          // the record the pages edit
    settings_struct* host_record;     // the record passed to create_settings_window
    HINSTANCE host_instance;
    HMODULE resource_module;          // zrres.dll; loaded at every open, never unloaded
    HWND sheet_window;                // stays behind as a stale handle after close
    HWND prefetch_sheet_window;
    uint32_t changed;                 // some page changed the working copy since the last apply
    uint8_t tcp_changed;
    uint32_t page_first_init;
    UserSiteList user_sites;
    int32_t modal_guard;              // a question box or file dialog is open
};

extern SettingsContext g_settings;

// Sets the context back for a new sheet (keeps the working copy, the site
// list, prefetch_sheet_window and modal_guard).
void reset_module_state();

// A page wrote an edit into the working copy: enable Apply, set the changed flag.
void mark_changed(HWND page);

// What every page of the main sheet does with WM_NOTIFY: PSN_APPLY applies,
// PSN_QUERYCANCEL cancels, PSN_HELP opens the help.  Always answers 0.
INT_PTR handle_page_notify(HWND page, LPARAM lparam);

// Brings a window to the front and into the topmost band.
void bring_to_front(HWND window);
