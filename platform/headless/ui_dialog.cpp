// Headless dialogs: the default window and dialog procedures, dialogs built
// from the resource module's templates, modal dialog boxes, and the dialog
// helpers (item texts, numbers and check states).
#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>

#include "platform/headless/ui_internal.h"

namespace zr::headless::ui {

namespace {

std::vector<zr::res::DialogTemplate> g_test_dialogs;

bool returns_own_result(UINT message) {
    switch (message) {
        case WM_INITDIALOG:
        case WM_CTLCOLOREDIT:
        case WM_CTLCOLORLISTBOX:
        case WM_CTLCOLORBTN:
        case WM_CTLCOLORDLG:
        case WM_CTLCOLORSTATIC:
        case 0x0132:
        case 0x0137:  // MSGBOX, SCROLLBAR colours
        case 0x0039:
        case 0x002E:
        case 0x002F:
        case 0x0037:  // COMPAREITEM, VKEYTOITEM, CHARTOITEM, QUERYDRAGICON
            return true;
        default:
            return false;
    }
}

LRESULT default_dialog(HWND h, UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
        case WM_CLOSE: {
            // The dialog manager turns a close into the Cancel command,
            // unless the Cancel button is disabled.
            HWND cancel = GetDlgItem(h, IDCANCEL);
            if (cancel != nullptr && !IsWindowEnabled(cancel)) return 0;
            post(h, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), reinterpret_cast<LPARAM>(cancel));
            return 0;
        }
        case WM_INITDIALOG:
        case WM_COMMAND:
        case WM_NOTIFY:
            return 0;
        default:
            return default_window_proc(h, message, wparam, lparam);
    }
}

HWND first_tab_stop(HWND dialog) {
    for (HWND c : children(dialog)) {
        Window* w = find(c);
        if ((w->style & WS_TABSTOP) && (w->style & WS_VISIBLE) && !(w->style & WS_DISABLED)) return c;
    }
    return nullptr;
}

}  // namespace

int dialog_units_x(int units) { return units * 3 / 2; }   // 6 pixels per 4 units
int dialog_units_y(int units) { return units * 13 / 8; }  // 13 pixels per 8 units

LRESULT CALLBACK default_window_proc(HWND h, UINT message, WPARAM wparam, LPARAM lparam) {
    Window* w = find(h);
    if (w == nullptr) return 0;
    switch (message) {
        case WM_NCCREATE:
            return TRUE;
        case WM_SETTEXT:
            w->text = text_of(lparam);
            return TRUE;
        case WM_GETTEXT:
            return copy_text(w->text, reinterpret_cast<char*>(lparam), static_cast<size_t>(wparam));
        case WM_GETTEXTLENGTH:
            return static_cast<LRESULT>(w->text.size());
        case WM_CLOSE:
            DestroyWindow(h);
            return 0;
        case WM_SYSCOMMAND:
            if ((wparam & 0xFFF0) == SC_CLOSE) send(h, WM_CLOSE, 0, 0);
            return 0;
        default:
            return 0;
    }
}

LRESULT CALLBACK dialog_window_proc(HWND h, UINT message, WPARAM wparam, LPARAM lparam) {
    Window* w = find(h);
    if (w == nullptr) return 0;
    SetWindowLongPtrA(h, DWLP_MSGRESULT, 0);
    const INT_PTR handled = w->dlgproc != nullptr ? w->dlgproc(h, message, wparam, lparam) : 0;
    if (find(h) == nullptr) return handled;
    if (handled) return returns_own_result(message) ? handled : GetWindowLongPtrA(h, DWLP_MSGRESULT);
    return default_dialog(h, message, wparam, lparam);
}

void register_test_dialogs(const zr::res::DialogTemplate* templates, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        auto same = [&](const zr::res::DialogTemplate& t) { return t.id == templates[i].id; };
        g_test_dialogs.erase(std::remove_if(g_test_dialogs.begin(), g_test_dialogs.end(), same),
                             g_test_dialogs.end());
        g_test_dialogs.push_back(templates[i]);
    }
}

