// The scripted user's hold on real modal loops.  A WH_CBT hook sees every
// top-level dialog (property sheet, dialog box, message box, open-file
// dialog) become active and posts a wake-up to a hidden driver window; the
// modal loop that runs the new window dispatches it, and the driver then acts
// from inside that loop, as a person at the keyboard would.  Nothing sleeps
// for a fixed time: the driver waits until the queue is empty.
#include "tests/driver/runner_hooks.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace zr::test::hooks {
namespace {

constexpr UINT kWake = WM_APP + 0x2A5;
// A wake-up is put back behind pending messages at most this often, so a
// window that keeps its queue busy is still driven.
constexpr int kIdleRetries = 200;
constexpr int kBoxText = 0xFFFF;        // the static with a message box's text
constexpr int kBoxIcon = 0x0440;        // the static with its icon
constexpr int kFileNameCombo = 0x047C;  // open-file dialog: file name (explorer style)
constexpr int kFileNameEdit = 0x0480;   // open-file dialog: file name (old style)
const char* const kDriverClass = "ZrScriptedUserDriver";

struct DriverState {
    Handlers handlers;
    HWND driver = nullptr;
    HHOOK hook = nullptr;
    HHOOK notify_hook = nullptr;
    std::vector<HWND> sheets;                       // windows seen to be property sheets
    std::vector<HWND> reset;                        // sheets that told their pages to drop the edits: ending
    std::vector<std::pair<HWND, UINT>> box_styles;  // message boxes and the style they were given
};

DriverState& state() {
    static DriverState s;
    return s;
}

std::string class_of(HWND window) {
    char name[64] = {};
    GetClassNameA(window, name, sizeof name);
    return name;
}

bool is_sheet(HWND window) { return FindWindowExA(window, nullptr, "SysTabControl32", nullptr) != nullptr; }

bool is_open_file_dialog(HWND window) {
    return GetDlgItem(window, kFileNameCombo) != nullptr || GetDlgItem(window, kFileNameEdit) != nullptr;
}

// A message box holds its text, an icon and push buttons, nothing else.
bool is_message_box(HWND window) {
    if (GetDlgItem(window, kBoxText) == nullptr || is_sheet(window)) return false;
    for (HWND child = GetWindow(window, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        const std::string cls = class_of(child);
        if (lstrcmpiA(cls.c_str(), "Static") != 0 && lstrcmpiA(cls.c_str(), "Button") != 0) return false;
    }
    return true;
}

// The MB_* style a message box was shown with.  The system hands a message
// box's dialog its parameters (a MSGBOXPARAMSW first) with WM_INITDIALOG; when
// that was seen, it is the answer.  Otherwise it is read back from what the
// box shows (Wine 8 does not show MB_TOPMOST).
UINT box_style(HWND box) {
    for (const auto& [window, style] : state().box_styles) {
        if (window == box) return style;
    }
    auto has = [box](int id) { return GetDlgItem(box, id) != nullptr; };
    UINT style = MB_OK;
    if (has(IDABORT) && has(IDRETRY) && has(IDIGNORE))
        style = MB_ABORTRETRYIGNORE;
    else if (has(IDYES) && has(IDNO) && has(IDCANCEL))
        style = MB_YESNOCANCEL;
    else if (has(IDYES) && has(IDNO))
        style = MB_YESNO;
    else if (has(IDRETRY) && has(IDCANCEL))
        style = MB_RETRYCANCEL;
    else if (has(IDTRYAGAIN) && has(IDCONTINUE))
        style = MB_CANCELTRYCONTINUE;
    else if (has(IDOK) && has(IDCANCEL))
        style = MB_OKCANCEL;

    const HICON icon = reinterpret_cast<HICON>(SendDlgItemMessageA(box, kBoxIcon, STM_GETICON, 0, 0));
    if (icon != nullptr) {
        const struct {
            LPCSTR id;
            UINT flag;
        } icons[] = {{IDI_HAND, MB_ICONHAND},
                     {IDI_QUESTION, MB_ICONQUESTION},
                     {IDI_EXCLAMATION, MB_ICONEXCLAMATION},
                     {IDI_ASTERISK, MB_ICONASTERISK}};
        for (const auto& candidate : icons) {
            if (LoadIconA(nullptr, candidate.id) == icon) style |= candidate.flag;
        }
    }

    // The default button, counted in the order the box shows its buttons.
    int index = 0;
    for (HWND child = GetWindow(box, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        if (lstrcmpiA(class_of(child).c_str(), "Button") != 0 || !IsWindowVisible(child)) continue;
        if ((GetWindowLongA(child, GWL_STYLE) & 0x0F) == BS_DEFPUSHBUTTON) {
            style |= static_cast<UINT>(std::min(index, 3)) * MB_DEFBUTTON2;
            break;
        }
        ++index;
    }
    if (GetWindowLongA(box, GWL_EXSTYLE) & WS_EX_TOPMOST) style |= MB_TOPMOST;
    return style;
}

void press(HWND window, int id) {
    HWND button = GetDlgItem(window, id);
    if (button != nullptr && IsWindowEnabled(button))
        SendMessageA(button, BM_CLICK, 0, 0);
    else
        SendMessageA(window, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), reinterpret_cast<LPARAM>(button));
}

void answer_box(HWND box) {
    char text[1024] = {};
    char caption[256] = {};
    GetDlgItemTextA(box, kBoxText, text, sizeof text);
    GetWindowTextA(box, caption, sizeof caption);
    const int answer = state().handlers.on_box
                           ? state().handlers.on_box(GetWindow(box, GW_OWNER), text, caption, box_style(box))
                           : IDCANCEL;
    press(box, answer);
}

void answer_open_file(HWND dialog) {
    const std::string path = state().handlers.on_open_file
                                 ? state().handlers.on_open_file(GetWindow(dialog, GW_OWNER))
                                 : std::string();
    if (path.empty()) {
        press(dialog, IDCANCEL);
        return;
    }
    HWND name = GetDlgItem(dialog, kFileNameCombo);
    if (name == nullptr) name = GetDlgItem(dialog, kFileNameEdit);
    SetWindowTextA(name, path.c_str());
    press(dialog, IDOK);
}

// Runs every message that is waiting, without blocking.
void pump_pending() {
    MSG msg;
    while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) {
        if (msg.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(msg.wParam));
            break;
        }
        TranslateMessage(&msg);
        DispatchMessageA(&msg);
    }
}

