// Headless window longs: styles, ids, user data, the window procedure and
// the window extra bytes (where a dialog keeps DWLP_MSGRESULT and DWLP_USER).
#include <cstring>

#include "platform/headless/ui_internal.h"

using namespace zr::headless::ui;

namespace {

bool extra_slot(Window& w, int index, size_t size) {
    return index >= 0 && static_cast<size_t>(index) + size <= w.extra.size();
}

LONG_PTR get_long(HWND h, int index, size_t size) {
    Window* w = find(h);
    if (w == nullptr) return 0;
    switch (index) {
        case GWL_STYLE:
            return static_cast<LONG>(w->style);
        case GWL_EXSTYLE:
            return static_cast<LONG>(w->ex_style);
        case GWLP_ID:
            return w->id;
        case GWLP_USERDATA:
            return w->user_data;
        case GWLP_HINSTANCE:
            return reinterpret_cast<LONG_PTR>(w->instance);
        case GWLP_HWNDPARENT:
            return reinterpret_cast<LONG_PTR>(w->parent != nullptr ? w->parent : w->owner);
        case GWLP_WNDPROC:
            return reinterpret_cast<LONG_PTR>(w->proc);
        default:
            break;
    }
    if (!extra_slot(*w, index, size)) {
        SetLastError(1413);  // ERROR_INVALID_INDEX
        return 0;
    }
    if (size == sizeof(LONG)) {
        LONG v;
        std::memcpy(&v, &w->extra[static_cast<size_t>(index)], sizeof v);
        return v;
    }
    LONG_PTR v;
    std::memcpy(&v, &w->extra[static_cast<size_t>(index)], sizeof v);
    return v;
}

LONG_PTR set_long(HWND h, int index, LONG_PTR value, size_t size) {
    Window* w = find(h);
    if (w == nullptr) return 0;
    const LONG_PTR old = get_long(h, index, size);
    switch (index) {
        case GWL_STYLE:
            w->style = static_cast<DWORD>(value);
            return old;
        case GWL_EXSTYLE:  // the topmost band is changed by SetWindowPos only
            w->ex_style = (static_cast<DWORD>(value) & ~WS_EX_TOPMOST) | (w->ex_style & WS_EX_TOPMOST);
            return old;
        case GWLP_ID:
            w->id = static_cast<int>(value);
            return old;
        case GWLP_USERDATA:
            w->user_data = value;
            return old;
        case GWLP_HINSTANCE:
            w->instance = reinterpret_cast<HINSTANCE>(value);
            return old;
        case GWLP_WNDPROC:
            w->proc = reinterpret_cast<WNDPROC>(value);
            return old;
        case GWLP_HWNDPARENT:
            return old;
        default:
            break;
    }
    if (!extra_slot(*w, index, size)) return 0;
    if (size == sizeof(LONG)) {
        const LONG v = static_cast<LONG>(value);
        std::memcpy(&w->extra[static_cast<size_t>(index)], &v, sizeof v);
    } else {
        std::memcpy(&w->extra[static_cast<size_t>(index)], &value, sizeof value);
    }
    return old;
}

}  // namespace

LONG WINAPI GetWindowLongA(HWND h, int index) { return static_cast<LONG>(get_long(h, index, sizeof(LONG))); }
LONG WINAPI SetWindowLongA(HWND h, int index, LONG value) {
    return static_cast<LONG>(set_long(h, index, value, sizeof(LONG)));
}
LONG_PTR WINAPI GetWindowLongPtrA(HWND h, int index) { return get_long(h, index, sizeof(LONG_PTR)); }
LONG_PTR WINAPI SetWindowLongPtrA(HWND h, int index, LONG_PTR value) {
    return set_long(h, index, value, sizeof(LONG_PTR));
}
