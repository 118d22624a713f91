// Headless standard controls: buttons, edits, statics, list boxes and combo
// boxes, with the built-in behaviour of the Windows controls.  Programmatic
// changes never notify, except where Windows does (an edit's WM_SETTEXT).
#include <algorithm>
#include <cstring>

#include "platform/headless/ui_internal.h"

namespace zr::headless::ui {

namespace {

bool checkable(UINT type) {
    switch (type) {
        case BS_CHECKBOX:
        case BS_AUTOCHECKBOX:
        case BS_RADIOBUTTON:
        case BS_AUTORADIOBUTTON:
        case BS_3STATE:
        case BS_AUTO3STATE:
            return true;
        default:
            return false;
    }
}

// The group of a control: from the nearest WS_GROUP control at or before it
// to the next WS_GROUP control, in creation order.
void uncheck_group_radios(Window& button) {
    std::vector<HWND> siblings = children(button.parent);
    auto at = std::find(siblings.begin(), siblings.end(), button.handle);
    if (at == siblings.end()) return;
    auto first = at;
    while (first != siblings.begin() && !(find(*first)->style & WS_GROUP)) --first;
    auto last = at + 1;
    while (last != siblings.end() && !(find(*last)->style & WS_GROUP)) ++last;
    for (auto it = first; it != last; ++it) {
        Window* s = find(*it);
        if (s != nullptr && s != &button && s->kind == Kind::Button &&
            (s->style & BS_TYPEMASK) == BS_AUTORADIOBUTTON)
            s->check = BST_UNCHECKED;
    }
}

void click(Window& w) {
    const UINT type = w.style & BS_TYPEMASK;
    switch (type) {
        case BS_AUTOCHECKBOX:
            w.check = (w.check & BST_CHECKED) ? BST_UNCHECKED : BST_CHECKED;
            break;
        case BS_AUTO3STATE:
            w.check = (w.check & BST_INDETERMINATE) ? BST_UNCHECKED : (w.check & 3) + 1;
            break;
        case BS_AUTORADIOBUTTON:
            w.check = BST_CHECKED;
            uncheck_group_radios(w);
            break;
        case BS_GROUPBOX:
            return;  // group boxes take no clicks
        default:
            break;
    }
    notify_parent_command(w, BN_CLICKED);
}

int find_entry(const std::vector<ListEntry>& entries, WPARAM start_param, const std::string& text,
               bool exact) {
    const int count = static_cast<int>(entries.size());
    int start = static_cast<int>(static_cast<intptr_t>(start_param));
    if (start < -1 || start >= count) start = -1;
    for (int n = 0; n < count; ++n) {
        const int i = (start + 1 + n) % count;
        const std::string& t = entries[static_cast<size_t>(i)].text;
        if (exact ? compare_nocase(t, text) == 0 : starts_with_nocase(t, text)) return i;
    }
    return -1;
}

// Sorted lists insert behind the items that compare equal, without regard
// to letter case.
int insert_entry(Window& w, int index, const std::string& text, bool sorted) {
    auto& e = w.entries;
    if (sorted) {
        // After every entry that compares equal or lower, as the list box does.
        const auto after = std::upper_bound(e.begin(), e.end(), text, [](const std::string& t, const ListEntry& x) {
            return compare_nocase(x.text, t) > 0;
        });
        index = static_cast<int>(after - e.begin());
    } else if (index < 0) {
        index = static_cast<int>(e.size());
    } else if (index > static_cast<int>(e.size())) {
        return -1;
    }
    e.insert(e.begin() + index, ListEntry{text, 0, false});
    if (w.current >= index) ++w.current;
    return index;
}

int delete_entry(Window& w, int index) {
    if (index < 0 || index >= static_cast<int>(w.entries.size())) return -1;
    w.entries.erase(w.entries.begin() + index);
    if (w.current == index)
        w.current = -1;
    else if (w.current > index)
        --w.current;
    return static_cast<int>(w.entries.size());
}

bool valid(const Window& w, int index) { return index >= 0 && index < static_cast<int>(w.entries.size()); }

int whole_text(const std::string& text, LPARAM buffer) {
    char* out = reinterpret_cast<char*>(buffer);
    if (out == nullptr) return -1;
    std::memcpy(out, text.c_str(), text.size() + 1);  // the caller guarantees room, as in Windows
    return static_cast<int>(text.size());
}

}  // namespace

LRESULT CALLBACK button_proc(HWND h, UINT message, WPARAM wparam, LPARAM lparam) {
    Window* w = find(h);
    if (w == nullptr) return 0;
    const UINT type = w->style & BS_TYPEMASK;
    switch (message) {
        case BM_GETCHECK:
            return checkable(type) ? w->check : 0;
        case BM_SETCHECK:
            if (checkable(type)) {
                const int most =
                    (type == BS_3STATE || type == BS_AUTO3STATE) ? BST_INDETERMINATE : BST_CHECKED;
                w->check = std::min(static_cast<int>(wparam & 3), most);
            }
            return 0;
        case BM_GETSTATE:
            return checkable(type) ? w->check : 0;
        case BM_SETSTATE:
        case BM_SETSTYLE:
            return 0;
        case BM_CLICK:
            if (!(w->style & WS_DISABLED)) click(*w);
            return 0;
        default:
            return default_window_proc(h, message, wparam, lparam);
    }
}

LRESULT CALLBACK edit_proc(HWND h, UINT message, WPARAM wparam, LPARAM lparam) {
    Window* w = find(h);
    if (w == nullptr) return 0;
    const int length = static_cast<int>(w->text.size());
    switch (message) {
        case WM_SETTEXT:
            // Not cut to the limit, as in Windows; single-line edits notify.
            w->text = text_of(lparam);
            w->sel_start = w->sel_end = 0;
            if (!(w->style & ES_MULTILINE)) {
                notify_parent_command(*w, EN_UPDATE);
                notify_parent_command(*w, EN_CHANGE);
            }
            return TRUE;
        case EM_LIMITTEXT:
            w->limit = wparam != 0 ? static_cast<UINT>(wparam) : 0x7FFFFFFEu;
            return 0;
        case EM_GETLIMITTEXT:
            return w->limit;
        case EM_SETREADONLY:
            if (wparam)
                w->style |= ES_READONLY;
            else
                w->style &= ~ES_READONLY;
            return TRUE;
        case EM_SETSEL: {
            int a = static_cast<int>(static_cast<intptr_t>(wparam)), b = static_cast<int>(lparam);
            if (a == -1) b = a = w->sel_start;
            if (b < 0 || b > length) b = length;
            if (a < 0 || a > length) a = length;
            w->sel_start = std::min(a, b), w->sel_end = std::max(a, b);
            return 0;
        }
        case EM_GETSEL:
            if (wparam) *reinterpret_cast<DWORD*>(wparam) = static_cast<DWORD>(w->sel_start);
            if (lparam) *reinterpret_cast<DWORD*>(lparam) = static_cast<DWORD>(w->sel_end);
            return MAKELONG(w->sel_start, w->sel_end);
        case EM_REPLACESEL: {
            const int a = std::min(w->sel_start, length), b = std::min(w->sel_end, length);
            std::string insert = text_of(lparam);
            const size_t room =
                w->limit > static_cast<UINT>(length - (b - a)) ? w->limit - (length - (b - a)) : 0;
            if (insert.size() > room) insert.resize(room);
            w->text.replace(static_cast<size_t>(a), static_cast<size_t>(b - a), insert);
            w->sel_start = w->sel_end = a + static_cast<int>(insert.size());
            notify_parent_command(*w, EN_UPDATE);
            notify_parent_command(*w, EN_CHANGE);
            return 0;
        }
        case EM_GETLINECOUNT:
            return 1;
        case EM_GETMODIFY:
        case EM_SETMODIFY:
        case EM_CANUNDO:
        case EM_UNDO:
        case EM_SCROLLCARET:
        case EM_SETPASSWORDCHAR:
            return 0;
        default:
            return default_window_proc(h, message, wparam, lparam);
    }
}

LRESULT CALLBACK static_proc(HWND h, UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
        case STM_SETICON:
        case STM_SETIMAGE:
        case STM_GETICON:
        case STM_GETIMAGE:
            return 0;
        default:
            return default_window_proc(h, message, wparam, lparam);
    }
}