const zr::res::DialogTemplate* find_template(HINSTANCE instance, LPCSTR name) {
    if (instance == nullptr || instance != resource_module_handle() || !resource_module_loaded() ||
        !IS_INTRESOURCE(name))
        return nullptr;
    const int id = static_cast<int>(reinterpret_cast<uintptr_t>(name));
    for (const auto& t : g_test_dialogs)
        if (t.id == id) return &t;
    return zr::res::find_dialog(id);
}

HWND create_dialog(const zr::res::DialogTemplate& tmpl, DWORD style, DWORD ex_style, HWND parent_or_owner,
                   HINSTANCE instance, DLGPROC proc, LPARAM param) {
    if (style & DS_CONTEXTHELP) ex_style |= WS_EX_CONTEXTHELP;
    const HWND h = create_window(ex_style, "#32770", tmpl.caption, style & ~WS_VISIBLE,
                                 dialog_units_x(tmpl.x), dialog_units_y(tmpl.y), dialog_units_x(tmpl.cx),
                                 dialog_units_y(tmpl.cy), parent_or_owner, 0, instance, nullptr);
    if (h == nullptr) return nullptr;
    find(h)->dlgproc = proc;
    for (size_t i = 0; i < tmpl.control_count; ++i) {
        const zr::res::ControlTemplate& c = tmpl.controls[i];
        const HWND control = create_window(c.ex_style, c.cls, c.text, c.style | WS_CHILD, dialog_units_x(c.x),
                                           dialog_units_y(c.y), dialog_units_x(c.cx), dialog_units_y(c.cy), h,
                                           c.id, instance, nullptr);
        if (control == nullptr) {
            if (style & DS_NOFAILCREATE) continue;
            DestroyWindow(h);
            return nullptr;
        }
        if (find(control)->kind == Kind::UpDown) attach_auto_buddy(*find(control));
    }
    const HWND focus = first_tab_stop(h);
    if (send(h, WM_INITDIALOG, reinterpret_cast<WPARAM>(focus), param) && focus != nullptr) SetFocus(focus);
    Window* w = find(h);
    if (w == nullptr) return nullptr;
    if ((style & WS_VISIBLE) && !w->ended) ShowWindow(h, SW_SHOWNORMAL);
    return h;
}

bool dialog_ended(HWND dialog) {
    Window* w = find(dialog);
    return w == nullptr || w->ended;
}

void dialog_abandon(HWND dialog) {
    HWND cancel = GetDlgItem(dialog, IDCANCEL);
    if (cancel != nullptr && IsWindowEnabled(cancel)) SendMessageA(cancel, BM_CLICK, 0, 0);
    if (!dialog_ended(dialog)) EndDialog(dialog, 0);
}

}  // namespace zr::headless::ui

using namespace zr::headless::ui;

LRESULT WINAPI DefDlgProcA(HWND h, UINT message, WPARAM wparam, LPARAM lparam) {
    return dialog_window_proc(h, message, wparam, lparam);
}

INT_PTR WINAPI DialogBoxParamA(HINSTANCE instance, LPCSTR name, HWND parent, DLGPROC proc, LPARAM param) {
    const zr::res::DialogTemplate* tmpl = find_template(instance, name);
    if (tmpl == nullptr) {
        SetLastError(ERROR_RESOURCE_NAME_NOT_FOUND);
        return -1;
    }
    if (parent != nullptr && find(parent) == nullptr) return 0;
    // The owner is the top-level window of the given parent; it is disabled
    // while the dialog runs.
    const HWND owner = top_level_of(parent);
    const bool disable = owner != nullptr && IsWindowEnabled(owner);
    if (disable) EnableWindow(owner, FALSE);
    const HWND dialog = create_dialog(*tmpl, (tmpl->style & ~WS_CHILD) | WS_VISIBLE, tmpl->ex_style, owner,
                                      instance, proc, param);
    if (dialog == nullptr) {
        if (disable) EnableWindow(owner, TRUE);
        return -1;
    }
    Window* w = find(dialog);
    ModalRun run;
    run.window = dialog;
    run.depth = api_depth();
    run.disabled_owner = disable ? owner : nullptr;
    run.ended = dialog_ended;
    run.abandon = dialog_abandon;
    run_modal(run);
    return w->result;
}

