// The scripted user against a real property sheet and dialog built from the
// resource module's templates (the site elimination page 2005, the entry
// dialog 2007) with small dialog procedures that log what reaches them.
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "tests/driver/user.h"
#include "tests/driver/world.h"

namespace {

using zr::test::Modal;
using zr::test::User;

// Controls of template 2005 (page) and 2007 (entry dialog).
constexpr int kList = 300;
constexpr int kCheck = 301;
constexpr int kAskButton = 305;       // the test page asks a Yes/No question
constexpr int kFileButton = 306;      // the test page opens an open-file dialog
constexpr int kAddButton = 307;       // the test page opens the entry dialog
constexpr int kDisabledButton = 308;  // disabled by the test page
constexpr int kHiddenButton = 309;    // hidden by the test page
constexpr int kName = 300;            // entry dialog / second page: edit
constexpr int kReadOnly = 302;        // second page: edit made read-only
constexpr int kTrackBar = 303;        // third page (template 2000)
constexpr int kApplyButton = 0x3021;

std::vector<std::string> g_log;
HMODULE g_module = nullptr;
bool g_with_timer = false;  // the list page runs a 100 ms timer

void log(std::string line) { g_log.push_back(std::move(line)); }

std::string item_text(HWND window, int id) {
    char buffer[256] = {};
    GetDlgItemTextA(window, id, buffer, sizeof buffer);
    return buffer;
}

INT_PTR CALLBACK entry_proc(HWND dialog, UINT message, WPARAM wparam, LPARAM) {
    switch (message) {
        case WM_INITDIALOG:
            return TRUE;
        case WM_COMMAND:
            if (LOWORD(wparam) == IDOK) {
                log("entry ok " + item_text(dialog, kName));
                EndDialog(dialog, IDOK);
            } else if (LOWORD(wparam) == IDCANCEL) {
                EndDialog(dialog, IDCANCEL);
            }
            return 0;
        case WM_CLOSE:
            EndDialog(dialog, 0);
            return 0;
    }
    return 0;
}

void page_command(HWND page, int id, int code) {
    if (id == kList && code == LBN_SELCHANGE) {
        log("rows " + std::to_string(SendDlgItemMessageA(page, kList, LB_GETSELCOUNT, 0, 0)));
    } else if (id == kCheck) {
        log("check " + std::to_string(IsDlgButtonChecked(page, kCheck)));
        SendMessageA(GetParent(page), PSM_CHANGED, reinterpret_cast<WPARAM>(page), 0);
    } else if (id == kAskButton) {
        log("answer " +
            std::to_string(MessageBoxA(page, "Remove the site?", "Sites", MB_YESNO | MB_TOPMOST)));
    } else if (id == kFileButton) {
        char path[MAX_PATH] = "";
        OPENFILENAMEA ofn{};
        ofn.lStructSize = sizeof ofn;
        ofn.hwndOwner = page;
        ofn.lpstrFile = path;
        ofn.nMaxFile = sizeof path;
        bool chosen = GetOpenFileNameA(&ofn) != 0;
        log(chosen ? "file " + std::string(path) + " " + std::to_string(ofn.nFileOffset) : "file none");
    } else if (id == kAddButton) {
        INT_PTR result = DialogBoxParamA(g_module, MAKEINTRESOURCEA(2007), page, entry_proc, 0);
        log("entry result " + std::to_string(result));
    } else if (id == kDisabledButton || id == kHiddenButton) {
        log("pressed " + std::to_string(id));
    }
}

INT_PTR CALLBACK list_page_proc(HWND page, UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
        case WM_INITDIALOG:
            for (const char* row : {"alpha.example", "beta.example", "gamma.example"}) {
                SendDlgItemMessageA(page, kList, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(row));
            }
            for (int id : {kList, kCheck, kAskButton, kFileButton, kAddButton}) {
                EnableWindow(GetDlgItem(page, id), TRUE);
            }
            EnableWindow(GetDlgItem(page, kDisabledButton), FALSE);
            ShowWindow(GetDlgItem(page, kHiddenButton), SW_HIDE);
            if (g_with_timer) SetTimer(page, 1, 100, nullptr);
            return TRUE;
        case WM_TIMER:
            log("timer");
            return 0;
        case WM_COMMAND:
            page_command(page, LOWORD(wparam), HIWORD(wparam));
            return 0;
        case WM_NOTIFY:
            if (reinterpret_cast<NMHDR*>(lparam)->code == static_cast<UINT>(PSN_APPLY)) log("apply");
            return 0;
    }
    return 0;
}

