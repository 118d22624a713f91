// zrhost.exe: a small demo host for the settings module.  Its main window
// has the class "Zephyrion", so the requests the pages post to the running
// application arrive here and are shown.  On first run it seeds a demo
// installation (registry keys, data directory, cache directory); its menu
// opens the settings sheet and the prefetch sheet with its own record and
// shows the record after they close.
//
// Usage: zrhost.exe [--root DIR] [--screenshot-mode DIR]
//   --root DIR             where the demo installation lives (C:\Zephyrion)
//   --screenshot-mode DIR  opens every page of both sheets in turn (the
//                          settings sheet on the Windows 9x path, so that the
//                          TCP/IP page is there too), saves each as a BMP file
//                          in DIR, then the main window, and exits.
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <string>

#include "host/capture.h"
#include "platform/win.h"
#include "zrsettings.h"

namespace {

constexpr UINT kEmptyCache = WM_USER + 4;   // 1028
constexpr UINT kTcpRequest = WM_USER + 31;  // 0x041F
constexpr UINT kStartShots = WM_APP + 1;
constexpr UINT_PTR kShotTimer = 7;
constexpr UINT kShotIntervalMs = 400;

enum MenuId { kMenuSettings = 101, kMenuPrefetch, kMenuHide, kMenuShow, kMenuRecord, kMenuExit };

const char* const kSettingsKey = "SOFTWARE\\Quillmark\\Zephyrion\\Settings";
const char* const kProductKey = "SOFTWARE\\Quillmark\\Zephyrion";

using CreateSheetFn = int(ZR_CALL*)(HWND, HINSTANCE, settings_struct*);
using ShowSheetFn = void(ZR_CALL*)(int);

struct Module {
    HMODULE library = nullptr;
    CreateSheetFn create_settings = nullptr;
    CreateSheetFn create_prefetch = nullptr;
    ShowSheetFn show_sheets = nullptr;
};

// Screenshot mode: which sheet, which page, what the next timer tick does.
struct Shots {
    std::string dir;
    int sheet = 0;  // 0 settings, 1 prefetch
    int page = 0;
    bool shown = false;  // the page has been selected; the next tick saves it
    int saved = 0;
};

struct Host {
    HINSTANCE instance = nullptr;
    HWND main = nullptr;
    HWND log = nullptr;
    Module module;
    settings_struct record{};
    std::string root = "C:\\Zephyrion";
    Shots shots;
    bool screenshot_mode = false;
};

Host g_host;

void log_line(const char* format, ...) __attribute__((format(printf, 1, 2)));
void log_line(const char* format, ...) {
    char line[512];
    va_list args;
    va_start(args, format);
    std::vsnprintf(line, sizeof line, format, args);
    va_end(args);
    if (g_host.log == nullptr) return;
    const LRESULT index = SendMessageA(g_host.log, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(line));
    SendMessageA(g_host.log, LB_SETTOPINDEX, static_cast<WPARAM>(index), 0);
}

// --- the demo installation -------------------------------------------------

bool write_bytes(const std::string& path, const void* data, size_t size) {
    FILE* out = std::fopen(path.c_str(), "wb");
    if (out == nullptr) return false;
    const bool written = std::fwrite(data, 1, size, out) == size;
    return std::fclose(out) == 0 && written;
}

bool write_text(const std::string& path, const char* text) {
    return write_bytes(path, text, std::strlen(text));
}

void set_string(const char* key, const char* name, const std::string& value) {
    HKEY handle;
    if (RegCreateKeyExA(HKEY_LOCAL_MACHINE, key, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &handle, nullptr) !=
        ERROR_SUCCESS)
        return;
    RegSetValueExA(handle, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                   static_cast<DWORD>(value.size() + 1));
    RegCloseKey(handle);
}

void set_dword(const char* key, const char* name, DWORD value) {
    HKEY handle;
    if (RegCreateKeyExA(HKEY_LOCAL_MACHINE, key, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &handle, nullptr) !=
        ERROR_SUCCESS)
        return;
    RegSetValueExA(handle, name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&value), sizeof value);
    RegCloseKey(handle);
}

