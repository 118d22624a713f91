// Headless message boxes, the open-file dialog, the resource module (its
// dialogs, strings, icons and bitmaps from the generated tables), library
// loading, OLE and the small string helpers of kernel32.
#include <algorithm>
#include <cstring>

#include "platform/headless/skins.h"
#include "platform/headless/ui_internal.h"

namespace zr::headless::ui {

namespace {

// The resource module's handle: fixed, outside the window handle range.
const uintptr_t kResourceModule = 0x52000000;
int g_module_refs = 0;
int g_ole_inits = 0;
int g_unanswered = 0;
std::vector<BoxRecord> g_boxes;

bool is_resource_module_name(const char* name) {
    if (name == nullptr || std::strpbrk(name, "\\/:") != nullptr) return false;  // bare names only
    return compare_nocase(name, "zrres.dll") == 0 || compare_nocase(name, "zrres") == 0;
}

bool is_loaded_resource_module(HMODULE module) {
    return reinterpret_cast<uintptr_t>(module) == kResourceModule && g_module_refs > 0;
}

int resource_number(LPCSTR name) {
    return IS_INTRESOURCE(name) ? static_cast<int>(reinterpret_cast<uintptr_t>(name)) : -1;
}

bool has_icon(int id) {
    return id >= 0 && std::find(zr::res::kIcons, zr::res::kIcons + zr::res::kIconCount, id) !=
                          zr::res::kIcons + zr::res::kIconCount;
}

bool has_bitmap(int id) {
    return id >= 0 && std::find(zr::res::kBitmaps, zr::res::kBitmaps + zr::res::kBitmapCount, id) !=
                          zr::res::kBitmaps + zr::res::kBitmapCount;
}

// The answer of an unanswered box: Cancel when offered, else No, else the
// first button.
int default_answer(UINT style) {
    switch (style & MB_TYPEMASK) {
        case MB_OK:
            return IDOK;
        case MB_YESNO:
            return IDNO;
        case MB_ABORTRETRYIGNORE:
            return IDABORT;
        default:
            return IDCANCEL;
    }
}

struct BoxButtons {
    int ids[3];
    const char* texts[3];
};

BoxButtons buttons_of(UINT style) {
    switch (style & MB_TYPEMASK) {
        case MB_OKCANCEL:
            return {{IDOK, IDCANCEL, 0}, {"OK", "Cancel", nullptr}};
        case MB_ABORTRETRYIGNORE:
            return {{IDABORT, IDRETRY, IDIGNORE}, {"&Abort", "&Retry", "&Ignore"}};
        case MB_YESNOCANCEL:
            return {{IDYES, IDNO, IDCANCEL}, {"&Yes", "&No", "Cancel"}};
        case MB_YESNO:
            return {{IDYES, IDNO, 0}, {"&Yes", "&No", nullptr}};
        case MB_RETRYCANCEL:
            return {{IDRETRY, IDCANCEL, 0}, {"&Retry", "Cancel", nullptr}};
        case MB_CANCELTRYCONTINUE:
            return {{IDCANCEL, IDTRYAGAIN, IDCONTINUE}, {"Cancel", "&Try Again", "&Continue"}};
        default:
            return {{IDOK, 0, 0}, {"OK", nullptr, nullptr}};
    }
}

}  // namespace

HMODULE resource_module_handle() { return reinterpret_cast<HMODULE>(kResourceModule); }

bool resource_module_loaded() { return g_module_refs > 0; }

const std::vector<BoxRecord>& message_box_log() { return g_boxes; }

void reset_modules() {
    g_module_refs = 0;
    g_ole_inits = 0;
    g_unanswered = 0;
    g_boxes.clear();
}

}  // namespace zr::headless::ui

using namespace zr::headless::ui;

int zr::headless::unanswered_message_boxes() { return g_unanswered; }

