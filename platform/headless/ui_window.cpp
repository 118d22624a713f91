// Headless windows: the handle table, classes, creation and destruction, the
// stacking order of top-level windows with its topmost band, and the window
// properties (text, styles, ids, rectangles, visibility, enabling).
#include <algorithm>
#include <cctype>
#include <cstring>
#include <map>
#include <memory>

#include "platform/headless/ui_internal.h"

namespace zr::headless::ui {

namespace {

struct ClassInfo {
    std::string name;
    WNDPROC proc;
    Kind kind;
    int extra;
    HINSTANCE instance;
    ATOM atom;
};

std::map<uintptr_t, std::unique_ptr<Window>>& table() {
    static std::map<uintptr_t, std::unique_ptr<Window>> windows;
    return windows;
}
// Handles are never reused, not even across reset_ui, so a stale handle stays
// stale.
uintptr_t g_next_handle = 0x10000;
std::vector<HWND> g_z;  // top-level windows, top first
std::vector<ClassInfo> g_registered;
ATOM g_next_atom = 0xC000;
HWND g_focus = nullptr;
const int kDialogExtra = 48;  // DLGWINDOWEXTRA of a 64-bit process

const ClassInfo kBuiltIn[] = {
    {"Button", button_proc, Kind::Button, 0, nullptr, 0},
    {"Edit", edit_proc, Kind::Edit, 0, nullptr, 0},
    {"Static", static_proc, Kind::Static, 0, nullptr, 0},
    {"ListBox", list_box_proc, Kind::ListBox, 0, nullptr, 0},
    {"ComboBox", combo_box_proc, Kind::ComboBox, 0, nullptr, 0},
    {"msctls_trackbar32", track_bar_proc, Kind::TrackBar, 0, nullptr, 0},
    {"msctls_updown32", up_down_proc, Kind::UpDown, 0, nullptr, 0},
    {"SysListView32", list_view_proc, Kind::ListView, 0, nullptr, 0},
    {"SysTabControl32", default_window_proc, Kind::Tab, 0, nullptr, 0},
    {"#32770", dialog_window_proc, Kind::Dialog, kDialogExtra, nullptr, 0},
};

const ClassInfo* find_class(const char* name) {
    if (name == nullptr) return nullptr;
    if (IS_INTRESOURCE(name)) {
        const ATOM atom = static_cast<ATOM>(reinterpret_cast<uintptr_t>(name));
        for (const ClassInfo& c : g_registered)
            if (c.atom == atom) return &c;
        return nullptr;
    }
    for (const ClassInfo& c : g_registered)
        if (compare_nocase(c.name, name) == 0) return &c;
    for (const ClassInfo& c : kBuiltIn)
        if (compare_nocase(c.name, name) == 0) return &c;
    return nullptr;
}

bool is_topmost(HWND h) {
    Window* w = find(h);
    return w != nullptr && (w->ex_style & WS_EX_TOPMOST) != 0;
}

void z_remove(HWND h) { g_z.erase(std::remove(g_z.begin(), g_z.end(), h), g_z.end()); }

size_t top_of_band(bool topmost) {
    if (topmost) return 0;
    size_t i = 0;
    while (i < g_z.size() && is_topmost(g_z[i])) ++i;
    return i;
}

bool owns(HWND owner, HWND h) {
    for (Window* w = find(h); w != nullptr && w->owner != nullptr; w = find(w->owner))
        if (w->owner == owner) return true;
    return false;
}

// Owned windows stay above their owner and share its band.
void lift_owned(HWND owner) {
    Window* o = find(owner);
    if (o == nullptr) return;
    std::vector<HWND> owned;
    for (HWND h : g_z)
        if (owns(owner, h)) owned.push_back(h);
    if (owned.empty()) return;
    for (HWND h : owned) {
        z_remove(h);
        Window* w = find(h);
        w->ex_style = (w->ex_style & ~WS_EX_TOPMOST) | (o->ex_style & WS_EX_TOPMOST);
    }
    auto at = std::find(g_z.begin(), g_z.end(), owner);
    g_z.insert(at, owned.begin(), owned.end());
}

void z_place(Window& w, HWND after) {
    const HWND h = w.handle;
    if (after == HWND_TOPMOST) {
        w.ex_style |= WS_EX_TOPMOST;
        z_remove(h);
        g_z.insert(g_z.begin(), h);
    } else if (after == HWND_NOTOPMOST) {
        if (!(w.ex_style & WS_EX_TOPMOST)) return;
        w.ex_style &= ~WS_EX_TOPMOST;
        z_remove(h);
        g_z.insert(g_z.begin() + static_cast<long>(top_of_band(false)), h);
    } else if (after == HWND_TOP) {
        z_remove(h);
        g_z.insert(g_z.begin() + static_cast<long>(top_of_band(w.ex_style & WS_EX_TOPMOST)), h);
    } else if (after == HWND_BOTTOM) {
        w.ex_style &= ~WS_EX_TOPMOST;
        z_remove(h);
        g_z.push_back(h);
    } else {
        Window* a = find(after);
        if (a == nullptr || a->parent != nullptr || after == h) return;
        w.ex_style = (w.ex_style & ~WS_EX_TOPMOST) | (a->ex_style & WS_EX_TOPMOST);
        z_remove(h);
        g_z.insert(std::find(g_z.begin(), g_z.end(), after) + 1, h);
    }
    lift_owned(h);
}

void child_place(Window& w, HWND after) {
    Window* p = find(w.parent);
    if (p == nullptr) return;
    auto& list = p->children;
    list.erase(std::remove(list.begin(), list.end(), w.handle), list.end());
    if (after == HWND_TOP || after == HWND_TOPMOST || after == HWND_NOTOPMOST) {
        list.insert(list.begin(), w.handle);
    } else if (after == HWND_BOTTOM) {
        list.push_back(w.handle);
    } else {
        auto at = std::find(list.begin(), list.end(), after);
        list.insert(at == list.end() ? list.end() : at + 1, w.handle);
    }
}

void destroy(HWND h) {
    Window* w = find(h);
    if (w == nullptr) return;
    // Owned windows go first, then the window and its children get
    // WM_DESTROY parent first.
    for (Window* o : all_windows())
        if (o->alive && o->owner == h) destroy(o->handle);
    if (w->style & WS_VISIBLE) w->style &= ~WS_VISIBLE;
    send(h, WM_DESTROY, 0, 0);
    for (HWND c : children(h)) destroy(c);
    if (!w->alive) return;
    send(h, WM_NCDESTROY, 0, 0);
    w->alive = false;
    kill_timers_of(h);
    if (w->parent == nullptr) z_remove(h);
    if (g_focus == h) g_focus = nullptr;
}

}  // namespace

Window* find(HWND handle) {
    auto& t = table();
    auto it = t.find(reinterpret_cast<uintptr_t>(handle));
    if (it == t.end() || !it->second->alive) return nullptr;
    return it->second.get();
}

std::vector<Window*> all_windows() {
    std::vector<Window*> out;
    for (auto& [key, w] : table()) out.push_back(w.get());
    return out;
}

std::vector<HWND> children(HWND parent) {
    std::vector<HWND> out;
    if (Window* p = find(parent))
        for (HWND c : p->children)
            if (find(c) != nullptr) out.push_back(c);
    return out;
}

HWND top_level_of(HWND handle) {
    Window* w = find(handle);
    while (w != nullptr && w->parent != nullptr && find(w->parent) != nullptr) w = find(w->parent);
    return w != nullptr ? w->handle : nullptr;
}

HWND create_window(DWORD ex_style, const char* cls, const char* text, DWORD style, int x, int y, int cx,
                   int cy, HWND parent, int id, HINSTANCE instance, void* param) {
    const ClassInfo* info = find_class(cls);
    if (info == nullptr) {
        SetLastError(ERROR_CANNOT_FIND_WND_CLASS);
        return nullptr;
    }
    const bool child = (style & WS_CHILD) != 0;
    if (child && find(parent) == nullptr) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return nullptr;
    }
    auto w = std::make_unique<Window>();
    g_next_handle += 4;
    w->handle = reinterpret_cast<HWND>(g_next_handle);
    w->kind = info->kind;
    w->cls = info->name;
    w->text = text != nullptr && !IS_INTRESOURCE(text) ? text : "";
    w->style = style;
    w->ex_style = ex_style;
    w->id = child ? id : 0;
    w->instance = instance;
    w->proc = info->proc;
    w->extra.assign(static_cast<size_t>(std::max(info->extra, 0)), 0);
    w->rect = RECT{x, y, x + std::max(cx, 0), y + std::max(cy, 0)};
    if (w->kind == Kind::UpDown) w->low = 100, w->high = 0;
    Window& made = *w;
    const HWND h = w->handle;
    table().emplace(reinterpret_cast<uintptr_t>(h), std::move(w));
    if (child) {
        made.parent = parent;
        find(parent)->children.push_back(h);
    } else {
        made.owner = top_level_of(parent);
        if (made.owner != nullptr && is_topmost(made.owner)) made.ex_style |= WS_EX_TOPMOST;
        g_z.insert(g_z.begin() + static_cast<long>(top_of_band(made.ex_style & WS_EX_TOPMOST)), h);
        lift_owned(h);
    }
    CREATESTRUCTA cs{param,
                     instance,
                     nullptr,
                     parent,
                     cy,
                     cx,
                     y,
                     x,
                     static_cast<LONG>(style),
                     made.text.c_str(),
                     made.cls.c_str(),
                     ex_style};
    if (send(h, WM_NCCREATE, 0, reinterpret_cast<LPARAM>(&cs)) == 0 && info->kind == Kind::Plain) {
        destroy(h);
        return nullptr;
    }
    if (send(h, WM_CREATE, 0, reinterpret_cast<LPARAM>(&cs)) == -1) {
        destroy(h);
        return nullptr;
    }
    return find(h) != nullptr ? h : nullptr;
}