bool queue_busy() { return (HIWORD(GetQueueStatus(QS_POSTMESSAGE | QS_SENDMESSAGE | QS_INPUT)) != 0); }

// ZR_DRIVER_TRACE=1 in the environment: every wake-up on stderr.
void trace(const char* what, HWND window) {
    static const bool on = GetEnvironmentVariableA("ZR_DRIVER_TRACE", nullptr, 0) > 0;
    if (!on) return;
    char text[128] = {};
    GetWindowTextA(window, text, sizeof text);
    std::fprintf(stderr, "driver: %s %p '%s'\n", what, static_cast<void*>(window), text);
}

void wake(HWND window, int retries) {
    trace(retries == kIdleRetries ? "wake" : "wake again", window);
    if (!IsWindow(window) || !IsWindowEnabled(window)) return;
    if (!IsWindowVisible(window)) {
        // A modal dialog is shown when its loop first finds the queue empty:
        // come back on a timer, which fires only once the queue is idle.
        SetTimer(state().driver, reinterpret_cast<UINT_PTR>(window), 10, nullptr);
        return;
    }
    if (retries > 0 && queue_busy()) {
        PostMessageA(state().driver, kWake, reinterpret_cast<WPARAM>(window), retries - 1);
        return;
    }
    if (is_message_box(window)) {
        trace("message box", window);
        answer_box(window);
    } else if (is_open_file_dialog(window)) {
        trace("open-file dialog", window);
        answer_open_file(window);
    } else if (state().handlers.on_modal) {
        if (is_sheet(window) &&
            std::find(state().sheets.begin(), state().sheets.end(), window) == state().sheets.end())
            state().sheets.push_back(window);
        trace("modal", window);
        state().handlers.on_modal(window);
        trace("modal returned", window);
    }
}

LRESULT CALLBACK driver_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_TIMER) {
        KillTimer(window, wparam);
        wake(reinterpret_cast<HWND>(wparam), kIdleRetries);
        return 0;
    }
    if (message == kWake) {
        wake(reinterpret_cast<HWND>(wparam), static_cast<int>(lparam));
        return 0;
    }
    return DefWindowProcA(window, message, wparam, lparam);
}