int WINAPI MessageBoxA(HWND owner, LPCSTR text, LPCSTR caption, UINT style) {
    const std::string shown_text = text != nullptr ? text : "";
    const std::string shown_caption = caption != nullptr ? caption : "Error";
    // The box is a top-level dialog window titled with its caption for as
    // long as it is up; its owner is disabled meanwhile.
    const HWND top_owner = top_level_of(owner);
    const bool disable = top_owner != nullptr && IsWindowEnabled(top_owner);
    if (disable) EnableWindow(top_owner, FALSE);
    const DWORD ex_style = WS_EX_DLGMODALFRAME | ((style & MB_TOPMOST) ? WS_EX_TOPMOST : 0);
    const HWND box = create_window(ex_style, "#32770", shown_caption.c_str(),
                                   WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_VISIBLE | DS_MODALFRAME, 312, 334,
                                   400, 100, top_owner, 0, nullptr, nullptr);
    if (box != nullptr) {
        create_window(0, "Static", shown_text.c_str(), WS_CHILD | WS_VISIBLE | SS_NOPREFIX, 10, 10, 380, 40,
                      box, 0xFFFF, nullptr, nullptr);
        const BoxButtons b = buttons_of(style);
        for (int i = 0; i < 3 && b.ids[i] != 0; ++i)
            create_window(0, "Button", b.texts[i], WS_CHILD | WS_VISIBLE | WS_TABSTOP, 10 + 90 * i, 60, 80,
                          23, box, b.ids[i], nullptr, nullptr);
    }
    bool answered = false;
    int answer = ask_message_box(owner, text != nullptr ? text : "", shown_caption.c_str(), style, &answered);
    if (!answered) {
        answer = default_answer(style);
        if ((style & MB_TYPEMASK) != MB_OK) ++g_unanswered;
    }
    g_boxes.push_back(BoxRecord{owner, shown_text, shown_caption, style, answer, box});
    if (find(box) != nullptr) DestroyWindow(box);
    if (disable) EnableWindow(top_owner, TRUE);
    return answer;
}

BOOL WINAPI GetOpenFileNameA(LPOPENFILENAMEA ofn) {
    if (ofn == nullptr) return FALSE;
    // The old 32-bit form (76 bytes), the 32-bit full form and this build's;
    // also this build's old form (OPENFILENAME_SIZE_VERSION_400A: 136 bytes
    // on 64-bit), which the real dialog accepts too.
    constexpr DWORD kOldFormOfThisBuild = offsetof(OPENFILENAMEA, lpTemplateName) + sizeof(LPCSTR);
    if (ofn->lStructSize != 76 && ofn->lStructSize != 88 && ofn->lStructSize != sizeof(OPENFILENAMEA) &&
        ofn->lStructSize != kOldFormOfThisBuild)
        return FALSE;
    return ask_open_file(ofn) ? TRUE : FALSE;
}

VOID WINAPI InitCommonControls(void) {}

BOOL WINAPI InitCommonControlsEx(const INITCOMMONCONTROLSEX* init) {
    return init != nullptr && init->dwSize == sizeof(INITCOMMONCONTROLSEX);
}

HMODULE WINAPI LoadLibraryA(LPCSTR name) {
    if (is_resource_module_name(name) && !resource_module_missing()) {
        ++g_module_refs;
        return resource_module_handle();
    }
    // Any other module is a skin file or missing (a later piece adds the
    // remote access service).
    if (name != nullptr && !is_resource_module_name(name))
        if (HMODULE skin = zr::headless::load_skin_module(name)) return skin;
    SetLastError(ERROR_MOD_NOT_FOUND);
    return nullptr;
}

BOOL WINAPI FreeLibrary(HMODULE module) {
    if (zr::headless::is_skin_module(module)) return zr::headless::free_skin_module(module);
    if (!is_loaded_resource_module(module)) return FALSE;
    --g_module_refs;
    return TRUE;
}

FARPROC WINAPI GetProcAddress(HMODULE module, LPCSTR name) {
    if (zr::headless::is_skin_module(module) && name != nullptr && !IS_INTRESOURCE(name))
        if (FARPROC address = zr::headless::skin_export(module, name)) return address;
    SetLastError(ERROR_PROC_NOT_FOUND);  // the resource module exports nothing
    return nullptr;
}

int WINAPI LoadStringA(HINSTANCE module, UINT id, LPSTR buffer, int capacity) {
    if (buffer == nullptr) return 0;
    const char* text =
        is_loaded_resource_module(module) ? zr::res::find_string(static_cast<int>(id)) : nullptr;
    if (capacity == 0) {  // a read-only pointer to the resource itself
        if (text == nullptr) return 0;
        *reinterpret_cast<const char**>(buffer) = text;
        return static_cast<int>(std::strlen(text));
    }
    if (capacity < 0) return 0;
    if (text == nullptr) {
        buffer[0] = '\0';
        SetLastError(ERROR_RESOURCE_NAME_NOT_FOUND);
        return 0;
    }
    return copy_text(text, buffer, static_cast<size_t>(capacity));
}

