// Headless property sheets, after comctl32: the sheet's template handed to
// PSCB_PRECREATE, the sheet window with OK, Cancel, Apply and Help, pages
// created from their templates when first shown, the page notifications and
// the PSM_* messages, run modally.
#include <algorithm>
#include <cstring>
#include <map>
#include <memory>

#include "platform/headless/ui_internal.h"

namespace zr::headless::ui {

namespace {

const int kTabControl = 0x3020;
const int kApplyButton = 0x3021;

struct Page {
    PROPSHEETPAGEA psp{};  // the sheet's copy; WM_INITDIALOG points at it
    const zr::res::DialogTemplate* tmpl = nullptr;
    HWND window = nullptr;
    bool dirty = false;
};

struct Sheet {
    PROPSHEETHEADERA header{};
    std::vector<Page> pages;
    int active = -1;
    bool active_valid = false;
    bool has_help = false;
    bool has_apply = true;
    bool ended = false;
    INT_PTR result = 0;
};

std::map<HWND, std::unique_ptr<Sheet>> g_sheets;

Sheet* sheet_of(HWND h) {
    auto it = g_sheets.find(h);
    return it != g_sheets.end() && find(h) != nullptr ? it->second.get() : nullptr;
}

LRESULT notify_page(HWND sheet, HWND page, UINT code, LPARAM lparam) {
    PSHNOTIFY psn{};
    psn.hdr.hwndFrom = sheet;
    psn.hdr.idFrom = 0;
    psn.hdr.code = code;
    psn.lParam = lparam;
    return send(page, WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&psn));
}

HWND active_page(Sheet& s) { return s.active >= 0 ? s.pages[static_cast<size_t>(s.active)].window : nullptr; }

bool create_page(HWND h, Sheet& s, int index) {
    Page& page = s.pages[static_cast<size_t>(index)];
    if ((page.psp.dwFlags & PSP_USECALLBACK) && page.psp.pfnCallback != nullptr &&
        page.psp.pfnCallback(nullptr, PSPCB_CREATE, &page.psp) == 0)
        return false;
    DWORD style = page.tmpl->style | WS_CHILD | WS_TABSTOP | DS_CONTROL;
    style &= ~(DS_MODALFRAME | WS_CAPTION | WS_SYSMENU | WS_POPUP | WS_DISABLED | WS_VISIBLE | WS_THICKFRAME);
    page.window = create_dialog(*page.tmpl, style, page.tmpl->ex_style | WS_EX_CONTROLPARENT, h,
                                page.psp.hInstance, page.psp.pfnDlgProc, reinterpret_cast<LPARAM>(&page.psp));
    return page.window != nullptr;
}

void show_page(Sheet& s, int index) {
    const HWND page = s.pages[static_cast<size_t>(index)].window;
    ShowWindow(page, SW_SHOW);
    if (s.active != -1 && s.active != index) ShowWindow(active_page(s), SW_HIDE);
    s.active = index;
    s.active_valid = true;
}

bool can_set_cur_sel(HWND h, Sheet& s) {
    if (s.active < 0) return true;
    return notify_page(h, active_page(s), PSN_KILLACTIVE, 0) == 0;
}

int page_index(Sheet& s, HPROPSHEETPAGE hpage, int index) {
    if (hpage == nullptr) return index;
    for (size_t i = 0; i < s.pages.size(); ++i)
        if (reinterpret_cast<HPROPSHEETPAGE>(&s.pages[i].psp) == hpage) return static_cast<int>(i);
    return -1;
}

int index_of_template(Sheet& s, LRESULT id) {
    for (size_t i = 0; i < s.pages.size(); ++i)
        if (reinterpret_cast<LRESULT>(s.pages[i].psp.pszTemplate) == id) return static_cast<int>(i);
    return static_cast<int>(s.pages.size());
}

bool set_cur_sel(HWND h, Sheet& s, int index, int skip, HPROPSHEETPAGE hpage) {
    index = page_index(s, hpage, index);
    const int count = static_cast<int>(s.pages.size());
    if (index < 0 || index >= count) return false;
    if (s.active != -1) ShowWindow(active_page(s), SW_HIDE);
    s.active = -1;
    for (;;) {
        if (s.pages[static_cast<size_t>(index)].window == nullptr && !create_page(h, s, index)) {
            DestroyWindow(h);  // a modal sheet whose page cannot be made goes away
            return false;
        }
        const LRESULT result = notify_page(h, s.pages[static_cast<size_t>(index)].window, PSN_SETACTIVE, 0);
        if (result == 0) break;
        if (result == -1) {
            index += skip;
            if (index < 0) {
                index = 0;
                break;
            }
            if (index >= count) {
                index = count - 1;
                break;
            }
            continue;
        }
        const int by_id = index_of_template(s, result);
        if (by_id >= count) break;
        index = by_id;
    }
    show_page(s, index);
    EnableWindow(GetDlgItem(h, IDHELP), (s.pages[static_cast<size_t>(index)].psp.dwFlags & PSP_HASHELP) != 0);
    return true;
}

bool apply(HWND h, Sheet& s, LPARAM closing) {
    if (s.active < 0) return false;
    if (notify_page(h, active_page(s), PSN_KILLACTIVE, 0) != 0) return false;
    for (size_t i = 0; i < s.pages.size(); ++i) {
        if (s.pages[i].window == nullptr) continue;  // pages never shown are not told
        const LRESULT answer = notify_page(h, s.pages[i].window, PSN_APPLY, closing);
        if (answer == PSNRET_INVALID) show_page(s, static_cast<int>(i));
        if (answer == PSNRET_INVALID || answer == PSNRET_INVALID_NOCHANGEPAGE) return false;
    }
    if (closing) {
        s.active_valid = false;
    } else if (s.active >= 0) {
        notify_page(h, active_page(s), PSN_SETACTIVE, 0);
    }
    return true;
}

// The cancel query goes to the current page only; the reset to every page
// made so far.
void cancel(HWND h, Sheet& s, LPARAM closing) {
    if (s.active < 0) return;
    if (notify_page(h, active_page(s), PSN_QUERYCANCEL, 0) != 0) return;
    for (Page& page : s.pages)
        if (page.window != nullptr) notify_page(h, page.window, PSN_RESET, closing);
    s.ended = true;
}

void changed(HWND h, Sheet& s, HWND page) {
    for (Page& p : s.pages)
        if (p.window == page) p.dirty = true;
    if (s.has_apply) EnableWindow(GetDlgItem(h, kApplyButton), TRUE);
}

void unchanged(HWND h, Sheet& s, HWND page) {
    bool any = false;
    for (Page& p : s.pages) {
        if (p.window == page) p.dirty = false;
        any = any || p.dirty;
    }
    if (!any) EnableWindow(GetDlgItem(h, kApplyButton), FALSE);
}

bool do_command(HWND h, Sheet& s, int id) {
    switch (id) {
        case IDOK:
        case kApplyButton:
            if (!apply(h, s, id == IDOK ? 1 : 0)) break;
            if (id == IDOK) {
                if (s.result == 0) s.result = IDOK;
                s.ended = true;
            } else {
                EnableWindow(GetDlgItem(h, kApplyButton), FALSE);
            }
            break;
        case IDCANCEL:
            cancel(h, s, 0);
            break;
        case IDHELP:
            if (s.active >= 0) notify_page(h, active_page(s), PSN_HELP, 0);
            break;
        default:
            return false;
    }
    return true;
}

void set_title(HWND h, Sheet& s, DWORD flags, LPCSTR text) {
    char loaded[256];
    if (IS_INTRESOURCE(text)) {
        if (text == nullptr ||
            LoadStringA(s.header.hInstance, static_cast<UINT>(reinterpret_cast<uintptr_t>(text)), loaded,
                        sizeof loaded) == 0)
            return;
        text = loaded;
    }
    std::string title = text;
    if (flags & PSH_PROPTITLE) title = "Properties for " + title;
    SetWindowTextA(h, title.c_str());
}

INT_PTR CALLBACK sheet_proc(HWND h, UINT message, WPARAM wparam, LPARAM lparam) {
    Sheet* sp = sheet_of(h);
    if (sp == nullptr) return FALSE;
    Sheet& s = *sp;
    auto answer = [h](LONG_PTR value) {
        SetWindowLongPtrA(h, DWLP_MSGRESULT, value);
        return TRUE;
    };
    switch (message) {
        case WM_INITDIALOG: {
            set_title(h, s, s.header.dwFlags, s.header.pszCaption);
            if ((s.header.dwFlags & PSH_USECALLBACK) && s.header.pfnCallback != nullptr)
                s.header.pfnCallback(h, PSCB_INITIALIZED, 0);
            const int start = s.active;
            s.active = -1;
            if (sheet_of(h) != nullptr) set_cur_sel(h, s, start, 1, nullptr);
            if (sheet_of(h) != nullptr) unchanged(h, s, nullptr);
            return FALSE;
        }
        case WM_CLOSE:
            cancel(h, s, 1);
            return FALSE;  // the dialog manager then posts the Cancel command
        case WM_COMMAND:
            if (!do_command(h, s, LOWORD(wparam)) && s.active_valid && s.active != -1)
                send(active_page(s), WM_COMMAND, wparam, lparam);
            return TRUE;
        case PSM_GETCURRENTPAGEHWND:
            return answer(reinterpret_cast<LONG_PTR>(s.active_valid ? active_page(s) : nullptr));
        case PSM_CHANGED:
            changed(h, s, reinterpret_cast<HWND>(wparam));
            return TRUE;
        case PSM_UNCHANGED:
            unchanged(h, s, reinterpret_cast<HWND>(wparam));
            return TRUE;
        case PSM_SETCURSEL: {
            bool ok = can_set_cur_sel(h, s);
            if (ok)
                ok = set_cur_sel(h, s, static_cast<int>(wparam), 1, reinterpret_cast<HPROPSHEETPAGE>(lparam));
            return sheet_of(h) != nullptr ? answer(ok) : TRUE;
        }
        case PSM_APPLY:
            return answer(apply(h, s, 0));
        case PSM_PRESSBUTTON:
            switch (wparam) {
                case PSBTN_OK:
                    do_command(h, s, IDOK);
                    break;
                case PSBTN_APPLYNOW:
                    do_command(h, s, kApplyButton);
                    break;
                case PSBTN_CANCEL:
                    do_command(h, s, IDCANCEL);
                    break;
                case PSBTN_HELP:
                    do_command(h, s, IDHELP);
                    break;
                default:
                    break;
            }
            return TRUE;
        case PSM_HWNDTOINDEX: {
            for (size_t i = 0; i < s.pages.size(); ++i)
                if (s.pages[i].window == reinterpret_cast<HWND>(wparam))
                    return answer(static_cast<LONG_PTR>(i));
            return answer(-1);
        }
        case PSM_INDEXTOHWND:
            return answer(wparam < s.pages.size() ? reinterpret_cast<LONG_PTR>(s.pages[wparam].window) : 0);
        case PSM_IDTOINDEX: {
            const int i = index_of_template(s, lparam);
            return answer(i < static_cast<int>(s.pages.size()) ? i : -1);
        }
        case PSM_INDEXTOID:
            return answer(
                wparam < s.pages.size() ? reinterpret_cast<LONG_PTR>(s.pages[wparam].psp.pszTemplate) : 0);
        case PSM_SETTITLEA:
            set_title(h, s, static_cast<DWORD>(wparam), reinterpret_cast<LPCSTR>(lparam));
            return TRUE;
        case PSM_CANCELTOCLOSE:
            EnableWindow(GetDlgItem(h, IDCANCEL), FALSE);
            SetWindowTextA(GetDlgItem(h, IDOK), "Close");
            return FALSE;
        case PSM_QUERYSIBLINGS: {
            LRESULT result = 0;
            for (Page& p : s.pages)
                if (p.window != nullptr && (result = send(p.window, PSM_QUERYSIBLINGS, wparam, lparam)) != 0)
                    break;
            return answer(result);
        }
        case PSM_RESTARTWINDOWS:
            if (s.result != ID_PSREBOOTSYSTEM) s.result = ID_PSRESTARTWINDOWS;
            return TRUE;
        case PSM_REBOOTSYSTEM:
            s.result = ID_PSREBOOTSYSTEM;
            return TRUE;
        case PSM_GETTABCONTROL:
            return answer(reinterpret_cast<LONG_PTR>(GetDlgItem(h, kTabControl)));
        case PSM_GETRESULT:
            return answer(s.ended ? s.result : -1);
        default:
            return FALSE;
    }
}

bool sheet_ended(HWND h) {
    Sheet* s = sheet_of(h);
    return s == nullptr || s->ended;
}

void sheet_abandon(HWND h) {
    if (Sheet* s = sheet_of(h)) {
        do_command(h, *s, IDCANCEL);
        if ((s = sheet_of(h)) != nullptr) s->ended = true;
    }
}

void put_words(std::vector<BYTE>& out, std::initializer_list<WORD> words) {
    for (WORD w : words) out.push_back(static_cast<BYTE>(w & 0xFF)), out.push_back(static_cast<BYTE>(w >> 8));
}
void put_dword(std::vector<BYTE>& out, DWORD d) {
    put_words(out, {static_cast<WORD>(d & 0xFFFF), static_cast<WORD>(d >> 16)});
}
void put_face(std::vector<BYTE>& out) {
    for (const char* p = "MS Shell Dlg"; *p != '\0'; ++p) put_words(out, {static_cast<WORD>(*p)});
    put_words(out, {0});
}

// The sheet's own dialog template in memory, as comctl32 hands it to
// PSCB_PRECREATE (a plain DLGTEMPLATE, or DLGTEMPLATEEX when asked for).
std::vector<BYTE> sheet_template(DWORD style, DWORD ex_style, bool extended, size_t* style_at,
                                 size_t* ex_at) {
    std::vector<BYTE> t;
    if (extended) {
        put_words(t, {1, 0xFFFF});
        put_dword(t, 0);
        *ex_at = t.size(), put_dword(t, ex_style);
        *style_at = t.size(), put_dword(t, style);
        put_words(t, {0, 0, 0, 220, 140, 0, 0, 0});
        put_words(t, {8, 400});
        t.push_back(0), t.push_back(1);
    } else {
        *style_at = t.size(), put_dword(t, style);
        *ex_at = t.size(), put_dword(t, ex_style);
        put_words(t, {0, 0, 0, 220, 140, 0, 0, 0, 8});
    }
    put_face(t);
    t.resize(t.size() * 2, 0);
    return t;
}

DWORD read_dword(const std::vector<BYTE>& t, size_t at) {
    DWORD d;
    std::memcpy(&d, &t[at], sizeof d);
    return d;
}

}  // namespace

}  // namespace zr::headless::ui