BOOL WINAPI EndDialog(HWND dialog, INT_PTR result) {
    ApiScope scope;
    Window* w = find(dialog);
    if (w == nullptr) return FALSE;
    w->ended = true;
    w->result = result;
    w->style &= ~WS_VISIBLE;
    return TRUE;
}

int WINAPI GetWindowTextA(HWND h, LPSTR buffer, int capacity) {
    if (buffer == nullptr || capacity <= 0) return 0;
    buffer[0] = '\0';
    if (find(h) == nullptr) return 0;
    return static_cast<int>(
        send(h, WM_GETTEXT, static_cast<WPARAM>(capacity), reinterpret_cast<LPARAM>(buffer)));
}

int WINAPI GetWindowTextLengthA(HWND h) { return static_cast<int>(send(h, WM_GETTEXTLENGTH, 0, 0)); }

BOOL WINAPI SetWindowTextA(HWND h, LPCSTR text) {
    if (find(h) == nullptr) return FALSE;
    return send(h, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text)) != 0;
}

BOOL WINAPI SetDlgItemTextA(HWND dialog, int id, LPCSTR text) {
    return SetWindowTextA(GetDlgItem(dialog, id), text);
}

UINT WINAPI GetDlgItemTextA(HWND dialog, int id, LPSTR buffer, int capacity) {
    if (buffer != nullptr && capacity > 0) buffer[0] = '\0';
    HWND item = GetDlgItem(dialog, id);
    return item != nullptr ? static_cast<UINT>(GetWindowTextA(item, buffer, capacity)) : 0;
}

BOOL WINAPI SetDlgItemInt(HWND dialog, int id, UINT value, BOOL is_signed) {
    char text[16];
    if (is_signed)
        std::snprintf(text, sizeof text, "%d", static_cast<int>(value));
    else
        std::snprintf(text, sizeof text, "%u", value);
    return SetDlgItemTextA(dialog, id, text);
}

UINT WINAPI GetDlgItemInt(HWND dialog, int id, BOOL* translated, BOOL is_signed) {
    if (translated != nullptr) *translated = FALSE;
    char text[64];
    if (GetDlgItemTextA(dialog, id, text, sizeof text) == 0) return 0;
    const char* p = text;
    while (*p == ' ') ++p;
    const bool negative = is_signed && *p == '-';
    if (negative) ++p;
    if (!std::isdigit(static_cast<unsigned char>(*p))) return 0;
    unsigned long long value = 0;
    for (; std::isdigit(static_cast<unsigned char>(*p)); ++p) {
        value = value * 10 + static_cast<unsigned>(*p - '0');
        if (value > 0xFFFFFFFFull) return 0;
    }
    while (*p == ' ') ++p;
    if (*p != '\0') return 0;
    if (is_signed && value > (negative ? 0x80000000ull : 0x7FFFFFFFull)) return 0;
    if (translated != nullptr) *translated = TRUE;
    return negative ? static_cast<UINT>(0u - static_cast<UINT>(value)) : static_cast<UINT>(value);
}

BOOL WINAPI CheckDlgButton(HWND dialog, int id, UINT state) {
    HWND item = GetDlgItem(dialog, id);
    if (item == nullptr) return FALSE;
    send(item, BM_SETCHECK, state, 0);
    return TRUE;
}

UINT WINAPI IsDlgButtonChecked(HWND dialog, int id) {
    HWND item = GetDlgItem(dialog, id);
    return item != nullptr ? static_cast<UINT>(send(item, BM_GETCHECK, 0, 0)) : 0;
}

BOOL WINAPI CheckRadioButton(HWND dialog, int first, int last, int checked) {
    if (find(dialog) == nullptr) return FALSE;
    for (HWND c : children(dialog)) {
        const int id = find(c)->id;
        if (id >= first && id <= last) send(c, BM_SETCHECK, id == checked ? BST_CHECKED : BST_UNCHECKED, 0);
    }
    return TRUE;
}