INT_PTR CALLBACK edit_page_proc(HWND page, UINT message, WPARAM wparam, LPARAM) {
    if (message == WM_INITDIALOG) {
        ShowWindow(GetDlgItem(page, kReadOnly), SW_SHOW);
        EnableWindow(GetDlgItem(page, kReadOnly), TRUE);
        SendDlgItemMessageA(page, kReadOnly, EM_SETREADONLY, TRUE, 0);
        SendDlgItemMessageA(page, kName, EM_LIMITTEXT, 12, 0);
        return TRUE;
    }
    if (message == WM_COMMAND && LOWORD(wparam) == kName && HIWORD(wparam) == EN_CHANGE) {
        log("typed " + item_text(page, kName));
    }
    return 0;
}

INT_PTR CALLBACK scroll_page_proc(HWND, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_HSCROLL) {
        HWND bar = reinterpret_cast<HWND>(lparam);
        log("scroll " + std::to_string(GetDlgCtrlID(bar)) + " " + std::to_string(LOWORD(wparam)) + " " +
            std::to_string(HIWORD(wparam)) + " " + std::to_string(SendMessageA(bar, TBM_GETPOS, 0, 0)));
    }
    return message == WM_INITDIALOG;
}

// Runs the test sheet (pages 2005, 2007 and 2000) with `user`; the sheet's
// result.
// `around` asks a question before and after the sheet, as code that shows a
// message box outside any modal window does.
INT_PTR run_sheet(User& user, bool around = false) {
    PROPSHEETPAGEA pages[3] = {};
    const int templates[3] = {2005, 2007, 2000};
    DLGPROC procs[3] = {list_page_proc, edit_page_proc, scroll_page_proc};
    for (int i = 0; i < 3; ++i) {
        pages[i].dwSize = sizeof pages[i];
        pages[i].hInstance = g_module;
        pages[i].pszTemplate = MAKEINTRESOURCEA(templates[i]);
        pages[i].pfnDlgProc = procs[i];
    }
    PROPSHEETHEADERA header{};
    header.dwSize = sizeof header;
    header.dwFlags = PSH_PROPSHEETPAGE | PSH_HASHELP;
    header.pszCaption = "Driver test";
    header.nPages = 3;
    header.ppsp = pages;
    INT_PTR result = -2;
    auto ask = [] { log("asked " + std::to_string(MessageBoxA(nullptr, "Go on?", "Driver", MB_YESNO))); };
    user.run([&] {
        if (around) ask();
        result = PropertySheetA(&header);
        if (around) ask();
    });
    return result;
}

class Driver : public ::testing::Test {
protected:
    void SetUp() override {
        zr::test::world_reset();
        g_log.clear();
        g_with_timer = false;
        g_module = LoadLibraryA("zrres.dll");
        ASSERT_NE(g_module, nullptr);
    }
};