void reset_windows() {
    for (HWND h : std::vector<HWND>(g_z)) destroy(h);
    table().clear();
    g_z.clear();
    g_registered.clear();
    g_focus = nullptr;
}

}  // namespace zr::headless::ui

using namespace zr::headless::ui;

std::vector<HWND> zr::headless::top_level_z_order() {
    std::vector<HWND> out;
    for (HWND h : g_z)
        if (find(h) != nullptr) out.push_back(h);
    return out;
}

ATOM WINAPI RegisterClassA(const WNDCLASSA* wc) {
    if (wc == nullptr || wc->lpszClassName == nullptr || wc->lpfnWndProc == nullptr) return 0;
    for (const ClassInfo& c : g_registered) {
        if (compare_nocase(c.name, wc->lpszClassName) == 0) {
            SetLastError(ERROR_CLASS_ALREADY_EXISTS);
            return 0;
        }
    }
    g_registered.push_back(ClassInfo{wc->lpszClassName, wc->lpfnWndProc, Kind::Plain, wc->cbWndExtra,
                                     wc->hInstance, g_next_atom++});
    return g_registered.back().atom;
}

BOOL WINAPI UnregisterClassA(LPCSTR name, HINSTANCE) {
    for (auto it = g_registered.begin(); it != g_registered.end(); ++it) {
        if (!IS_INTRESOURCE(name) && compare_nocase(it->name, name) == 0) {
            g_registered.erase(it);
            return TRUE;
        }
    }
    return FALSE;
}