bool installation_exists() {
    HKEY handle;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, kSettingsKey, 0, KEY_READ, &handle) != ERROR_SUCCESS) return false;
    char path[MAX_PATH] = {};
    DWORD size = sizeof path - 1;
    DWORD type = 0;
    const bool found = RegQueryValueExA(handle, "proxy_path", nullptr, &type, reinterpret_cast<BYTE*>(path),
                                        &size) == ERROR_SUCCESS &&
                       type == REG_SZ;
    RegCloseKey(handle);
    return found && GetFileAttributesA(path) != INVALID_FILE_ATTRIBUTES;
}

// The data directory with the user's and the maker's site lists, the cache
// directory with its index and one data file, and the keys naming them.
void seed_installation(const std::string& root) {
    const std::string cache = root + "\\Cache";
    CreateDirectoryA(root.c_str(), nullptr);
    CreateDirectoryA(cache.c_str(), nullptr);

    write_text(root + "\\userex.gui",
               "# Zephyrion: your own site elimination list\r\n"
               "ads.example.com pa\r\n"
               "banners.example.net b\r\n"
               "tracker.example.org d\r\n"
               "my%20intranet.local \r\n");
    write_text(root + "\\excad.dat",
               "# Zephyrion advertising list\r\n"
               "doubleads.example.com a\r\n"
               "popups.example.net p\r\n");
    write_text(root + "\\aggressive.dat",
               "# Zephyrion further list\r\n"
               "counter.example.com a\r\n"
               "widgets.example.org b\r\n");

    // cache_data: the proxy's 12-byte header, then the data file's name in a
    // 36-byte field.
    unsigned char index[48] = {'Z', 'R', 'C', 'I', 1, 0, 0, 0, 0, 0, 0, 0};
    std::memcpy(index + 12, "cache0001.dat", std::strlen("cache0001.dat"));
    write_bytes(cache + "\\cache_data", index, sizeof index);
    static unsigned char block[64 * 1024];
    for (size_t i = 0; i < sizeof block; ++i) block[i] = static_cast<unsigned char>(i * 31u);
    FILE* data = std::fopen((cache + "\\cache0001.dat").c_str(), "wb");
    if (data != nullptr) {
        for (int i = 0; i < 48; ++i)  // 3 MB of cached pages
            std::fwrite(block, 1, sizeof block, data);
        std::fclose(data);
    }

    set_string(kSettingsKey, "proxy_path", root);
    set_dword(kSettingsKey, "site_elimination", 1);
    set_string(kProductKey, "cacheDir", cache);
}

void init_record(settings_struct* record) {
    std::memset(record, 0, sizeof *record);
    record->cache_size_mb = 100;
    record->connection_type = 1;
    record->dial_option = 0;
    record->ad_list_on = 1;
    record->cache_option_300 = 1;
    std::strcpy(record->dialup_entry, "My ISP");
    std::strcpy(record->conn_text_317, "proxy.example.net");
    record->conn_number_318 = 8080;
}

void log_record(const char* what, int result) {
    const settings_struct& r = g_host.record;
    log_line("%s returned %d; apply_marker = %u", what, result, r.apply_marker);
    log_line("  cache_size_mb %u, connection_type %u, dial_option %u, dialup_entry \"%s\"", r.cache_size_mb,
             r.connection_type, r.dial_option, r.dialup_entry);
    log_line("  ad_list_on %u, aggressive_elimination %u, site_list_changed %u, skin \"%s\"", r.ad_list_on,
             r.aggressive_elimination, r.site_list_changed, r.skin_path);
    log_line("  options 300:%u 303:%u 308:%u 309:%u 310:%u 312:%u 313:%u 316:%u, text \"%s\", number %u",
             r.cache_option_300, r.tcp_option_303, r.conn_option_308, r.conn_option_309, r.conn_option_310,
             r.conn_option_312, r.conn_option_313, r.conn_option_316, r.conn_text_317, r.conn_number_318);
}

// --- the module --------------------------------------------------------------