TEST_F(Driver, StepsRunInTheWindowThatIsUpNestedDialogFirst) {
    HWND first_page = nullptr;
    User user;
    user.click(kCheck)
        .check([&](const Modal& m) {
            first_page = m.page;
            EXPECT_NE(m.page, m.window) << "a sheet's steps run in its current page";
            EXPECT_EQ(m.checked(kCheck), BST_CHECKED);
            EXPECT_TRUE(IsWindowEnabled(GetDlgItem(m.window, kApplyButton)));
        })
        .click(kAddButton)
        .check([&](const Modal& m) {
            EXPECT_EQ(m.page, m.window) << "a dialog is its own page";
            EXPECT_NE(m.window, GetParent(first_page)) << "steps run in the entry dialog, not the sheet";
            EXPECT_EQ(m.text(kName), "");
        })
        .type(kName, "example.com")
        .ok()  // ends the entry dialog; the following steps run in the sheet again
        .check([&](const Modal& m) { EXPECT_EQ(m.page, first_page); })
        .show_page(1)
        .type(kName, "second page")
        .apply()
        .ok();
    EXPECT_EQ(run_sheet(user), 1);
    EXPECT_EQ(g_log, (std::vector<std::string>{"check 1", "entry ok example.com", "entry result 1",
                                               "typed second page", "apply", "apply"}))
        << "Apply and OK each notify the page";
    EXPECT_TRUE(user.boxes().empty());
}

TEST_F(Driver, CancelAndCloseEndTheNestedDialogWithTheirResults) {
    User user;
    user.click(kAddButton).cancel().click(kAddButton).close().close();
    EXPECT_EQ(run_sheet(user), 0) << "closing the sheet applies nothing";
    EXPECT_EQ(g_log, (std::vector<std::string>{"entry result 2", "entry result 0"}));
}

TEST_F(Driver, TypingStopsAtTheFieldsLimit) {
    User user;
    user.show_page(1).type(kName, "0123456789abcdef").cancel();
    run_sheet(user);
    EXPECT_EQ(g_log, (std::vector<std::string>{"typed 0123456789ab"}));
}

TEST_F(Driver, SelectRowsNotifiesThePageAsAClickWould) {
    User user;
    user.select_rows(kList, {0, 2})
        .check([](const Modal& m) {
            EXPECT_EQ(SendMessageA(m.item(kList), LB_GETSEL, 0, 0), TRUE);
            EXPECT_EQ(SendMessageA(m.item(kList), LB_GETSEL, 1, 0), FALSE);
        })
        .select_rows(kList, {1})
        .select_rows(kList, {})
        .cancel();
    run_sheet(user);
    EXPECT_EQ(g_log, (std::vector<std::string>{"rows 2", "rows 1", "rows 0"}));
}

TEST_F(Driver, ScrollMovesTheTrackBarAndNotifiesThePage) {
    User user;
    user.show_page(2).scroll(kTrackBar, TB_THUMBTRACK, 4).scroll(kTrackBar, TB_ENDTRACK, 4).cancel();
    run_sheet(user);
    EXPECT_EQ(g_log, (std::vector<std::string>{"scroll 303 5 4 4", "scroll 303 8 4 4"}));
}

TEST_F(Driver, AnswersAreConsumedInOrderAndRecorded) {
    User user;
    user.answer_box(IDYES).answer_box(IDNO).click(kAskButton).click(kAskButton).cancel();
    run_sheet(user);
    EXPECT_EQ(g_log, (std::vector<std::string>{"answer 6", "answer 7"}));
    ASSERT_EQ(user.boxes().size(), 2u);
    EXPECT_EQ(user.boxes()[0].text, "Remove the site?");
    EXPECT_EQ(user.boxes()[0].caption, "Sites");
    EXPECT_EQ(user.boxes()[0].style & 0x0Fu, static_cast<UINT>(MB_YESNO));
    EXPECT_EQ(user.boxes()[0].answer, IDYES);
    EXPECT_EQ(user.boxes()[1].answer, IDNO);
}

TEST_F(Driver, AnswersAtTheHeadServeBoxesShownOutsideAnyModalWindow) {
    User user;
    user.answer_box(IDYES).click(kCheck).cancel().answer_box(IDNO);
    run_sheet(user, true);
    EXPECT_EQ(g_log, (std::vector<std::string>{"asked 6", "check 1", "asked 7"}));
}

