// The scripted user, the same in every world: it acts on the modal window
// that is up with the Win32 messages a person's clicks and keystrokes cause,
// and refuses what a person could not do (press a disabled button, type into
// a read-only field).
#include "tests/driver/user.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <deque>
#include <string>
#include <vector>

#include "tests/driver/runner_hooks.h"

namespace zr::test {

namespace {

constexpr int kApplyButton = 0x3021;  // the property sheet's Apply button
constexpr UINT kBoxTypeMask = 0x0F;   // MB_OK ... MB_CANCELTRYCONTINUE
constexpr int kTryAgain = 10;         // IDTRYAGAIN
constexpr int kContinue = 11;         // IDCONTINUE

std::string window_text(HWND window) {
    char buffer[256] = {};
    GetWindowTextA(window, buffer, sizeof buffer);
    return buffer;
}

std::string class_name(HWND window) {
    char buffer[64] = {};
    GetClassNameA(window, buffer, sizeof buffer);
    return buffer;
}

bool same_text_nocase(const std::string& a, const char* b) {
    size_t i = 0;
    for (; i < a.size() && b[i] != '\0'; ++i) {
        char x = a[i] >= 'A' && a[i] <= 'Z' ? static_cast<char>(a[i] + 32) : a[i];
        char y = b[i] >= 'A' && b[i] <= 'Z' ? static_cast<char>(b[i] + 32) : b[i];
        if (x != y) return false;
    }
    return i == a.size() && b[i] == '\0';
}

HWND current_page(HWND window) {
    return reinterpret_cast<HWND>(SendMessageA(window, PSM_GETCURRENTPAGEHWND, 0, 0));
}

// "property sheet 'Settings' (0x1234)" or "dialog 'Add site' (0x1240)".
std::string describe(HWND window) {
    char handle[32];
    std::snprintf(handle, sizeof handle, "%p", static_cast<void*>(window));
    return std::string(current_page(window) ? "property sheet '" : "dialog '") + window_text(window) + "' (" +
           handle + ")";
}

std::string describe(const User::Step& step) {
    switch (step.kind) {
        case User::Step::ShowPage:
            return "show_page(" + std::to_string(step.a) + ")";
        case User::Step::Click:
            return "click(" + std::to_string(step.id) + ")";
        case User::Step::Type:
            return "type(" + std::to_string(step.id) + ", \"" + step.text + "\")";
        case User::Step::SelectRows:
            return "select_rows(" + std::to_string(step.id) + ")";
        case User::Step::Scroll:
            return "scroll(" + std::to_string(step.id) + ")";
        case User::Step::Apply:
            return "apply()";
        case User::Step::Ok:
            return "ok()";
        case User::Step::Cancel:
            return "cancel()";
        case User::Step::Help:
            return "help()";
        case User::Step::Close:
            return "close()";
        case User::Step::Answer:
            return "answer_box(" + std::to_string(step.a) + ")";
        case User::Step::ChooseFile:
            return "choose_file(\"" + step.text + "\")";
        case User::Step::Wait:
            return "wait(" + std::to_string(step.a) + ")";
        case User::Step::Look:
            return "check(...)";
    }
    return "?";
}

// The buttons a message box of `style` offers.
std::vector<int> box_buttons(UINT style) {
    switch (style & kBoxTypeMask) {
        case MB_OKCANCEL:
            return {IDOK, IDCANCEL};
        case MB_ABORTRETRYIGNORE:
            return {IDABORT, IDRETRY, IDIGNORE};
        case MB_YESNOCANCEL:
            return {IDYES, IDNO, IDCANCEL};
        case MB_YESNO:
            return {IDYES, IDNO};
        case MB_RETRYCANCEL:
            return {IDRETRY, IDCANCEL};
        case 6:
            return {IDCANCEL, kTryAgain, kContinue};  // MB_CANCELTRYCONTINUE
        default:
            return {IDOK};
    }
}

// What Escape (or the box's close button) gives: Cancel, No, Abort, else OK.
int dismiss_answer(UINT style) {
    std::vector<int> buttons = box_buttons(style);
    for (int preferred : {IDCANCEL, IDNO, IDABORT}) {
        for (int b : buttons) {
            if (b == preferred) return b;
        }
    }
    return IDOK;
}

}  // namespace

bool Modal::enabled(int id) const {
    HWND control = item(id);
    return control != nullptr && IsWindowEnabled(control);
}

bool Modal::visible(int id) const {
    HWND control = item(id);
    return control != nullptr && IsWindowVisible(control);
}

int Modal::checked(int id) const { return static_cast<int>(IsDlgButtonChecked(page, id)); }

std::string Modal::text(int id) const {
    char buffer[1024] = {};
    GetDlgItemTextA(page, id, buffer, sizeof buffer);
    return buffer;
}

// The state of one User::run: where the script is, what answers wait for
// their box, and which modal windows are being driven (innermost last).
struct UserRunner {
    User& user;
    size_t next = 0;
    std::deque<int> box_answers;
    std::deque<std::string> file_answers;
    std::vector<HWND> driving;
    bool aborted = false;

