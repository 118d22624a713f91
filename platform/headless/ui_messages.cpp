// Headless messages: synchronous sends, the posted-message queue, timers on
// a virtual clock, the modal loops and the hooks through which the simulated
// user acts while a modal window is up.
#include <algorithm>
#include <cctype>
#include <cstring>
#include <deque>

#include "platform/headless/ui_internal.h"

namespace zr::headless::ui {

namespace {

struct Timer {
    HWND window;
    UINT_PTR id;
    unsigned period;
    unsigned long long due;
    TIMERPROC proc;
};

std::deque<MSG> g_queue;
std::vector<Timer> g_timers;
unsigned long long g_now = 0;
UINT_PTR g_next_timer_id = 1;
int g_depth = 0;  // API calls in progress
std::vector<ModalRun*> g_runs;
int g_abandoned = 0;
bool g_winnt = true;
bool g_module_missing = false;
bool g_sheet_extended = false;
DWORD g_last_error = 0;
std::function<void(HWND)> g_modal_hook;
std::function<int(HWND, const char*, const char*, UINT)> g_box_hook;
std::function<bool(OPENFILENAMEA*)> g_open_file_hook;

ModalRun* innermost() {
    for (auto it = g_runs.rbegin(); it != g_runs.rend(); ++it)
        if (!(*it)->finished) return *it;
    return nullptr;
}

bool run_ended(ModalRun& run) { return find(run.window) == nullptr || run.ended(run.window); }

void finish(ModalRun& run) {
    if (run.finished) return;
    run.finished = true;
    if (run.disabled_owner != nullptr) EnableWindow(run.disabled_owner, TRUE);
    if (find(run.window) != nullptr) DestroyWindow(run.window);
}

void dispatch(const MSG& msg) {
    if (msg.hwnd == nullptr) return;  // thread messages have no window procedure here
    send(msg.hwnd, msg.message, msg.wParam, msg.lParam);
}

}  // namespace

int api_depth() { return g_depth; }

ApiScope::ApiScope() { ++g_depth; }
ApiScope::~ApiScope() {
    --g_depth;
    settle();
}

// Control is back at the level of the innermost modal loop: the loop runs,
// delivering posted messages until its window has ended, and closes it.
void settle() {
    ModalRun* run = innermost();
    if (run == nullptr || g_depth != run->depth) return;
    for (int guard = 0; guard < 100000 && !run_ended(*run) && deliver_one_posted(); ++guard) {
    }
    if (run_ended(*run)) finish(*run);
}

LRESULT send(HWND handle, UINT message, WPARAM wparam, LPARAM lparam) {
    ApiScope scope;
    Window* w = find(handle);
    if (w == nullptr || w->proc == nullptr) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return 0;
    }
    return w->proc(handle, message, wparam, lparam);
}

bool post(HWND handle, UINT message, WPARAM wparam, LPARAM lparam) {
    if (handle != nullptr && find(handle) == nullptr) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return false;
    }
    MSG msg{};
    msg.hwnd = handle;
    msg.message = message;
    msg.wParam = wparam;
    msg.lParam = lparam;
    msg.time = static_cast<DWORD>(g_now);
    g_queue.push_back(msg);
    return true;
}

bool deliver_one_posted() {
    // A quit request stays in the queue for GetMessageA.
    auto it = std::find_if(g_queue.begin(), g_queue.end(), [](const MSG& m) { return m.message != WM_QUIT; });
    if (it == g_queue.end()) return false;
    MSG msg = *it;
    g_queue.erase(it);
    ++g_depth;
    dispatch(msg);
    --g_depth;
    return true;
}

void notify_parent_command(Window& control, int code) {
    const HWND parent = control.parent;
    if (parent == nullptr) return;
    send(parent, WM_COMMAND, MAKEWPARAM(control.id, code), reinterpret_cast<LPARAM>(control.handle));
}

LRESULT notify_parent(Window& control, UINT code, NMHDR* header) {
    header->hwndFrom = control.handle;
    header->idFrom = static_cast<UINT_PTR>(control.id);
    header->code = code;
    if (control.parent == nullptr) return 0;
    return send(control.parent, WM_NOTIFY, static_cast<WPARAM>(control.id), reinterpret_cast<LPARAM>(header));
}