TEST_F(Driver, ChosenFilesFillTheOpenFileRecord) {
    User user;
    user.choose_file("C:\\data\\sites.txt").click(kFileButton).choose_file("").click(kFileButton).cancel();
    run_sheet(user);
    EXPECT_EQ(g_log, (std::vector<std::string>{"file C:\\data\\sites.txt 8", "file none"}));
}

TEST_F(Driver, WaitLetsTheTimersRun) {
    g_with_timer = true;
    User user;
    user.wait(350).cancel();
    run_sheet(user);
    EXPECT_GE(g_log.size(), 2u);
    for (const std::string& line : g_log) EXPECT_EQ(line, "timer");
}

// Scripts a person could not perform, or that do not match what appears:
// each fails the test with a message naming the problem, and the sheet is
// still closed so run() returns.
struct Misstep {
    const char* name;
    std::function<void(User&)> script;
    const char* message;
    std::vector<std::string> log;  // what reached the page
};

class DriverMisstep : public Driver, public ::testing::WithParamInterface<Misstep> {};

TEST_P(DriverMisstep, FailsTheTest) {
    const Misstep& misstep = GetParam();
    User user;
    misstep.script(user);
    EXPECT_NONFATAL_FAILURE(run_sheet(user), misstep.message);
    EXPECT_EQ(g_log, misstep.log);
}

INSTANTIATE_TEST_SUITE_P(
    Scripts, DriverMisstep,
    ::testing::Values(
        Misstep{"DisabledButton",
                [](User& u) { u.click(kDisabledButton).cancel(); },
                "control 308 is disabled",
                {}},
        Misstep{
            "HiddenButton", [](User& u) { u.click(kHiddenButton).cancel(); }, "control 309 is hidden", {}},
        Misstep{"MissingControl", [](User& u) { u.click(999).cancel(); }, "there is no control 999", {}},
        Misstep{"ApplyWithoutAChange", [](User& u) { u.apply().ok(); }, "control 12321 is disabled", {}},
        Misstep{"ReadOnlyEdit",
                [](User& u) { u.show_page(1).type(kReadOnly, "x").cancel(); },
                "edit 302 is read-only",
                {}},
        Misstep{"RowOutOfRange",
                [](User& u) { u.select_rows(kList, {3}).cancel(); },
                "row 3 is not in the list",
                {}},
        Misstep{"LeftOverSteps", [](User& u) { u.cancel().click(kCheck); }, "step(s) left over", {}},
        Misstep{"ScriptEndsWithTheSheetOpen", [](User& u) { u.click(kCheck); }, "still open", {"check 1"}},
        Misstep{"UnexpectedBox",
                [](User& u) { u.click(kAskButton).cancel(); },
                "unexpected message box",
                {"answer 7"}},
        Misstep{"AnswerNotOffered",
                [](User& u) { u.answer_box(IDOK).click(kAskButton).cancel(); },
                "has no button 1",
                {"answer 7"}},
        Misstep{"BoxThatNeverCame", [](User& u) { u.answer_box(IDYES).cancel(); }, "no box appeared", {}},
        Misstep{"AnswerArmedAfterTheBox",
                [](User& u) { u.click(kAskButton).answer_box(IDYES).cancel(); },
                "unexpected message box",
                {"answer 7"}},
        Misstep{"RunInsideARun",
                [](User& u) {
                    u.check([](const Modal&) {
                         User inner;
                         inner.run([] {});
                     }).cancel();
                },
                "while another run",
                {}},
        Misstep{"UnexpectedOpenFile",
                [](User& u) { u.click(kFileButton).cancel(); },
                "unexpected open-file",
                {"file none"}},
        Misstep{"ApplyInADialog",
                [](User& u) { u.click(kAddButton).apply(); },
                "a dialog has no Apply",
                {"entry result 2"}}),
    [](const ::testing::TestParamInfo<Misstep>& info) { return std::string(info.param.name); });

}  // namespace