HWND WINAPI CreateWindowExA(DWORD ex_style, LPCSTR cls, LPCSTR name, DWORD style, int x, int y, int cx,
                            int cy, HWND parent, HMENU menu, HINSTANCE instance, LPVOID param) {
    ApiScope scope;
    return create_window(ex_style, cls, name, style, x, y, cx, cy, parent,
                         static_cast<int>(reinterpret_cast<intptr_t>(menu)), instance, param);
}

BOOL WINAPI DestroyWindow(HWND h) {
    ApiScope scope;
    if (find(h) == nullptr) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return FALSE;
    }
    destroy(h);
    return TRUE;
}

BOOL WINAPI IsWindow(HWND h) { return find(h) != nullptr; }

BOOL WINAPI IsWindowVisible(HWND h) {
    Window* w = find(h);
    if (w == nullptr) return FALSE;
    for (; w != nullptr; w = find(w->parent))
        if (!(w->style & WS_VISIBLE)) return FALSE;
    return TRUE;
}

BOOL WINAPI IsWindowEnabled(HWND h) {
    Window* w = find(h);
    return w != nullptr && !(w->style & WS_DISABLED);
}

BOOL WINAPI EnableWindow(HWND h, BOOL enable) {
    ApiScope scope;
    Window* w = find(h);
    if (w == nullptr) return FALSE;
    const BOOL was_disabled = (w->style & WS_DISABLED) != 0;
    if (enable)
        w->style &= ~WS_DISABLED;
    else
        w->style |= WS_DISABLED;
    if (was_disabled != !enable) send(h, WM_ENABLE, enable ? TRUE : FALSE, 0);
    return was_disabled;
}