void run_modal(ModalRun& run) {
    g_runs.push_back(&run);
    // Posted messages first, then the user acts, then the loop runs dry.
    settle();
    if (!run.finished) {
        call_modal_hook(run.window);
        settle();
    }
    if (!run.finished) {
        ++g_abandoned;
        if (find(run.window) != nullptr) run.abandon(run.window);
        settle();
        finish(run);
    }
    g_runs.erase(std::remove(g_runs.begin(), g_runs.end(), &run), g_runs.end());
}

void call_modal_hook(HWND window) {
    auto hook = g_modal_hook;  // a copy: the hook may replace itself
    if (hook) hook(window);
}

void kill_timers_of(HWND handle) {
    g_timers.erase(std::remove_if(g_timers.begin(), g_timers.end(),
                                  [handle](const Timer& t) { return t.window == handle; }),
                   g_timers.end());
}

bool sheet_template_extended() { return g_sheet_extended; }
bool resource_module_missing() { return g_module_missing; }

void reset_messages() {
    g_queue.clear();
    g_timers.clear();
    g_runs.clear();
    g_abandoned = 0;
    g_modal_hook = nullptr;
    g_box_hook = nullptr;
    g_open_file_hook = nullptr;
    g_winnt = true;
    g_module_missing = false;
    g_sheet_extended = false;
}

int compare_nocase(const std::string& a, const std::string& b) {
    const size_t n = std::min(a.size(), b.size());
    for (size_t i = 0; i < n; ++i) {
        const int x = std::tolower(static_cast<unsigned char>(a[i]));
        const int y = std::tolower(static_cast<unsigned char>(b[i]));
        if (x != y) return x < y ? -1 : 1;
    }
    return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
}

bool starts_with_nocase(const std::string& text, const std::string& prefix) {
    return text.size() >= prefix.size() && compare_nocase(text.substr(0, prefix.size()), prefix) == 0;
}

int copy_text(const std::string& text, char* buffer, size_t capacity) {
    if (buffer == nullptr || capacity == 0) return 0;
    const size_t n = std::min(text.size(), capacity - 1);
    std::memcpy(buffer, text.data(), n);
    buffer[n] = '\0';
    return static_cast<int>(n);
}

std::string text_of(LPARAM lparam) {
    const char* p = reinterpret_cast<const char*>(lparam);
    return p != nullptr ? std::string(p) : std::string();
}

// Delivered to the message box and open-file code.
int ask_message_box(HWND owner, const char* text, const char* caption, UINT style, bool* answered) {
    auto hook = g_box_hook;
    *answered = static_cast<bool>(hook);
    return hook ? hook(owner, text, caption, style) : 0;
}

bool ask_open_file(OPENFILENAMEA* ofn) {
    auto hook = g_open_file_hook;
    return hook ? hook(ofn) : false;
}

}  // namespace zr::headless::ui

using namespace zr::headless::ui;

void zr::headless::reset_ui() {
    reset_windows();
    reset_messages();
    reset_modules();
    reset_image_lists();
}

void zr::headless::set_winnt(bool nt) { g_winnt = nt; }
bool zr::headless::winnt() { return g_winnt; }
void zr::headless::set_resource_module_missing(bool missing) { g_module_missing = missing; }
void zr::headless::set_modal_hook(std::function<void(HWND)> hook) { g_modal_hook = std::move(hook); }
void zr::headless::set_message_box_hook(std::function<int(HWND, const char*, const char*, UINT)> hook) {
    g_box_hook = std::move(hook);
}
void zr::headless::set_open_file_hook(std::function<bool(OPENFILENAMEA*)> hook) {
    g_open_file_hook = std::move(hook);
}
int zr::headless::abandoned_modal_runs() { return g_abandoned; }
void zr::headless::set_sheet_template_extended(bool extended) { g_sheet_extended = extended; }

void zr::headless::pump() {
    ApiScope scope;
    for (int guard = 0; guard < 100000 && deliver_one_posted(); ++guard) {
    }
}