    explicit UserRunner(User& u) : user(u) {}

    static Modal view(HWND window) {
        HWND page = current_page(window);
        return Modal{window, page ? page : window};
    }

    void fail(HWND window, const User::Step& step, const std::string& why) {
        ADD_FAILURE() << "scripted user, step " << &step - user.steps_.data() + 1 << " " << describe(step)
                      << " in " << describe(window) << ": " << why;
        aborted = true;
    }

    // A control a person can reach: it exists, is visible and enabled.
    HWND reachable(HWND window, HWND parent, const User::Step& step, int id) {
        HWND control = GetDlgItem(parent, id);
        if (control == nullptr) {
            fail(window, step, "there is no control " + std::to_string(id));
        } else if (!IsWindowVisible(control)) {
            fail(window, step, "control " + std::to_string(id) + " is hidden");
        } else if (!IsWindowEnabled(control)) {
            fail(window, step, "control " + std::to_string(id) + " is disabled");
        } else {
            return control;
        }
        return nullptr;
    }

    void press(HWND window, const User::Step& step, int id) {
        if (HWND button = reachable(window, window, step, id)) SendMessageA(button, BM_CLICK, 0, 0);
    }

    void select_rows(HWND window, HWND page, const User::Step& step) {
        HWND list = reachable(window, page, step, step.id);
        if (list == nullptr) return;
        int count = static_cast<int>(SendMessageA(list, LB_GETCOUNT, 0, 0));
        for (int row : step.rows) {
            if (row < 0 || row >= count) {
                return fail(window, step,
                            "row " + std::to_string(row) + " is not in the list (" + std::to_string(count) +
                                " rows)");
            }
        }
        LONG style = GetWindowLongA(list, GWL_STYLE);
        if (style & (LBS_MULTIPLESEL | LBS_EXTENDEDSEL)) {
            SendMessageA(list, LB_SETSEL, FALSE, -1);
            for (int row : step.rows) SendMessageA(list, LB_SETSEL, TRUE, row);
        } else {
            if (step.rows.size() > 1) return fail(window, step, "the list allows one selected row only");
            SendMessageA(list, LB_SETCURSEL, step.rows.empty() ? -1 : step.rows[0], 0);
        }
        SendMessageA(page, WM_COMMAND, MAKEWPARAM(step.id, LBN_SELCHANGE), reinterpret_cast<LPARAM>(list));
    }

    void type(HWND window, HWND page, const User::Step& step) {
        HWND edit = reachable(window, page, step, step.id);
        if (edit == nullptr) return;
        std::string text = step.text;
        if (same_text_nocase(class_name(edit), "Edit")) {
            if (GetWindowLongA(edit, GWL_STYLE) & ES_READONLY) {
                return fail(window, step, "edit " + std::to_string(step.id) + " is read-only");
            }
            // Typing stops at the field's limit (setting the text would not).
            size_t limit = static_cast<size_t>(SendMessageA(edit, EM_GETLIMITTEXT, 0, 0));
            if (limit > 0 && text.size() > limit) text.resize(limit);
        }
        SetWindowTextA(edit, text.c_str());
    }

    void scroll(HWND window, HWND page, const User::Step& step) {
        HWND bar = reachable(window, page, step, step.id);
        if (bar == nullptr) return;
        SendMessageA(bar, TBM_SETPOS, TRUE, step.b);
        UINT message = (GetWindowLongA(bar, GWL_STYLE) & TBS_VERT) ? WM_VSCROLL : WM_HSCROLL;
        SendMessageA(page, message, MAKEWPARAM(step.a, step.b), reinterpret_cast<LPARAM>(bar));
    }