BOOL WINAPI ShowWindow(HWND h, int command) {
    ApiScope scope;
    Window* w = find(h);
    if (w == nullptr) return FALSE;
    const BOOL was_visible = (w->style & WS_VISIBLE) != 0;
    if (command == SW_HIDE) {
        w->style &= ~WS_VISIBLE;
    } else {
        w->style |= WS_VISIBLE;
        const bool activates = command != SW_SHOWNA && command != SW_SHOWNOACTIVATE &&
                               command != SW_SHOWMINNOACTIVE && command != SW_MINIMIZE;
        if (activates && w->parent == nullptr) z_place(*w, HWND_TOP);
    }
    if (was_visible != ((w->style & WS_VISIBLE) != 0)) send(h, WM_SHOWWINDOW, command != SW_HIDE, 0);
    return was_visible;
}

BOOL WINAPI SetWindowPos(HWND h, HWND after, int x, int y, int cx, int cy, UINT flags) {
    ApiScope scope;
    Window* w = find(h);
    if (w == nullptr) return FALSE;
    if (!(flags & SWP_NOMOVE)) {
        const LONG width = w->rect.right - w->rect.left, height = w->rect.bottom - w->rect.top;
        w->rect = RECT{x, y, x + width, y + height};
    }
    if (!(flags & SWP_NOSIZE)) {
        w->rect.right = w->rect.left + std::max(cx, 0);
        w->rect.bottom = w->rect.top + std::max(cy, 0);
    }
    if (!(flags & SWP_NOZORDER)) {
        if (w->parent == nullptr)
            z_place(*w, after);
        else
            child_place(*w, after);
    }
    if (flags & SWP_SHOWWINDOW) w->style |= WS_VISIBLE;
    if (flags & SWP_HIDEWINDOW) w->style &= ~WS_VISIBLE;
    return TRUE;
}