// An exported function by name, as the pointer type it is called through.
template <class Function>
Function export_of(HMODULE library, const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

bool load_module(Module* module) {
    module->library = LoadLibraryA("zrsettings.dll");
    if (module->library == nullptr) return false;
    module->create_settings = export_of<CreateSheetFn>(module->library, "create_settings_window");
    module->create_prefetch = export_of<CreateSheetFn>(module->library, "create_prefetch_window");
    module->show_sheets = export_of<ShowSheetFn>(module->library, "state_show_settings_window");
    return module->create_settings != nullptr && module->create_prefetch != nullptr &&
           module->show_sheets != nullptr;
}

void open_settings() {
    log_line("Opening the settings sheet...");
    const int result = g_host.module.create_settings(g_host.main, g_host.instance, &g_host.record);
    log_record("create_settings_window", result);
}

void open_prefetch() {
    log_line("Opening the prefetch sheet...");
    const int result = g_host.module.create_prefetch(g_host.main, g_host.instance, &g_host.record);
    static const char* const kLevels[] = {"no page applied", "depth and extensions", "schedule",
                                          "prefetch sites"};
    log_line("create_prefetch_window returned %d (%s)", result,
             result >= 0 && result <= 3 ? kLevels[result] : "unexpected");
}

// --- screenshot mode ---------------------------------------------------------

// The open sheet: the last popup the main window owns, when it has tabs.
HWND open_sheet() {
    HWND popup = GetLastActivePopup(g_host.main);
    if (popup == nullptr || popup == g_host.main ||
        FindWindowExA(popup, nullptr, "SysTabControl32", nullptr) == nullptr)
        return nullptr;
    return popup;
}

void shot_tick() {
    Shots& s = g_host.shots;
    HWND sheet = open_sheet();
    if (sheet == nullptr) return;  // not up yet
    HWND tabs = FindWindowExA(sheet, nullptr, "SysTabControl32", nullptr);
    const int pages = static_cast<int>(SendMessageA(tabs, TCM_GETITEMCOUNT, 0, 0));
    if (s.page >= pages) {
        SendMessageA(sheet, PSM_PRESSBUTTON, PSBTN_CANCEL, 0);
        return;
    }
    if (!s.shown) {
        SendMessageA(sheet, PSM_SETCURSEL, s.page, 0);
        RedrawWindow(sheet, nullptr, nullptr,
                     RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
        s.shown = true;
        return;
    }
    char title[128] = {};
    TCITEMA item{};
    item.mask = TCIF_TEXT;
    item.pszText = title;
    item.cchTextMax = sizeof title;
    SendMessageA(tabs, TCM_GETITEMA, s.page, reinterpret_cast<LPARAM>(&item));
    const std::string name = shot_name(s.sheet == 0 ? "settings" : "prefetch", s.page + 1, title);
    if (save_window_bitmap(sheet, s.dir + "\\" + name)) ++s.saved;
    log_line("Saved %s", name.c_str());
    ++s.page;
    s.shown = false;
}

void run_screenshots() {
    Shots& s = g_host.shots;
    CreateDirectoryA(s.dir.c_str(), nullptr);
    SetTimer(g_host.main, kShotTimer, kShotIntervalMs, nullptr);
    SetEnvironmentVariableA("ZR_WINDOWS_FAMILY", "9x");  // all four pages of the settings sheet
    s.sheet = 0;
    s.page = 0;
    s.shown = false;
    open_settings();
    SetEnvironmentVariableA("ZR_WINDOWS_FAMILY", nullptr);
    s.sheet = 1;
    s.page = 0;
    s.shown = false;
    open_prefetch();
    KillTimer(g_host.main, kShotTimer);
    UpdateWindow(g_host.main);
    save_window_bitmap(g_host.main, s.dir + "\\" + shot_name("host", 1, "main window"));
    log_line("%d pages saved", s.saved);
    PostQuitMessage(s.saved > 0 ? 0 : 1);
}

// --- the main window -----------------------------------------------------------

LRESULT CALLBACK main_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
        case WM_CREATE:
            g_host.log =
                CreateWindowExA(WS_EX_CLIENTEDGE, "LISTBOX", "",
                                WS_CHILD | WS_VISIBLE | WS_VSCROLL | LBS_NOINTEGRALHEIGHT | LBS_NOSEL, 0, 0,
                                0, 0, window, nullptr, g_host.instance, nullptr);
            SendMessageA(g_host.log, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)),
                         0);
            return 0;
        case WM_SIZE:
            MoveWindow(g_host.log, 0, 0, LOWORD(lparam), HIWORD(lparam), TRUE);
            return 0;
        case kEmptyCache:
            log_line("Message 1028 (WM_USER+4, empty the cache) arrived: wParam %llu, lParam %lld",
                     static_cast<unsigned long long>(wparam), static_cast<long long>(lparam));
            return 0;
        case kTcpRequest:
            log_line("Message 0x041F (WM_USER+31, TCP/IP request) arrived: wParam %llu, lParam %lld",
                     static_cast<unsigned long long>(wparam), static_cast<long long>(lparam));
            return 0;
        case kStartShots:
            run_screenshots();
            return 0;
        case WM_TIMER:
            if (wparam == kShotTimer) shot_tick();
            return 0;
        case WM_COMMAND:
            switch (LOWORD(wparam)) {
                case kMenuSettings:
                    open_settings();
                    return 0;
                case kMenuPrefetch:
                    open_prefetch();
                    return 0;
                case kMenuHide:
                    g_host.module.show_sheets(0);
                    return 0;
                case kMenuShow:
                    g_host.module.show_sheets(1);
                    return 0;
                case kMenuRecord:
                    log_record("(current record)", 0);
                    return 0;
                case kMenuExit:
                    DestroyWindow(window);
                    return 0;
            }
            break;
        case WM_DESTROY:
            PostQuitMessage(0);
            return 0;
    }
    return DefWindowProcA(window, message, wparam, lparam);
}