void zr::headless::advance_time(unsigned ms) {
    ApiScope scope;
    const unsigned long long target = g_now + ms;
    for (;;) {
        auto due = std::min_element(g_timers.begin(), g_timers.end(),
                                    [](const Timer& a, const Timer& b) { return a.due < b.due; });
        if (due == g_timers.end() || due->due > target) break;
        g_now = due->due;
        Timer fired = *due;
        due->due += std::max(fired.period, 1u);
        ++g_depth;
        if (fired.proc != nullptr)
            fired.proc(fired.window, WM_TIMER, fired.id, static_cast<DWORD>(g_now));
        else
            send(fired.window, WM_TIMER, fired.id, 0);
        --g_depth;
        settle();
    }
    g_now = target;
}

UINT_PTR WINAPI SetTimer(HWND h, UINT_PTR id, UINT elapse, TIMERPROC proc) {
    if (h != nullptr && find(h) == nullptr) return 0;
    if (h == nullptr) id = g_next_timer_id++;
    const unsigned period = std::max(elapse, 10u);  // USER_TIMER_MINIMUM
    for (Timer& t : g_timers) {
        if (t.window == h && t.id == id) {
            t.period = period, t.due = g_now + period, t.proc = proc;
            return id != 0 ? id : 1;
        }
    }
    g_timers.push_back(Timer{h, id, period, g_now + period, proc});
    return id != 0 ? id : 1;
}

BOOL WINAPI KillTimer(HWND h, UINT_PTR id) {
    auto it = std::find_if(g_timers.begin(), g_timers.end(),
                           [h, id](const Timer& t) { return t.window == h && t.id == id; });
    if (it == g_timers.end()) return FALSE;
    g_timers.erase(it);
    return TRUE;
}

LRESULT WINAPI SendMessageA(HWND h, UINT message, WPARAM wparam, LPARAM lparam) {
    return send(h, message, wparam, lparam);
}

LRESULT WINAPI SendDlgItemMessageA(HWND dialog, int id, UINT message, WPARAM wparam, LPARAM lparam) {
    HWND item = GetDlgItem(dialog, id);
    return item != nullptr ? send(item, message, wparam, lparam) : 0;
}

BOOL WINAPI PostMessageA(HWND h, UINT message, WPARAM wparam, LPARAM lparam) {
    return post(h, message, wparam, lparam) ? TRUE : FALSE;
}

VOID WINAPI PostQuitMessage(int code) { post(nullptr, WM_QUIT, static_cast<WPARAM>(code), 0); }

BOOL WINAPI PeekMessageA(LPMSG msg, HWND h, UINT low, UINT high, UINT remove) {
    for (auto it = g_queue.begin(); it != g_queue.end(); ++it) {
        if (h != nullptr && it->hwnd != h) continue;
        if ((low != 0 || high != 0) && (it->message < low || it->message > high)) continue;
        if (msg != nullptr) *msg = *it;
        if (remove & PM_REMOVE) g_queue.erase(it);
        return TRUE;
    }
    return FALSE;
}

// Nothing arrives from outside: an empty queue reads as the end of the loop.
BOOL WINAPI GetMessageA(LPMSG msg, HWND h, UINT low, UINT high) {
    MSG got{};
    if (!PeekMessageA(&got, h, low, high, PM_REMOVE)) got.message = WM_QUIT;
    if (msg != nullptr) *msg = got;
    return got.message != WM_QUIT;
}

BOOL WINAPI TranslateMessage(const MSG*) { return FALSE; }

LRESULT WINAPI DispatchMessageA(const MSG* msg) {
    return msg != nullptr ? send(msg->hwnd, msg->message, msg->wParam, msg->lParam) : 0;
}

BOOL WINAPI IsDialogMessageA(HWND, LPMSG) { return FALSE; }

LRESULT WINAPI CallWindowProcA(WNDPROC proc, HWND h, UINT message, WPARAM wparam, LPARAM lparam) {
    return proc != nullptr ? proc(h, message, wparam, lparam) : 0;
}

LRESULT WINAPI DefWindowProcA(HWND h, UINT message, WPARAM wparam, LPARAM lparam) {
    return default_window_proc(h, message, wparam, lparam);
}

DWORD WINAPI GetLastError(void) { return g_last_error; }
VOID WINAPI SetLastError(DWORD code) { g_last_error = code; }