    void perform(HWND window, const User::Step& step) {
        Modal modal = view(window);
        bool sheet = modal.page != window;
        switch (step.kind) {
            case User::Step::ShowPage:
                if (!sheet) return fail(window, step, "not a property sheet");
                if (!SendMessageA(window, PSM_SETCURSEL, step.a, 0)) fail(window, step, "no such page");
                return;
            case User::Step::Click:
                if (HWND control = reachable(window, modal.page, step, step.id)) {
                    SendMessageA(control, BM_CLICK, 0, 0);
                }
                return;
            case User::Step::Type:
                return type(window, modal.page, step);
            case User::Step::SelectRows:
                return select_rows(window, modal.page, step);
            case User::Step::Scroll:
                return scroll(window, modal.page, step);
            case User::Step::Apply:
                if (!sheet) return fail(window, step, "a dialog has no Apply button");
                return press(window, step, kApplyButton);
            case User::Step::Ok:
                return press(window, step, IDOK);
            case User::Step::Cancel:
                return press(window, step, IDCANCEL);
            case User::Step::Help:
                return press(window, step, IDHELP);
            case User::Step::Close:
                // The close box: the frame turns it into SC_CLOSE, which a
                // dialog's default procedure turns into WM_CLOSE.
                if (!(GetWindowLongA(window, GWL_STYLE) & WS_SYSMENU)) {
                    return fail(window, step, "the window has no close box");
                }
                SendMessageA(window, WM_SYSCOMMAND, SC_CLOSE, 0);
                return;
            case User::Step::Answer:
                box_answers.push_back(step.a);
                return;
            case User::Step::ChooseFile:
                file_answers.push_back(step.text);
                return;
            case User::Step::Wait:
                hooks::let_time_pass(step.a);
                return;
            case User::Step::Look:
                if (step.check) step.check(modal);
                return;
        }
    }

    // After a failure: end the modal window as a person would give up,
    // Cancel first, then the close box; a dialog that refuses both is ended.
    // A sheet ends only when its loop gets control back, so one press is all.
    void give_up(HWND window) {
        bool sheet = current_page(window) != nullptr;
        HWND cancel = GetDlgItem(window, IDCANCEL);
        if (cancel != nullptr && IsWindowEnabled(cancel)) {
            SendMessageA(cancel, BM_CLICK, 0, 0);
            if (sheet || hooks::modal_ended(window)) return;
        }
        SendMessageA(window, WM_SYSCOMMAND, SC_CLOSE, 0);
        if (!sheet && !hooks::modal_ended(window)) EndDialog(window, 0);
    }

    // A sheet's OK, Cancel and close box end its modal loop once the loop
    // gets control back (a sheet cannot be asked whether it has ended), so
    // the steps after them wait for the next modal window, or for this one
    // if it is still up and the world calls again.
    static bool hands_back(HWND window, const User::Step& step) {
        bool ending =
            step.kind == User::Step::Ok || step.kind == User::Step::Cancel || step.kind == User::Step::Close;
        return ending && current_page(window) != nullptr;
    }

    void on_modal(HWND window) {
        for (HWND w : driving) {
            if (w == window) return;  // already being driven further out
        }
        driving.push_back(window);
        bool handed_back = false;
        while (!aborted && !handed_back && next < user.steps_.size() && !hooks::modal_ended(window)) {
            // Taken before it runs: a nested modal window that the step
            // opens continues with the steps after it.
            const User::Step& step = user.steps_[next++];
            handed_back = hands_back(window, step);
            perform(window, step);
        }
        if (!aborted && !handed_back && !hooks::modal_ended(window)) {
            ADD_FAILURE() << "scripted user: the script ended with " << describe(window) << " still open";
            aborted = true;
        }
        if (aborted && !hooks::modal_ended(window)) give_up(window);
        driving.pop_back();
    }

    // A box or file dialog that shows while no modal window is being driven
    // (the code under test shows it before or after its sheet): the answers
    // at the head of the script are armed for it.
    void arm_leading_answers() {
        if (!driving.empty() || aborted) return;
        while (next < user.steps_.size() && (user.steps_[next].kind == User::Step::Answer ||
                                             user.steps_[next].kind == User::Step::ChooseFile)) {
            const User::Step& step = user.steps_[next++];
            if (step.kind == User::Step::Answer) box_answers.push_back(step.a);
            if (step.kind == User::Step::ChooseFile) file_answers.push_back(step.text);
        }
    }