HMENU build_menu() {
    HMENU sheets = CreatePopupMenu();
    AppendMenuA(sheets, MF_STRING, kMenuSettings, "&Settings...");
    AppendMenuA(sheets, MF_STRING, kMenuPrefetch, "&Prefetch...");
    AppendMenuA(sheets, MF_SEPARATOR, 0, nullptr);
    AppendMenuA(sheets, MF_STRING, kMenuRecord, "Show the &record");
    AppendMenuA(sheets, MF_SEPARATOR, 0, nullptr);
    AppendMenuA(sheets, MF_STRING, kMenuExit, "E&xit");
    HMENU bar = CreateMenu();
    AppendMenuA(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(sheets), "&Zephyrion");
    return bar;
}

}  // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int show) {
    g_host.instance = instance;
    for (int i = 1; i < __argc; ++i) {
        if (std::strcmp(__argv[i], "--root") == 0 && i + 1 < __argc) {
            g_host.root = __argv[++i];
        } else if (std::strcmp(__argv[i], "--screenshot-mode") == 0 && i + 1 < __argc) {
            g_host.screenshot_mode = true;
            g_host.shots.dir = __argv[++i];
        } else {
            MessageBoxA(nullptr, "Usage: zrhost.exe [--root DIR] [--screenshot-mode DIR]",
                        "Zephyrion demo host", MB_OK | MB_ICONINFORMATION);
            return 2;
        }
    }

    INITCOMMONCONTROLSEX controls{sizeof controls, ICC_WIN95_CLASSES};
    InitCommonControlsEx(&controls);
    if (!load_module(&g_host.module)) {
        MessageBoxA(nullptr, "zrsettings.dll could not be loaded.", "Zephyrion demo host",
                    MB_OK | MB_ICONSTOP);
        return 1;
    }

    WNDCLASSA window_class{};
    window_class.lpfnWndProc = main_proc;
    window_class.hInstance = instance;
    window_class.hCursor = LoadCursor(nullptr, IDC_ARROW);
    window_class.hIcon = LoadIcon(nullptr, IDI_APPLICATION);
    window_class.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_WINDOW + 1);
    window_class.lpszClassName = "Zephyrion";
    RegisterClassA(&window_class);
    g_host.main = CreateWindowExA(0, "Zephyrion", "Zephyrion demo host", WS_OVERLAPPEDWINDOW, 40, 40, 640,
                                  360, nullptr, build_menu(), instance, nullptr);
    ShowWindow(g_host.main, g_host.screenshot_mode ? SW_SHOWNORMAL : show);
    UpdateWindow(g_host.main);

    if (!installation_exists()) {
        seed_installation(g_host.root);
        log_line("Seeded a demo installation in %s (registry keys, site lists, cache).", g_host.root.c_str());
    } else {
        log_line("Using the installation named by the Settings key.");
    }
    init_record(&g_host.record);
    log_line("Menu Zephyrion: Settings... opens the settings sheet;");
    log_line("Prefetch... the prefetch sheet, once the settings sheet has been opened.");
    if (g_host.screenshot_mode) PostMessageA(g_host.main, kStartShots, 0, 0);

    MSG msg;
    while (GetMessageA(&msg, nullptr, 0, 0) > 0) {
        TranslateMessage(&msg);
        DispatchMessageA(&msg);
    }
    return static_cast<int>(msg.wParam);
}