using namespace zr::headless::ui;

INT_PTR WINAPI PropertySheetA(LPCPROPSHEETHEADERA header) {
    if (header == nullptr || (header->dwFlags & PSH_MODELESS)) return -1;
    auto owned = std::make_unique<Sheet>();
    Sheet& s = *owned;
    std::memcpy(&s.header, header, std::min<size_t>(header->dwSize, sizeof s.header));
    s.has_help = (header->dwFlags & PSH_HASHELP) != 0;
    s.has_apply = !(header->dwFlags & PSH_NOAPPLYNOW);
    const bool use_callback = (header->dwFlags & PSH_USECALLBACK) && header->pfnCallback != nullptr;
    const BYTE* next = reinterpret_cast<const BYTE*>(header->ppsp);
    for (UINT i = 0; i < header->nPages; ++i) {
        const PROPSHEETPAGEA* src = (header->dwFlags & PSH_PROPSHEETPAGE)
                                        ? reinterpret_cast<const PROPSHEETPAGEA*>(next)
                                        : reinterpret_cast<const PROPSHEETPAGEA*>(header->phpage[i]);
        if (src == nullptr) continue;
        if (header->dwFlags & PSH_PROPSHEETPAGE) next += src->dwSize;
        if (src->dwSize < offsetof(PROPSHEETPAGEA, pszHeaderTitle)) continue;  // below the first version
        Page page;
        std::memcpy(&page.psp, src, std::min<size_t>(src->dwSize, sizeof page.psp));
        if (!(page.psp.dwFlags & PSP_DLGINDIRECT))
            page.tmpl = find_template(page.psp.hInstance, page.psp.pszTemplate);
        if (page.tmpl == nullptr) continue;  // a page without its template is dropped
        if (page.psp.dwFlags & PSP_HASHELP) s.has_help = true;
        s.pages.push_back(page);
    }
    if (s.pages.empty()) return -1;
    s.active = (header->dwFlags & PSH_USEPSTARTPAGE) ? 0 : static_cast<int>(header->nStartPage);
    if (s.active < 0 || s.active >= static_cast<int>(s.pages.size())) s.active = 0;

    DWORD style = DS_3DLOOK | DS_CONTEXTHELP | DS_MODALFRAME | DS_SETFONT | WS_POPUP | WS_CAPTION |
                  WS_SYSMENU | WS_VISIBLE;
    if (header->dwFlags & PSH_NOCONTEXTHELP) style &= ~DS_CONTEXTHELP;
    DWORD ex_style = WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT;
    size_t style_at = 0, ex_at = 0;
    std::vector<BYTE> tmpl = sheet_template(style, ex_style, sheet_template_extended(), &style_at, &ex_at);
    if (use_callback) header->pfnCallback(nullptr, PSCB_PRECREATE, reinterpret_cast<LPARAM>(tmpl.data()));
    style = read_dword(tmpl, style_at), ex_style = read_dword(tmpl, ex_at);
    if (style & DS_CONTEXTHELP) ex_style |= WS_EX_CONTEXTHELP;  // the caption's question mark

    const HWND parent = header->hwndParent;
    const bool disable = parent != nullptr && IsWindowEnabled(parent);
    if (disable) EnableWindow(parent, FALSE);
    int width = 0, height = 0;
    for (const Page& p : s.pages) width = std::max(width, p.tmpl->cx), height = std::max(height, p.tmpl->cy);
    const HWND h = create_window(ex_style, "#32770", "", style & ~WS_VISIBLE, 0, 0, dialog_units_x(width + 8),
                                 dialog_units_y(height + 32), parent, 0, header->hInstance, nullptr);
    if (h == nullptr) {
        if (disable) EnableWindow(parent, TRUE);
        return -1;
    }
    find(h)->dlgproc = sheet_proc;
    g_sheets[h] = std::move(owned);
    const int button_y = dialog_units_y(height + 12);
    create_window(0, "SysTabControl32", "", WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_GROUP, 4, 4,
                  dialog_units_x(width), dialog_units_y(height), h, kTabControl, nullptr, nullptr);
    struct Button {
        int id;
        const char* text;
        DWORD style;
    };
    const Button buttons[] = {{IDOK, "OK", BS_DEFPUSHBUTTON | WS_GROUP | WS_TABSTOP},
                              {IDCANCEL, "Cancel", BS_PUSHBUTTON | WS_TABSTOP},
                              {kApplyButton, "&Apply", BS_PUSHBUTTON | WS_TABSTOP | WS_DISABLED},
                              {IDHELP, "Help", BS_PUSHBUTTON | WS_TABSTOP}};
    int x = 4;
    for (const Button& b : buttons) {
        DWORD visible = WS_VISIBLE;
        if ((b.id == kApplyButton && !s.has_apply) || (b.id == IDHELP && !s.has_help)) visible = 0;
        create_window(0, "Button", b.text, WS_CHILD | visible | b.style, x, button_y, 75, 23, h, b.id,
                      nullptr, nullptr);
        x += 80;
    }
    send(h, WM_INITDIALOG, reinterpret_cast<WPARAM>(GetDlgItem(h, IDOK)), reinterpret_cast<LPARAM>(&s));
    if (find(h) != nullptr && (style & WS_VISIBLE) && !s.ended) ShowWindow(h, SW_SHOWNORMAL);

    ModalRun run;
    run.window = h;
    run.depth = api_depth();
    run.disabled_owner = disable ? parent : nullptr;
    run.ended = sheet_ended;
    run.abandon = sheet_abandon;
    run_modal(run);
    const INT_PTR result = s.result;
    for (Page& p : s.pages)
        if ((p.psp.dwFlags & PSP_USECALLBACK) && p.psp.pfnCallback != nullptr)
            p.psp.pfnCallback(nullptr, PSPCB_RELEASE, &p.psp);
    g_sheets.erase(h);
    return result;
}