HRSRC WINAPI FindResourceA(HMODULE module, LPCSTR name, LPCSTR type) {
    const int id = resource_number(name);
    bool found = false;
    if (zr::headless::is_skin_module(module) && id >= 0) {
        if (type == RT_ICON || type == RT_GROUP_ICON)
            found = zr::headless::skin_has_icon(module, id);
        else if (type == RT_BITMAP)
            found = zr::headless::skin_has_bitmap(module, id);
    } else if (is_loaded_resource_module(module) && id >= 0) {
        if (type == RT_ICON || type == RT_GROUP_ICON)
            found = has_icon(id);
        else if (type == RT_BITMAP)
            found = has_bitmap(id);
        else if (type == RT_DIALOG)
            found = find_template(module, name) != nullptr;
        else if (type == RT_STRING)
            for (int s = (id - 1) * 16; s < id * 16 && !found; ++s)
                found = zr::res::find_string(s) != nullptr;
    }
    if (!found) {
        SetLastError(ERROR_RESOURCE_NAME_NOT_FOUND);
        return nullptr;
    }
    return reinterpret_cast<HRSRC>(static_cast<uintptr_t>(0x40000 + id));
}

HICON WINAPI LoadIconA(HINSTANCE module, LPCSTR name) {
    const int id = resource_number(name);
    if (module == nullptr && id >= 32512 && id <= 32518)  // the system's icons
        return reinterpret_cast<HICON>(static_cast<uintptr_t>(0x60000 + id));
    if (zr::headless::is_skin_module(module))
        return zr::headless::skin_has_icon(module, id)
                   ? reinterpret_cast<HICON>(static_cast<uintptr_t>(0x64000 + id))
                   : nullptr;
    if (!is_loaded_resource_module(module) || !has_icon(id)) return nullptr;
    return reinterpret_cast<HICON>(static_cast<uintptr_t>(0x60000 + id));
}

HBITMAP WINAPI LoadBitmapA(HINSTANCE module, LPCSTR name) {
    const int id = resource_number(name);
    if (zr::headless::is_skin_module(module))
        return zr::headless::skin_has_bitmap(module, id)
                   ? reinterpret_cast<HBITMAP>(static_cast<uintptr_t>(0x6C000 + id))
                   : nullptr;
    if (!is_loaded_resource_module(module) || !has_bitmap(id)) return nullptr;
    return reinterpret_cast<HBITMAP>(static_cast<uintptr_t>(0x68000 + id));
}

HANDLE WINAPI LoadImageA(HINSTANCE module, LPCSTR name, UINT type, int, int, UINT flags) {
    if (flags & LR_LOADFROMFILE) return nullptr;
    if (type == IMAGE_ICON) return LoadIconA(module, name);
    if (type == IMAGE_BITMAP) return LoadBitmapA(module, name);
    return nullptr;
}

BOOL WINAPI DestroyIcon(HICON icon) { return icon != nullptr; }
BOOL WINAPI DeleteObject(HGDIOBJ object) { return object != nullptr; }

HRESULT WINAPI OleInitialize(LPVOID) { return g_ole_inits++ == 0 ? S_OK : S_FALSE; }
void WINAPI OleUninitialize(void) {
    if (g_ole_inits > 0) --g_ole_inits;
}

int WINAPI lstrcmpA(LPCSTR a, LPCSTR b) {
    const int c = std::strcmp(a != nullptr ? a : "", b != nullptr ? b : "");
    return c < 0 ? -1 : (c > 0 ? 1 : 0);
}

int WINAPI lstrcmpiA(LPCSTR a, LPCSTR b) {
    return compare_nocase(a != nullptr ? a : "", b != nullptr ? b : "");
}

int WINAPI lstrlenA(LPCSTR s) { return s != nullptr ? static_cast<int>(std::strlen(s)) : 0; }

LPSTR WINAPI lstrcpynA(LPSTR dst, LPCSTR src, int capacity) {
    if (dst == nullptr || capacity <= 0) return dst;
    copy_text(src != nullptr ? src : "", dst, static_cast<size_t>(capacity));
    return dst;
}