LRESULT CALLBACK cbt_proc(int code, WPARAM wparam, LPARAM lparam) {
    if (code == HCBT_ACTIVATE && state().driver != nullptr) {
        HWND window = reinterpret_cast<HWND>(wparam);
        if (class_of(window) == "#32770" && !(GetWindowLongA(window, GWL_STYLE) & WS_CHILD))
            PostMessageA(state().driver, kWake, wparam, kIdleRetries);
    }
    return CallNextHookEx(nullptr, code, wparam, lparam);
}

// A modal sheet whose Cancel or close box has been accepted sends PSN_RESET
// to its pages and ends its loop; nothing else shows from outside that it
// is ending (OK shows: the sheet then has no current page).
LRESULT CALLBACK notify_proc(int code, WPARAM wparam, LPARAM lparam) {
    if (code == HC_ACTION) {
        const CWPSTRUCT* call = reinterpret_cast<const CWPSTRUCT*>(lparam);
        if (call->message == WM_INITDIALOG && call->lParam != 0 && is_message_box(call->hwnd)) {
            const MSGBOXPARAMSW* params = reinterpret_cast<const MSGBOXPARAMSW*>(call->lParam);
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
            if (!IsBadReadPtr(params, sizeof *params) && params->cbSize == sizeof *params)
                state().box_styles.emplace_back(call->hwnd, params->dwStyle);
#pragma GCC diagnostic pop
        }
        if (call->message == WM_NOTIFY && call->lParam != 0) {
            const NMHDR* header = reinterpret_cast<const NMHDR*>(call->lParam);
            if (header->code == static_cast<UINT>(PSN_RESET)) state().reset.push_back(header->hwndFrom);
        }
    }
    return CallNextHookEx(nullptr, code, wparam, lparam);
}

}  // namespace

void install(const Handlers& handlers) {
    DriverState& s = state();
    s.handlers = handlers;
    s.sheets.clear();
    s.reset.clear();
    static bool registered = false;
    if (!registered) {
        WNDCLASSA window_class{};
        window_class.lpfnWndProc = driver_proc;
        window_class.hInstance = GetModuleHandleA(nullptr);
        window_class.lpszClassName = kDriverClass;
        registered = RegisterClassA(&window_class) != 0;
    }
    if (s.driver == nullptr)
        s.driver = CreateWindowExA(0, kDriverClass, "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                   GetModuleHandleA(nullptr), nullptr);
    if (s.hook == nullptr) s.hook = SetWindowsHookExA(WH_CBT, cbt_proc, nullptr, GetCurrentThreadId());
    if (s.notify_hook == nullptr)
        s.notify_hook = SetWindowsHookExA(WH_CALLWNDPROC, notify_proc, nullptr, GetCurrentThreadId());
}

void uninstall() {
    DriverState& s = state();
    if (s.hook != nullptr) UnhookWindowsHookEx(s.hook);
    s.hook = nullptr;
    if (s.notify_hook != nullptr) UnhookWindowsHookEx(s.notify_hook);
    s.notify_hook = nullptr;
    if (s.driver != nullptr) DestroyWindow(s.driver);  // wake-ups still queued go with it
    s.driver = nullptr;
    s.handlers = Handlers{};
    s.sheets.clear();
    s.reset.clear();
    s.box_styles.clear();
}

bool modal_ended(HWND modal) {
    // An ended dialog's loop runs nothing more: neither may we.
    if (!IsWindow(modal) || !IsWindowVisible(modal)) return true;
    pump_pending();
    if (!IsWindow(modal)) return true;
    const std::vector<HWND>& sheets = state().sheets;
    const std::vector<HWND>& reset = state().reset;
    if (std::find(sheets.begin(), sheets.end(), modal) != sheets.end() || is_sheet(modal))
        return std::find(reset.begin(), reset.end(), modal) != reset.end() ||
               SendMessageA(modal, PSM_GETCURRENTPAGEHWND, 0, 0) == 0;
    return !IsWindowVisible(modal);
}

void let_time_pass(int ms) {
    const DWORD start = GetTickCount();
    for (;;) {
        pump_pending();
        const DWORD elapsed = GetTickCount() - start;
        if (ms <= 0 || elapsed >= static_cast<DWORD>(ms)) break;
        MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(ms) - elapsed, QS_ALLINPUT);
    }
}

}  // namespace zr::test::hooks