LRESULT CALLBACK list_box_proc(HWND h, UINT message, WPARAM wparam, LPARAM lparam) {
    Window* w = find(h);
    if (w == nullptr) return 0;
    const bool multi = (w->style & (LBS_MULTIPLESEL | LBS_EXTENDEDSEL)) != 0;
    const int index = static_cast<int>(static_cast<intptr_t>(wparam));
    auto& e = w->entries;
    switch (message) {
        case LB_ADDSTRING:
            return insert_entry(*w, -1, text_of(lparam), (w->style & LBS_SORT) != 0);
        case LB_INSERTSTRING: {
            const int at = insert_entry(*w, index, text_of(lparam), false);
            return at >= 0 ? at : LB_ERR;
        }
        case LB_DELETESTRING: {
            const int left = delete_entry(*w, index);
            return left >= 0 ? left : LB_ERR;
        }
        case LB_RESETCONTENT:
            e.clear();
            w->current = -1, w->top = 0;
            return 0;
        case LB_GETCOUNT:
            return static_cast<LRESULT>(e.size());
        case LB_GETTEXT:
            return valid(*w, index) ? whole_text(e[static_cast<size_t>(index)].text, lparam) : LB_ERR;
        case LB_GETTEXTLEN:
            return valid(*w, index) ? static_cast<LRESULT>(e[static_cast<size_t>(index)].text.size())
                                    : LB_ERR;
        case LB_SETSEL: {
            if (!multi) return LB_ERR;
            const int at = static_cast<int>(lparam);
            if (at == -1) {
                for (ListEntry& entry : e) entry.selected = wparam != 0;
                return 0;
            }
            if (!valid(*w, at)) return LB_ERR;
            e[static_cast<size_t>(at)].selected = wparam != 0;
            w->current = at;
            return 0;
        }
        case LB_GETSEL:
            if (!valid(*w, index)) return LB_ERR;
            return multi ? e[static_cast<size_t>(index)].selected : index == w->current;
        case LB_GETSELCOUNT:
            if (!multi) return LB_ERR;
            return std::count_if(e.begin(), e.end(), [](const ListEntry& x) { return x.selected; });
        case LB_GETSELITEMS: {
            if (!multi) return LB_ERR;
            int* out = reinterpret_cast<int*>(lparam);
            if (out == nullptr) return LB_ERR;
            int n = 0;
            for (size_t i = 0; i < e.size() && n < index; ++i)
                if (e[i].selected) out[n++] = static_cast<int>(i);
            return n;
        }
        case LB_SETCURSEL:
            if (multi) {
                if (valid(*w, index)) w->current = index;
                return LB_ERR;
            }
            if (index == -1) {
                w->current = -1;
                return LB_ERR;
            }
            if (!valid(*w, index)) return LB_ERR;
            w->current = index;
            return index;
        case LB_GETCURSEL:
            if (!multi) return w->current >= 0 ? w->current : LB_ERR;
            return e.empty() ? LB_ERR : std::max(w->current, 0);
        case LB_GETCARETINDEX:
            return std::max(w->current, 0);
        case LB_SETCARETINDEX:
            if (!valid(*w, index)) return LB_ERR;
            if (multi) w->current = index;
            return 0;
        case LB_SELITEMRANGE:
        case LB_SELITEMRANGEEX: {
            if (!multi || e.empty()) return LB_ERR;
            bool select = true;
            int first, last;
            if (message == LB_SELITEMRANGE) {
                select = wparam != 0, first = LOWORD(lparam), last = HIWORD(lparam);
            } else {
                first = index, last = static_cast<int>(lparam);
                if (first > last) std::swap(first, last), select = false;
            }
            last = std::min(last, static_cast<int>(e.size()) - 1);
            for (int i = std::max(first, 0); i <= last; ++i) e[static_cast<size_t>(i)].selected = select;
            return 0;
        }
        case LB_SETITEMDATA:
            if (!valid(*w, index)) return LB_ERR;
            e[static_cast<size_t>(index)].data = lparam;
            return TRUE;
        case LB_GETITEMDATA:
            return valid(*w, index) ? e[static_cast<size_t>(index)].data : LB_ERR;
        case LB_FINDSTRING:
        case LB_FINDSTRINGEXACT:
        case LB_SELECTSTRING: {
            const int at = find_entry(e, wparam, text_of(lparam), message == LB_FINDSTRINGEXACT);
            if (at < 0) return LB_ERR;
            if (message == LB_SELECTSTRING && !multi) w->current = at;
            return at;
        }
        case LB_GETTOPINDEX:
            return w->top;
        case LB_SETTOPINDEX:
            if (!valid(*w, index) && !(index == 0 && e.empty())) return LB_ERR;
            w->top = index;
            return 0;
        case LB_GETITEMHEIGHT:
            return 13;
        case LB_SETITEMHEIGHT:
        case LB_SETTABSTOPS:
        case LB_SETCOLUMNWIDTH:
        case LB_SETHORIZONTALEXTENT:
        case LB_INITSTORAGE:
            return 0;
        default:
            return default_window_proc(h, message, wparam, lparam);
    }
}

