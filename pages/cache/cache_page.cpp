// The cache page: the cache size as a share of the cache drive, the cache's
// current size (refreshed twice a second), the request to empty the cache,
// the build number and the skin.  Edits go into the working copy and mark a
// change; the page never writes the registry.
//
// When the cache drive's size is unknown or 0, a share of it means nothing:
// the percentage shows 0, the track bar stands at its minimum and is disabled,
// and a track-bar message that still arrives leaves `cache_size_mb` alone (it
// would otherwise become 0).  302 keeps showing the size in megabytes.
//
// A chosen skin whose path does not fit `skin_path` (more than 259
// characters) is refused with a message saying so; a cut path would name
// another file.
#include "pages/cache/cache_page.h"

#include <cstdio>
#include <cstring>
#include <string>

#include "pages/cache/cache_stats.h"
#include "pages/cache/cache_values.h"
#include "platform/zrinfo.h"
#include "platform/zrutil.h"
#include "settings/context.h"
#include "settings/pages.h"
#include "settings/store.h"

namespace {

enum Control {
    kOptionBox = 300,
    kCurrentSizeText = 301,
    kChosenSizeText = 302,
    kSizeTrackBar = 303,
    kPercentText = 304,
    kResetButton = 305,
    kBlankText = 306,
    kSkinNameText = 310,
    kSkinButton = 311,
    kBuildText = 312,
};

constexpr UINT_PTR kRefreshTimer = 1;
constexpr UINT kRefreshPeriodMs = 500;
constexpr UINT kEmptyCacheMessage = WM_USER + 4;  // 1028, to the "Zephyrion" window
constexpr UINT kPercentWordsString = 6004;
constexpr UINT kResetQuestionString = 6005;
constexpr UINT kResetCaptionString = 6006;
constexpr char kResetCaption[] = "Reset Cache?";

// The open-file structure as it was before the Windows 2000 fields: 76 bytes
// on the 32-bit build.
constexpr DWORD kOpenFileNameSize400 = offsetof(OPENFILENAMEA, lpTemplateName) + sizeof(LPCSTR);
static_assert(sizeof(void*) != 4 || kOpenFileNameSize400 == 76);
#ifdef OPENFILENAME_SIZE_VERSION_400A
const DWORD kOpenFileNameSize = OPENFILENAME_SIZE_VERSION_400A;
#else
const DWORD kOpenFileNameSize = kOpenFileNameSize400;
#endif

// Size of the cache drive in megabytes; 0 when it is unknown.
DWORD cache_drive_mb() {
    DWORD total_mb = 0;
    DWORD free_mb = 0;
    if (!get_fixed_drive_info(cache_drive_root().c_str(), &total_mb, &free_mb)) return 0;
    return total_mb;
}

void show_megabytes(HWND page, uint32_t size_mb) {
    char text[32];
    std::snprintf(text, sizeof text, "%lu MB", static_cast<unsigned long>(size_mb));
    SetDlgItemTextA(page, kChosenSizeText, text);
}

void show_percentage(HWND page, int percent) {
    char words[1024];
    load_res_string(g_settings.resource_module, kPercentWordsString, words, sizeof words);
    char text[sizeof words + 16];
    std::snprintf(text, sizeof text, "%d%% %s", percent, words);
    SetDlgItemTextA(page, kPercentText, text);
}

// The cache's current size into 301; an unknown size leaves the text.
void refresh_current_size(HWND page) {
    const int32_t bytes = read_cache_size();
    if (bytes == -1) return;
    char text[32];
    format_cache_bytes(bytes, text, sizeof text);
    SetDlgItemTextA(page, kCurrentSizeText, text);
}

void show_build_number(HWND page) {
    char value[1024] = {};
    if (!read_string(kMakerKey, "zephyrion_pi", value, sizeof value)) return;
    const char* build = build_number_text(value);
    if (build == nullptr) return;
    char text[sizeof value + 16];
    std::snprintf(text, sizeof text, "Build number %s", build);
    SetDlgItemTextA(page, kBuildText, text);
}

void init_page(HWND page) {
    center_window(nullptr, GetParent(page));
    CheckDlgButton(page, kOptionBox, g_settings.working.cache_option_300 ? BST_CHECKED : BST_UNCHECKED);
    const DWORD drive_mb = cache_drive_mb();
    show_megabytes(page, g_settings.working.cache_size_mb);
    refresh_current_size(page);

    const int percent = cache_percentage(g_settings.working.cache_size_mb, drive_mb);
    HWND track = GetDlgItem(page, kSizeTrackBar);
    SendMessageA(track, TBM_SETRANGE, TRUE, MAKELPARAM(kTrackMin, kTrackMax));
    SendMessageA(track, TBM_SETPOS, TRUE, percent);
    if (drive_mb == 0) EnableWindow(track, FALSE);

    show_build_number(page);
    show_percentage(page, percent);
    SetDlgItemTextA(page, kBlankText, "");
    SetDlgItemTextA(page, kSkinNameText, skin_file_name(g_settings.working.skin_path));
    SetTimer(page, kRefreshTimer, kRefreshPeriodMs, nullptr);
}

void track_bar_moved(HWND page, WPARAM wparam) {
    DWORD position = 0;
    switch (LOWORD(wparam)) {
        case TB_LINEUP:
        case TB_LINEDOWN:
        case TB_PAGEUP:
        case TB_PAGEDOWN:
        case TB_TOP:
        case TB_BOTTOM:
            position = static_cast<DWORD>(SendDlgItemMessageA(page, kSizeTrackBar, TBM_GETPOS, 0, 0));
            break;
        case TB_THUMBTRACK:
            position = HIWORD(wparam);
            break;
        default:  // TB_THUMBPOSITION, TB_ENDTRACK and anything else
            return;
    }
    const DWORD drive_mb = cache_drive_mb();
    if (drive_mb == 0) return;  // no share of an unknown drive
    uint32_t& size_mb = g_settings.working.cache_size_mb;
    size_mb = cache_size_for_position(position, drive_mb);
    show_megabytes(page, size_mb);
    show_percentage(page, cache_percentage(size_mb, drive_mb));
    mark_changed(page);
}

void ask_to_empty_cache(HWND page) {
    if (g_settings.modal_guard > 0) {
        // The question is already open: bring it back above everything.
        HWND box = FindWindowA("#32770", kResetCaption);
        if (box != nullptr) SetWindowPos(box, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
        return;
    }
    ++g_settings.modal_guard;
    char question[1024];
    char caption[1024];
    load_res_string(g_settings.resource_module, kResetQuestionString, question, sizeof question);
    load_res_string(g_settings.resource_module, kResetCaptionString, caption, sizeof caption);
    const int answer =
        MessageBoxA(GetParent(page), question, caption, MB_YESNO | MB_ICONQUESTION | MB_TOPMOST);
    if (answer == IDYES) {
        HWND application = FindWindowA("Zephyrion", nullptr);
        if (application != nullptr) PostMessageA(application, kEmptyCacheMessage, 0, 0);
    }
    --g_settings.modal_guard;
}

void choose_skin(HWND page) {
    char* skin_path = g_settings.working.skin_path;
    char chosen[1024] = {};
    if (!choose_skin_file(page, skin_path, chosen, sizeof chosen)) return;
    if (same_path_ignoring_case(chosen, skin_path)) return;
    if (std::strlen(chosen) >= sizeof g_settings.working.skin_path) {
        MessageBoxA(nullptr, kSkinPathTooLongText, nullptr, MB_TOPMOST);
        return;
    }
    if (!probe_skin(chosen)) {
        MessageBoxA(nullptr, kInvalidSkinText, nullptr, MB_TOPMOST);
        return;
    }
    std::memcpy(skin_path, chosen, std::strlen(chosen) + 1);
    g_settings.working.skin_changed = 1;
    SetDlgItemTextA(page, kSkinNameText, skin_file_name(skin_path));
    mark_changed(page);
}

void command(HWND page, WPARAM wparam) {
    if (HIWORD(wparam) != BN_CLICKED) return;
    switch (LOWORD(wparam)) {
        case kOptionBox:
            g_settings.working.cache_option_300 = IsDlgButtonChecked(page, kOptionBox) == BST_CHECKED ? 1 : 0;
            mark_changed(page);
            break;
        case kResetButton:
            ask_to_empty_cache(page);
            break;
        case kSkinButton:
            if (g_settings.modal_guard >= 1) break;
            ++g_settings.modal_guard;
            choose_skin(page);
            --g_settings.modal_guard;
            break;
        default:
            break;
    }
}

}  // namespace

bool choose_skin_file(HWND owner, const char* current, char* chosen, size_t capacity) {
    static const char kFilter[] = "Zephyrion Skin Files (*.zsk)\0*.zsk\0All Files (*.*)\0*.*\0";
    char file[1024] = {};
    std::snprintf(file, sizeof file, "%s", current);
    OPENFILENAMEA dialog;
    std::memset(&dialog, 0, sizeof dialog);
    dialog.lStructSize = kOpenFileNameSize;
    dialog.hwndOwner = owner;
    dialog.lpstrFilter = kFilter;
    dialog.nFilterIndex = 1;
    dialog.lpstrFile = file;
    dialog.nMaxFile = sizeof file;
    dialog.lpstrTitle = "Please choose a Skin file";
    if (!GetOpenFileNameA(&dialog)) return false;
    if (capacity > 0) std::snprintf(chosen, capacity, "%s", file);
    return true;
}

bool probe_skin(const char* path) {
    HMODULE skin = LoadLibraryA(path);
    if (skin == nullptr) return false;
    bool usable = false;
    if (FindResourceA(skin, MAKEINTRESOURCEA(8011), RT_GROUP_ICON) != nullptr) {
        HANDLE bitmap = LoadImageA(skin, MAKEINTRESOURCEA(10000), IMAGE_BITMAP, 0, 0, LR_DEFAULTCOLOR);
        if (bitmap != nullptr) {
            DeleteObject(bitmap);
            usable = true;
        }
    }
    if (!usable) usable = GetProcAddress(skin, "create_skin_window") != nullptr;
    FreeLibrary(skin);
    return usable;
}

INT_PTR CALLBACK cache_page_proc(HWND page, UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
        case WM_INITDIALOG:
            init_page(page);
            break;
        case WM_TIMER:
            if (wparam == kRefreshTimer) refresh_current_size(page);
            break;
        case WM_HSCROLL:
            track_bar_moved(page, wparam);
            break;
        case WM_COMMAND:
            command(page, wparam);
            break;
        case WM_NOTIFY:
            return handle_page_notify(page, lparam);
        case WM_CLOSE:
            KillTimer(page, kRefreshTimer);
            EndDialog(page, LOWORD(wparam));
            break;
        case WM_DESTROY:
            KillTimer(page, kRefreshTimer);
            break;
        default:
            break;
    }
    return 0;
}
