// The main settings sheet: the exported entry points, the page table and the
// sheet callback.
#include <cstddef>
#include <cstring>

#include "platform/zrutil.h"
#include "settings/collaborators.h"
#include "settings/context.h"
#include "settings/pages.h"
#include "settings/record.h"
#include "settings/sheet_internal.h"
#include "settings/store.h"

namespace {

// Sizes of the page and header descriptions that carry the header-title and
// watermark fields (48 and 52 bytes on the 32-bit build).
constexpr UINT kPageDescriptionSize = offsetof(PROPSHEETPAGEA, pszHeaderSubTitle) + sizeof(LPCSTR);
constexpr UINT kHeaderDescriptionSize = offsetof(PROPSHEETHEADERA, hbmHeader) + sizeof(HBITMAP);
static_assert(sizeof(void*) != 4 || (kPageDescriptionSize == 48 && kHeaderDescriptionSize == 52));
static_assert(sizeof(PageDescription) == kPageDescriptionSize);

struct PageRow {
    int template_id;
    int title_id;
    DLGPROC procedure;
};

// Cache, connection and site elimination pages on every system; the TCP/IP
// page only on the Windows 9x family.
constexpr PageRow kPageRows[] = {
    {2000, 6000, cache_page_proc},
    {2002, 6002, connection_page_proc},
    {2005, 6022, elimination_page_proc},
    {2004, 6021, tcp_page_proc},
};

PageDescription g_pages[4];
char g_page_titles[4][1024];
char g_caption[1024];

}  // namespace

int build_page_table(PageDescription* pages) {
    const int count = is_this_winnt() ? 3 : 4;
    for (int i = 0; i < count; ++i) {
        load_res_string(g_settings.resource_module, kPageRows[i].title_id, g_page_titles[i],
                        sizeof g_page_titles[i]);
        PageDescription& page = pages[i];
        std::memset(&page, 0, sizeof page);
        page.dwSize = kPageDescriptionSize;
        page.dwFlags = PSP_USETITLE | PSP_HASHELP;
        page.hInstance = g_settings.resource_module;
        page.pszTemplate = MAKEINTRESOURCEA(kPageRows[i].template_id);
        page.pszTitle = g_page_titles[i];
        page.pfnDlgProc = kPageRows[i].procedure;
        page.lParam = 0;
    }
    return count;
}

void clear_context_help(void* dialog_template) {
    unsigned char* bytes = static_cast<unsigned char*>(dialog_template);
    WORD second_word;
    std::memcpy(&second_word, bytes + 2, sizeof second_word);
    unsigned char* style_at = second_word == 0xFFFF ? bytes + 12 : bytes;
    DWORD style;
    std::memcpy(&style, style_at, sizeof style);
    style &= ~static_cast<DWORD>(DS_CONTEXTHELP);
    std::memcpy(style_at, &style, sizeof style);
}

int CALLBACK sheet_callback(HWND window, UINT message, LPARAM parameter) {
    if (message == PSCB_INITIALIZED) {
        g_settings.sheet_window = window;
        bring_to_front(window);
    } else if (message == PSCB_PRECREATE && parameter != 0) {
        clear_context_help(reinterpret_cast<void*>(parameter));
    }
    return 0;
}

extern "C" {

int ZR_CALL create_settings_window(HWND parent, HINSTANCE instance, settings_struct* settings) {
    if (IsWindow(g_settings.sheet_window)) {
        bring_to_front(g_settings.sheet_window);
        return TRUE;
    }
    reset_module_state();
    g_settings.host_record = settings;
    g_settings.host_instance = instance;

    g_settings.resource_module = LoadLibraryA("zrres.dll");
    if (g_settings.resource_module == nullptr) {
        MessageBoxA(nullptr, "Failed to load resource .dll", nullptr, MB_TOPMOST);
        return FALSE;
    }

    reload_user_site_list();
    copy_in(g_settings.host_record);
    const int page_count = build_page_table(g_pages);

    // A one-shot request for the page to open on.
    const DWORD start_page = read_dword(kSettingsKey, "prefetch_settings", 0);
    if (start_page != 0) write_dword(kSettingsKey, "prefetch_settings", 0);

    load_res_string(g_settings.resource_module, 6058, g_caption, sizeof g_caption);
    PROPSHEETHEADERA header;
    std::memset(&header, 0, sizeof header);
    header.dwSize = kHeaderDescriptionSize;
    header.dwFlags = PSH_PROPSHEETPAGE | PSH_USECALLBACK | PSH_HASHELP;
    header.hwndParent = parent;
    header.hInstance = g_settings.host_instance;
    header.pszCaption = g_caption;
    header.nPages = static_cast<UINT>(page_count);
    header.nStartPage = start_page;
    header.ppsp = reinterpret_cast<LPCPROPSHEETPAGEA>(g_pages);
    header.pfnCallback = sheet_callback;
    PropertySheetA(&header);
    return TRUE;
}

void ZR_CALL settings_apply(settings_struct* settings) {
    if (g_settings.changed == 0) return;
    if (!is_this_winnt()) tcp_commit(g_settings.tcp_changed);
    g_settings.tcp_changed = 0;
    copy_out(settings);
    write_elimination_files();
    reload_user_site_list();
    settings->apply_marker = 2;
    g_settings.changed = 0;
}

void ZR_CALL settings_cancel(settings_struct* settings) {
    reload_user_site_list();
    copy_in(settings);
}

void ZR_CALL state_show_settings_window(int show) {
    if (!IsWindow(g_settings.sheet_window)) return;
    const int command = show == 1 ? SW_SHOWNORMAL : SW_HIDE;
    ShowWindow(g_settings.sheet_window, command);
    ShowWindow(g_settings.prefetch_sheet_window, command);
}

}  // extern "C"
