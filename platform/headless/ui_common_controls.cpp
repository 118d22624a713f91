// Headless common controls: track bars, up-down controls (with their buddy
// edit), list views and image lists, with comctl32's built-in behaviour.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>

#include "platform/headless/ui_internal.h"

namespace zr::headless::ui {

namespace {

struct ImageList {
    int cx, cy;
    UINT flags;
    int count;
};
std::map<uintptr_t, ImageList> g_image_lists;
uintptr_t g_next_image_list = 0x70000;

int clamp_between(int value, int a, int b) { return std::clamp(value, std::min(a, b), std::max(a, b)); }

// The buddy's text as comctl32 writes it: decimal with thousands separators
// unless UDS_NOTHOUSANDS, or "0x%04X" in base 16.
std::string buddy_text(const Window& w) {
    char text[32];
    if (w.base == 16) {
        std::snprintf(text, sizeof text, "0x%04X", static_cast<unsigned>(w.pos));
        return text;
    }
    std::snprintf(text, sizeof text, "%d", w.pos);
    std::string out = text;
    if (!(w.style & UDS_NOTHOUSANDS)) {
        const size_t digits_from = out[0] == '-' ? 1 : 0;
        for (long i = static_cast<long>(out.size()) - 3; i > static_cast<long>(digits_from); i -= 3)
            out.insert(static_cast<size_t>(i), ",");
    }
    return out;
}

void write_buddy(Window& w) {
    if ((w.style & UDS_SETBUDDYINT) && find(w.buddy) != nullptr)
        SetWindowTextA(w.buddy, buddy_text(w).c_str());
}

// Reads the buddy's number into the position; false when the text is not a
// number within the range.
bool read_buddy(Window& w) {
    if (!(w.style & UDS_SETBUDDYINT) || find(w.buddy) == nullptr) return true;
    std::string text = find(w.buddy)->text;
    text.erase(std::remove(text.begin(), text.end(), ','), text.end());
    if (text.empty()) return false;
    char* end = nullptr;
    const long value = std::strtol(text.c_str(), &end, w.base == 16 ? 16 : 10);
    if (*end != '\0' || value < std::min(w.low, w.high) || value > std::max(w.low, w.high)) return false;
    w.pos = static_cast<int>(value);
    return true;
}

int set_up_down_pos(Window& w, int value) {
    const int old = w.pos;
    w.pos = clamp_between(value, w.low, w.high);
    write_buddy(w);
    return old;
}

bool valid_item(const Window& w, int index) { return index >= 0 && index < static_cast<int>(w.items.size()); }

std::string& item_text(ViewItem& item, int sub) {
    if (static_cast<size_t>(sub) >= item.texts.size()) item.texts.resize(static_cast<size_t>(sub) + 1);
    return item.texts[static_cast<size_t>(sub)];
}

// Sets the parts of item `index` that `in` names, with LVN_ITEMCHANGING
// (which may refuse) and LVN_ITEMCHANGED, as the list view notifies its
// parent of every change to an item.
bool set_item(Window& w, int index, const LVITEMA& in) {
    if (!valid_item(w, index)) return false;
    ViewItem& item = w.items[static_cast<size_t>(index)];
    if (in.iSubItem != 0) {
        if (!(in.mask & LVIF_TEXT)) return true;
        item_text(item, in.iSubItem) = in.pszText != nullptr ? in.pszText : "";
        return true;
    }
    ViewItem next = item;
    UINT changed = 0;
    if ((in.mask & LVIF_TEXT) && item_text(next, 0) != (in.pszText != nullptr ? in.pszText : "")) {
        item_text(next, 0) = in.pszText != nullptr ? in.pszText : "", changed |= LVIF_TEXT;
    }
    if ((in.mask & LVIF_PARAM) && next.param != in.lParam) next.param = in.lParam, changed |= LVIF_PARAM;
    if ((in.mask & LVIF_IMAGE) && next.image != in.iImage) next.image = in.iImage, changed |= LVIF_IMAGE;
    if (in.mask & LVIF_STATE) {
        const UINT state = (next.state & ~in.stateMask) | (in.state & in.stateMask);
        if (state != next.state) next.state = state, changed |= LVIF_STATE;
    }
    if (changed == 0) return true;
    NMLISTVIEW nm{};
    nm.iItem = index;
    nm.uNewState = next.state, nm.uOldState = item.state, nm.uChanged = changed, nm.lParam = item.param;
    if (notify_parent(w, LVN_ITEMCHANGING, &nm.hdr) != 0) return false;
    if (!valid_item(w, index)) return false;
    w.items[static_cast<size_t>(index)] = next;
    nm.lParam = next.param;
    notify_parent(w, LVN_ITEMCHANGED, &nm.hdr);
    return true;
}

bool set_state(Window& w, int index, UINT state, UINT mask) {
    LVITEMA in{};
    in.mask = LVIF_STATE, in.state = state, in.stateMask = mask;
    // One selected item at most in a single-selection view; one focused item.
    if (state & mask & (LVIS_SELECTED | LVIS_FOCUSED)) {
        for (int i = 0; i < static_cast<int>(w.items.size()); ++i) {
            if (i == index) continue;
            UINT clear = 0;
            if ((state & mask & LVIS_SELECTED) && (w.style & LVS_SINGLESEL)) clear |= LVIS_SELECTED;
            if (state & mask & LVIS_FOCUSED) clear |= LVIS_FOCUSED;
            if (w.items[static_cast<size_t>(i)].state & clear) {
                LVITEMA off{};
                off.mask = LVIF_STATE, off.stateMask = clear;
                set_item(w, i, off);
            }
        }
    }
    return set_item(w, index, in);
}

int insert_item(Window& w, const LVITEMA& in) {
    if (in.iSubItem != 0) return -1;
    ViewItem item;
    item.texts.push_back((in.mask & LVIF_TEXT) && in.pszText != nullptr ? in.pszText : "");
    if (in.mask & LVIF_PARAM) item.param = in.lParam;
    if (in.mask & LVIF_IMAGE) item.image = in.iImage;
    if (in.mask & LVIF_STATE) item.state = in.state & in.stateMask;
    int at = std::clamp(in.iItem, 0, static_cast<int>(w.items.size()));
    if (w.style & (LVS_SORTASCENDING | LVS_SORTDESCENDING)) {
        const bool down = (w.style & LVS_SORTDESCENDING) != 0;
        at = 0;
        while (at < static_cast<int>(w.items.size())) {
            const int c = compare_nocase(w.items[static_cast<size_t>(at)].texts[0], item.texts[0]);
            if (down ? c < 0 : c > 0) break;
            ++at;
        }
    }
    w.items.insert(w.items.begin() + at, item);
    NMLISTVIEW nm{};
    nm.iItem = at, nm.lParam = item.param;
    notify_parent(w, LVN_INSERTITEM, &nm.hdr);
    return at;
}

bool delete_item(Window& w, int index) {
    if (!valid_item(w, index)) return false;
    NMLISTVIEW nm{};
    nm.iItem = index, nm.lParam = w.items[static_cast<size_t>(index)].param;
    notify_parent(w, LVN_DELETEITEM, &nm.hdr);
    if (valid_item(w, index)) w.items.erase(w.items.begin() + index);
    return true;
}

int next_item(const Window& w, int start, UINT flags) {
    const UINT want = flags & (LVNI_SELECTED | LVNI_FOCUSED | LVNI_CUT | LVNI_DROPHILITED);
    for (int i = std::max(start + 1, 0); i < static_cast<int>(w.items.size()); ++i)
        if ((w.items[static_cast<size_t>(i)].state & want) == want) return i;
    return -1;
}

int get_item_text(Window& w, int index, LVITEMA* out) {
    if (out == nullptr || !valid_item(w, index) || out->pszText == nullptr || out->cchTextMax <= 0) return 0;
    return copy_text(item_text(w.items[static_cast<size_t>(index)], out->iSubItem), out->pszText,
                     static_cast<size_t>(out->cchTextMax));
}

}  // namespace

void attach_auto_buddy(Window& w) {
    if (!(w.style & UDS_AUTOBUDDY) || w.buddy != nullptr) return;
    std::vector<HWND> siblings = children(w.parent);
    auto at = std::find(siblings.begin(), siblings.end(), w.handle);
    if (at != siblings.end() && at != siblings.begin()) w.buddy = *(at - 1);
}

void reset_image_lists() { g_image_lists.clear(); }

LRESULT CALLBACK track_bar_proc(HWND h, UINT message, WPARAM wparam, LPARAM lparam) {
    Window* w = find(h);
    if (w == nullptr) return 0;
    switch (message) {
        case TBM_GETPOS:
            return w->pos;
        case TBM_GETRANGEMIN:
            return w->low;
        case TBM_GETRANGEMAX:
            return w->high;
        case TBM_SETPOS:
            w->pos = std::max(std::min(static_cast<int>(lparam), w->high), w->low);
            return 0;
        case TBM_SETRANGE:
            w->low = static_cast<short>(LOWORD(lparam)), w->high = static_cast<short>(HIWORD(lparam));
            w->pos = std::max(std::min(w->pos, w->high), w->low);
            return 0;
        case TBM_SETRANGEMIN:
            w->low = static_cast<int>(lparam);
            w->pos = std::max(w->pos, w->low);
            return 0;
        case TBM_SETRANGEMAX:
            w->high = static_cast<int>(lparam);
            w->pos = std::min(w->pos, w->high);
            return 0;
        case TBM_SETTICFREQ:
        case TBM_SETTIC:
        case TBM_CLEARTICS:
        case TBM_SETSEL:
        case TBM_SETSELSTART:
        case TBM_SETSELEND:
        case TBM_CLEARSEL:
        case TBM_SETPAGESIZE:
        case TBM_SETLINESIZE:
            return 0;
        default:
            return default_window_proc(h, message, wparam, lparam);
    }
}

LRESULT CALLBACK up_down_proc(HWND h, UINT message, WPARAM wparam, LPARAM lparam) {
    Window* w = find(h);
    if (w == nullptr) return 0;
    switch (message) {
        case UDM_SETRANGE:
            w->high = static_cast<short>(LOWORD(lparam)), w->low = static_cast<short>(HIWORD(lparam));
            return 0;
        case UDM_SETRANGE32:
            w->low = static_cast<int>(static_cast<intptr_t>(wparam)), w->high = static_cast<int>(lparam);
            return 0;
        case UDM_GETRANGE:
            return MAKELONG(w->high, w->low);
        case UDM_GETRANGE32:
            if (wparam) *reinterpret_cast<int*>(wparam) = w->low;
            if (lparam) *reinterpret_cast<int*>(lparam) = w->high;
            return 0;
        case UDM_SETPOS:
            return set_up_down_pos(*w, static_cast<short>(LOWORD(lparam)));
        case UDM_SETPOS32:
            return set_up_down_pos(*w, static_cast<int>(lparam));
        case UDM_GETPOS: {
            const bool ok = read_buddy(*w);
            return static_cast<LRESULT>(static_cast<DWORD>(MAKELONG(w->pos, ok ? 0 : 1)));
        }
        case UDM_GETPOS32: {
            const bool ok = read_buddy(*w);
            if (lparam) *reinterpret_cast<BOOL*>(lparam) = ok ? FALSE : TRUE;
            return w->pos;
        }
        case UDM_SETBUDDY: {
            const HWND old = w->buddy;
            w->buddy = reinterpret_cast<HWND>(wparam);
            return reinterpret_cast<LRESULT>(old);
        }
        case UDM_GETBUDDY:
            return reinterpret_cast<LRESULT>(w->buddy);
        case UDM_SETBASE: {
            if (wparam != 10 && wparam != 16) return 0;
            const int old = w->base;
            w->base = static_cast<int>(wparam);
            return old;
        }
        case UDM_GETBASE:
            return w->base;
        case UDM_SETACCEL:
            return TRUE;
        case UDM_GETACCEL:
            return 0;
        default:
            return default_window_proc(h, message, wparam, lparam);
    }
}

LRESULT CALLBACK list_view_proc(HWND h, UINT message, WPARAM wparam, LPARAM lparam) {
    Window* w = find(h);
    if (w == nullptr) return 0;
    const int index = static_cast<int>(static_cast<intptr_t>(wparam));
    LVITEMA* item = reinterpret_cast<LVITEMA*>(lparam);
    switch (message) {
        case LVM_GETITEMCOUNT:
            return static_cast<LRESULT>(w->items.size());
        case LVM_INSERTITEMA:
            return item != nullptr ? insert_item(*w, *item) : -1;
        case LVM_SETITEMA:
            return item != nullptr && set_item(*w, item->iItem, *item);
        case LVM_GETITEMA: {
            if (item == nullptr || !valid_item(*w, item->iItem)) return FALSE;
            ViewItem& it = w->items[static_cast<size_t>(item->iItem)];
            if (item->mask & LVIF_TEXT) get_item_text(*w, item->iItem, item);
            if (item->iSubItem != 0) return TRUE;
            if (item->mask & LVIF_PARAM) item->lParam = it.param;
            if (item->mask & LVIF_IMAGE) item->iImage = it.image;
            if (item->mask & LVIF_STATE) item->state = it.state & item->stateMask;
            return TRUE;
        }
        case LVM_DELETEITEM:
            return delete_item(*w, index);
        case LVM_DELETEALLITEMS: {
            NMLISTVIEW nm{};
            nm.iItem = -1;
            const bool quiet = notify_parent(*w, LVN_DELETEALLITEMS, &nm.hdr) != 0;
            while (!w->items.empty()) {
                if (quiet)
                    w->items.pop_back();
                else
                    delete_item(*w, static_cast<int>(w->items.size()) - 1);
            }
            return TRUE;
        }
        case LVM_GETNEXTITEM:
            return next_item(*w, index, static_cast<UINT>(lparam));
        case LVM_SETITEMSTATE:
            if (item == nullptr) return FALSE;
            if (index == -1) {
                for (int i = 0; i < static_cast<int>(w->items.size()); ++i)
                    set_state(*w, i, item->state, item->stateMask);
                return TRUE;
            }
            return valid_item(*w, index) && set_state(*w, index, item->state, item->stateMask);
        case LVM_GETITEMSTATE:
            return valid_item(*w, index)
                       ? w->items[static_cast<size_t>(index)].state & static_cast<UINT>(lparam)
                       : 0;
        case LVM_GETITEMTEXTA:
            return get_item_text(*w, index, item);
        case LVM_SETITEMTEXTA: {
            if (item == nullptr || !valid_item(*w, index)) return FALSE;
            LVITEMA in = *item;
            in.mask = LVIF_TEXT;
            return set_item(*w, index, in);
        }
        case LVM_GETSELECTEDCOUNT:
            return std::count_if(w->items.begin(), w->items.end(),
                                 [](const ViewItem& x) { return (x.state & LVIS_SELECTED) != 0; });
        case LVM_INSERTCOLUMNA: {
            const LVCOLUMNA* col = reinterpret_cast<const LVCOLUMNA*>(lparam);
            if (col == nullptr) return -1;
            const int at = std::clamp(index, 0, static_cast<int>(w->columns.size()));
            w->columns.insert(w->columns.begin() + at,
                              (col->mask & LVCF_TEXT) && col->pszText != nullptr ? col->pszText : "");
            w->column_widths.insert(w->column_widths.begin() + at, (col->mask & LVCF_WIDTH) ? col->cx : 0);
            return at;
        }
        case LVM_GETCOLUMNWIDTH:
            return index >= 0 && index < static_cast<int>(w->column_widths.size())
                       ? w->column_widths[static_cast<size_t>(index)]
                       : 0;
        case LVM_SETCOLUMNWIDTH:
            if (index < 0 || index >= static_cast<int>(w->column_widths.size())) return FALSE;
            w->column_widths[static_cast<size_t>(index)] = static_cast<int>(LOWORD(lparam));
            return TRUE;
        case LVM_SETIMAGELIST: {
            if (index < 0 || index > 2) return 0;
            const HIMAGELIST old = w->images[index];
            w->images[index] = reinterpret_cast<HIMAGELIST>(lparam);
            return reinterpret_cast<LRESULT>(old);
        }
        case LVM_GETIMAGELIST:
            return index >= 0 && index <= 2 ? reinterpret_cast<LRESULT>(w->images[index]) : 0;
        case LVM_SETEXTENDEDLISTVIEWSTYLE: {
            const DWORD old = w->view_ex_style;
            const DWORD mask = wparam != 0 ? static_cast<DWORD>(wparam) : 0xFFFFFFFFu;
            w->view_ex_style = (old & ~mask) | (static_cast<DWORD>(lparam) & mask);
            return old;
        }
        case LVM_GETEXTENDEDLISTVIEWSTYLE:
            return w->view_ex_style;
        case LVM_ENSUREVISIBLE:
            return TRUE;
        case LVM_EDITLABELA:
        case LVM_GETEDITCONTROL:
            return 0;
        default:
            return default_window_proc(h, message, wparam, lparam);
    }
}

}  // namespace zr::headless::ui

using namespace zr::headless::ui;

HIMAGELIST WINAPI ImageList_Create(int cx, int cy, UINT flags, int, int) {
    g_next_image_list += 4;
    g_image_lists[g_next_image_list] = ImageList{cx, cy, flags, 0};
    return reinterpret_cast<HIMAGELIST>(g_next_image_list);
}

BOOL WINAPI ImageList_Destroy(HIMAGELIST list) {
    return g_image_lists.erase(reinterpret_cast<uintptr_t>(list)) != 0;
}

int WINAPI ImageList_ReplaceIcon(HIMAGELIST list, int i, HICON icon) {
    auto it = g_image_lists.find(reinterpret_cast<uintptr_t>(list));
    if (it == g_image_lists.end() || icon == nullptr) return -1;
    if (i == -1) return it->second.count++;
    return i >= 0 && i < it->second.count ? i : -1;
}

int WINAPI ImageList_GetImageCount(HIMAGELIST list) {
    auto it = g_image_lists.find(reinterpret_cast<uintptr_t>(list));
    return it != g_image_lists.end() ? it->second.count : 0;
}