    int on_box(HWND owner, const char* text, const char* caption, UINT style) {
        arm_leading_answers();
        std::string shown_text = text ? text : "";
        std::string shown_caption = caption ? caption : "";
        int answer = dismiss_answer(style);
        if (!box_answers.empty()) {
            int wanted = box_answers.front();
            box_answers.pop_front();
            bool offered = false;
            for (int b : box_buttons(style)) offered = offered || b == wanted;
            if (offered) {
                answer = wanted;
            } else {
                ADD_FAILURE() << "scripted user: the message box \"" << shown_text << "\" has no button "
                              << wanted;
                aborted = true;
            }
        } else if (!aborted) {
            ADD_FAILURE() << "scripted user: unexpected message box \"" << shown_text << "\" (caption \""
                          << shown_caption << "\")";
            aborted = true;
        }
        user.boxes_.push_back(User::BoxSeen{owner, shown_text, shown_caption, style, answer});
        return answer;
    }

    std::string on_open_file(HWND) {
        arm_leading_answers();
        if (file_answers.empty()) {
            if (!aborted) ADD_FAILURE() << "scripted user: unexpected open-file dialog";
            aborted = true;
            return "";
        }
        std::string path = file_answers.front();
        file_answers.pop_front();
        return path;
    }

    void finish() {
        if (aborted) return;
        if (next < user.steps_.size()) {
            ADD_FAILURE() << "scripted user: " << user.steps_.size() - next
                          << " step(s) left over when no modal window was up, first "
                          << describe(user.steps_[next]);
        }
        if (!box_answers.empty()) {
            ADD_FAILURE() << "scripted user: " << box_answers.size()
                          << " message box answer(s) armed but no box appeared";
        }
        if (!file_answers.empty()) {
            ADD_FAILURE() << "scripted user: " << file_answers.size()
                          << " file answer(s) armed but no open-file dialog appeared";
        }
    }
};

namespace {

User::Step make(User::Step::Kind kind) {
    User::Step step;
    step.kind = kind;
    return step;
}

}  // namespace

User& User::show_page(int index) {
    Step step = make(Step::ShowPage);
    step.a = index;
    steps_.push_back(step);
    return *this;
}

User& User::click(int id) {
    Step step = make(Step::Click);
    step.id = id;
    steps_.push_back(step);
    return *this;
}

User& User::type(int id, std::string text) {
    Step step = make(Step::Type);
    step.id = id;
    step.text = std::move(text);
    steps_.push_back(step);
    return *this;
}

User& User::select_rows(int id, std::vector<int> rows) {
    Step step = make(Step::SelectRows);
    step.id = id;
    step.rows = std::move(rows);
    steps_.push_back(step);
    return *this;
}

User& User::scroll(int id, int code, int position) {
    Step step = make(Step::Scroll);
    step.id = id;
    step.a = code;
    step.b = position;
    steps_.push_back(step);
    return *this;
}

User& User::apply() {
    steps_.push_back(make(Step::Apply));
    return *this;
}

User& User::ok() {
    steps_.push_back(make(Step::Ok));
    return *this;
}

User& User::cancel() {
    steps_.push_back(make(Step::Cancel));
    return *this;
}

User& User::help() {
    steps_.push_back(make(Step::Help));
    return *this;
}

User& User::close() {
    steps_.push_back(make(Step::Close));
    return *this;
}

User& User::answer_box(int button) {
    Step step = make(Step::Answer);
    step.a = button;
    steps_.push_back(step);
    return *this;
}

User& User::choose_file(std::string path) {
    Step step = make(Step::ChooseFile);
    step.text = std::move(path);
    steps_.push_back(step);
    return *this;
}

User& User::wait(int ms) {
    Step step = make(Step::Wait);
    step.a = ms;
    steps_.push_back(step);
    return *this;
}

User& User::check(Check check) {
    Step step = make(Step::Look);
    step.check = std::move(check);
    steps_.push_back(step);
    return *this;
}

void User::run(const std::function<void()>& open) {
    // One scripted user at a time: the hooks have room for one.
    static bool running = false;
    if (running) {
        ADD_FAILURE() << "scripted user: run() called while another run is going on";
        return;
    }
    boxes_.clear();
    UserRunner runner(*this);
    hooks::Handlers handlers;
    handlers.on_modal = [&runner](HWND modal) { runner.on_modal(modal); };
    handlers.on_box = [&runner](HWND owner, const char* text, const char* caption, UINT style) {
        return runner.on_box(owner, text, caption, style);
    };
    handlers.on_open_file = [&runner](HWND owner) { return runner.on_open_file(owner); };
    // Uninstalled on every way out, so a later test does not call into a
    // runner that is gone.
    struct Installed {
        explicit Installed(const hooks::Handlers& h) {
            hooks::install(h);
            running = true;
        }
        ~Installed() {
            hooks::uninstall();
            running = false;
        }
    } installed(handlers);
    open();
    runner.finish();
}

}  // namespace zr::test