BOOL WINAPI BringWindowToTop(HWND h) {
    return SetWindowPos(h, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
}

BOOL WINAPI SetForegroundWindow(HWND h) {
    HWND top = top_level_of(h);
    return top != nullptr && SetWindowPos(top, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
}

BOOL WINAPI GetWindowRect(HWND h, LPRECT rect) {
    Window* w = find(h);
    if (w == nullptr || rect == nullptr) return FALSE;
    RECT r = w->rect;
    for (Window* p = find(w->parent); p != nullptr; p = find(p->parent)) {
        r.left += p->rect.left, r.right += p->rect.left;
        r.top += p->rect.top, r.bottom += p->rect.top;
    }
    *rect = r;
    return TRUE;
}

BOOL WINAPI GetClientRect(HWND h, LPRECT rect) {
    Window* w = find(h);
    if (w == nullptr || rect == nullptr) return FALSE;
    *rect = RECT{0, 0, w->rect.right - w->rect.left, w->rect.bottom - w->rect.top};
    return TRUE;
}

BOOL WINAPI MoveWindow(HWND h, int x, int y, int cx, int cy, BOOL) {
    return SetWindowPos(h, nullptr, x, y, cx, cy, SWP_NOZORDER | SWP_NOACTIVATE);
}

int WINAPI GetSystemMetrics(int index) {
    switch (index) {
        case SM_CXSCREEN:
        case SM_CXFULLSCREEN:
            return 1024;
        case SM_CYSCREEN:
            return 768;
        case SM_CYFULLSCREEN:
            return 768 - 18;
        case SM_CXVSCROLL:
        case SM_CYHSCROLL:
            return 16;
        case SM_CYCAPTION:
            return 18;
        case SM_CXBORDER:
        case SM_CYBORDER:
            return 1;
        case SM_CXDLGFRAME:
        case SM_CYDLGFRAME:
            return 3;
        case SM_CXICON:
        case SM_CYICON:
            return 32;
        case SM_CXSMICON:
        case SM_CYSMICON:
            return 16;
        default:
            return 0;
    }
}

HWND WINAPI GetDesktopWindow(void) { return nullptr; }

HWND WINAPI GetParent(HWND h) {
    Window* w = find(h);
    if (w == nullptr) return nullptr;
    if (w->style & WS_CHILD) return w->parent;
    return (w->style & WS_POPUP) ? w->owner : nullptr;
}

HWND WINAPI GetWindow(HWND h, UINT command) {
    Window* w = find(h);
    if (w == nullptr) return nullptr;
    if (command == GW_OWNER) return w->parent == nullptr ? w->owner : nullptr;
    if (command == GW_CHILD) {
        auto list = children(h);
        return list.empty() ? nullptr : list.front();
    }
    std::vector<HWND> siblings =
        w->parent != nullptr ? children(w->parent) : zr::headless::top_level_z_order();
    auto at = std::find(siblings.begin(), siblings.end(), h);
    switch (command) {
        case GW_HWNDFIRST:
            return siblings.front();
        case GW_HWNDLAST:
            return siblings.back();
        case GW_HWNDNEXT:
            return at + 1 < siblings.end() ? *(at + 1) : nullptr;
        case GW_HWNDPREV:
            return at != siblings.begin() ? *(at - 1) : nullptr;
        default:
            return nullptr;
    }
}

HWND WINAPI SetFocus(HWND h) {
    HWND old = g_focus;
    if (h == nullptr || find(h) != nullptr) g_focus = h;
    return old;
}

HWND WINAPI GetFocus(void) { return find(g_focus) != nullptr ? g_focus : nullptr; }

HWND WINAPI GetDlgItem(HWND dialog, int id) {
    for (HWND c : children(dialog))
        if (find(c)->id == id) return c;
    SetLastError(1421);  // ERROR_CONTROL_ID_NOT_FOUND
    return nullptr;
}

int WINAPI GetDlgCtrlID(HWND h) {
    Window* w = find(h);
    return w != nullptr ? w->id : 0;
}

HWND WINAPI FindWindowA(LPCSTR cls, LPCSTR name) {
    const ClassInfo* info = cls != nullptr ? find_class(cls) : nullptr;
    if (cls != nullptr && info == nullptr) return nullptr;
    for (HWND h : zr::headless::top_level_z_order()) {
        Window* w = find(h);
        if (info != nullptr && compare_nocase(w->cls, info->name) != 0) continue;
        if (name != nullptr && compare_nocase(w->text, name) != 0) continue;
        return h;
    }
    return nullptr;
}

int WINAPI GetClassNameA(HWND h, LPSTR buffer, int capacity) {
    Window* w = find(h);
    if (w == nullptr || buffer == nullptr || capacity <= 0) return 0;
    return copy_text(w->cls, buffer, static_cast<size_t>(capacity));
}