LRESULT CALLBACK combo_box_proc(HWND h, UINT message, WPARAM wparam, LPARAM lparam) {
    Window* w = find(h);
    if (w == nullptr) return 0;
    const bool drop_list = (w->style & 3) == CBS_DROPDOWNLIST;
    const int index = static_cast<int>(static_cast<intptr_t>(wparam));
    auto& e = w->entries;
    auto select = [w](int at) {
        w->current = at;
        w->text = at >= 0 ? w->entries[static_cast<size_t>(at)].text : std::string();
    };
    switch (message) {
        case CB_ADDSTRING:
            return insert_entry(*w, -1, text_of(lparam), (w->style & CBS_SORT) != 0);
        case CB_INSERTSTRING: {
            const int at = insert_entry(*w, index, text_of(lparam), false);
            return at >= 0 ? at : CB_ERR;
        }
        case CB_DELETESTRING: {
            const bool was_current = index == w->current;
            const int left = delete_entry(*w, index);
            if (left >= 0 && was_current && drop_list) w->text.clear();
            return left >= 0 ? left : CB_ERR;
        }
        case CB_RESETCONTENT:
            e.clear();
            select(-1);
            return CB_OKAY;
        case CB_GETCOUNT:
            return static_cast<LRESULT>(e.size());
        case CB_GETCURSEL:
            return w->current >= 0 ? w->current : CB_ERR;
        case CB_SETCURSEL:
            // -1 or an index past the end clears the selection.
            select(valid(*w, index) ? index : -1);
            return valid(*w, index) ? index : CB_ERR;
        case CB_GETLBTEXT:
            return valid(*w, index) ? whole_text(e[static_cast<size_t>(index)].text, lparam) : CB_ERR;
        case CB_GETLBTEXTLEN:
            return valid(*w, index) ? static_cast<LRESULT>(e[static_cast<size_t>(index)].text.size())
                                    : CB_ERR;
        case CB_FINDSTRING:
        case CB_FINDSTRINGEXACT: {
            const int at = find_entry(e, wparam, text_of(lparam), message == CB_FINDSTRINGEXACT);
            return at >= 0 ? at : CB_ERR;
        }
        case CB_SELECTSTRING: {
            const int at = find_entry(e, wparam, text_of(lparam), false);
            if (at < 0) return CB_ERR;
            select(at);
            return at;
        }
        case CB_SETITEMDATA:
            if (!valid(*w, index)) return CB_ERR;
            e[static_cast<size_t>(index)].data = lparam;
            return TRUE;
        case CB_GETITEMDATA:
            return valid(*w, index) ? e[static_cast<size_t>(index)].data : CB_ERR;
        case CB_LIMITTEXT:
            w->limit = wparam != 0 ? static_cast<UINT>(wparam) : 0x7FFFFFFEu;
            return TRUE;
        case CB_SHOWDROPDOWN:
        case CB_GETDROPPEDSTATE:
        case CB_SETEXTENDEDUI:
        case CB_GETEXTENDEDUI:
        case CB_GETEDITSEL:
        case CB_SETEDITSEL:
        case CB_SETITEMHEIGHT:
            return 0;
        case CB_GETITEMHEIGHT:
            return 13;
        case WM_SETTEXT:
            if (drop_list) {
                const int at = find_entry(e, static_cast<WPARAM>(-1), text_of(lparam), true);
                if (at < 0) return CB_ERR;
                select(at);
                return TRUE;
            }
            w->text = text_of(lparam);
            return TRUE;
        default:
            return default_window_proc(h, message, wparam, lparam);
    }
}

}  // namespace zr::headless::ui
