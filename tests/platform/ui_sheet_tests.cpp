// Property sheets of the headless layer, against comctl32's behaviour: the
// template handed to PSCB_PRECREATE, the order of PSCB_INITIALIZED and the
// start page, which pages hear Apply, Cancel and Help, and the Apply button.
#include "tests/platform/ui_test_support.h"

namespace zr::headless::test {
namespace {

const int kApply = 0x3021;
LRESULT g_cancel_answer = 0;  // the current page's answer to PSN_QUERYCANCEL

std::string code_name(UINT code) {
    switch (code) {
        case PSN_SETACTIVE:
            return "setactive";
        case PSN_KILLACTIVE:
            return "killactive";
        case PSN_APPLY:
            return "apply";
        case PSN_RESET:
            return "reset";
        case PSN_HELP:
            return "help";
        case PSN_QUERYCANCEL:
            return "querycancel";
        default:
            return std::to_string(code);
    }
}

INT_PTR CALLBACK page_proc(HWND h, UINT message, WPARAM, LPARAM lparam) {
    if (message == WM_INITDIALOG) {
        const auto* psp = reinterpret_cast<const PROPSHEETPAGEA*>(lparam);
        SetWindowLongPtrA(h, DWLP_USER, psp->lParam);
        record(std::to_string(psp->lParam) + ":init");
        return TRUE;
    }
    if (message == WM_NOTIFY) {
        const auto* psn = reinterpret_cast<const PSHNOTIFY*>(lparam);
        std::string e = std::to_string(GetWindowLongPtrA(h, DWLP_USER)) + ":" + code_name(psn->hdr.code);
        if (psn->hdr.code == PSN_APPLY || psn->hdr.code == PSN_RESET) e += ":" + std::to_string(psn->lParam);
        record(e);
        if (psn->hdr.code == PSN_QUERYCANCEL) SetWindowLongPtrA(h, DWLP_MSGRESULT, g_cancel_answer);
        return TRUE;
    }
    return FALSE;
}

bool g_clear_context_help = false;

int CALLBACK sheet_callback(HWND h, UINT message, LPARAM parameter) {
    if (message == PSCB_PRECREATE) {
        record("precreate");
        WORD* words = reinterpret_cast<WORD*>(parameter);
        DWORD* style = reinterpret_cast<DWORD*>(words[1] == 0xFFFF ? words + 6 : words);
        if (g_clear_context_help) *style &= ~DS_CONTEXTHELP;
        EXPECT_EQ(h, nullptr);
    } else if (message == PSCB_INITIALIZED) {
        record("initialized");
        EXPECT_TRUE(IsWindow(h));
    }
    return 0;
}

class SheetTest : public UiTest {
protected:
    void SetUp() override {
        UiTest::SetUp();
        g_cancel_answer = 0;
        g_clear_context_help = false;
        const int templates[] = {kPage0, kPage1, kPage2};
        for (int i = 0; i < 3; ++i) {
            PROPSHEETPAGEA& p = pages[i];
            p = PROPSHEETPAGEA{};
            p.dwSize = sizeof p;
            p.dwFlags = PSP_USETITLE | (i == 0 ? PSP_HASHELP : 0);
            p.hInstance = module;
            p.pszTemplate = MAKEINTRESOURCEA(templates[i]);
            p.pszTitle = "page";
            p.pfnDlgProc = page_proc;
            p.lParam = i;
        }
        header = PROPSHEETHEADERA{};
        header.dwSize = sizeof header;
        header.dwFlags = PSH_PROPSHEETPAGE | PSH_USECALLBACK;
        header.pszCaption = "Settings";
        header.nPages = 3;
        header.ppsp = pages;
        header.pfnCallback = sheet_callback;
    }
    INT_PTR run(std::function<void(HWND)> user) {
        set_modal_hook(std::move(user));
        return PropertySheetA(&header);
    }
    static void press(HWND sheet, int id) { SendMessageA(GetDlgItem(sheet, id), BM_CLICK, 0, 0); }
    PROPSHEETPAGEA pages[3];
    PROPSHEETHEADERA header;
};

TEST_F(SheetTest, PrecreateTemplateStyleBecomesTheSheetsStyle) {
    for (bool extended : {false, true}) {
        for (bool clear : {false, true}) {
            set_sheet_template_extended(extended);
            g_clear_context_help = clear;
            DWORD style = 0;
            run([&](HWND sheet) {
                style = static_cast<DWORD>(GetWindowLongA(sheet, GWL_STYLE));
                const bool question_mark = GetWindowLongA(sheet, GWL_EXSTYLE) & WS_EX_CONTEXTHELP;
                EXPECT_EQ(question_mark, !clear);
                press(sheet, IDCANCEL);
            });
            EXPECT_EQ((style & DS_CONTEXTHELP) != 0, !clear) << "extended " << extended;
            EXPECT_TRUE(style & WS_SYSMENU);
        }
    }
}

TEST_F(SheetTest, InitializedComesBeforeTheStartPage) {
    HWND sheet_seen = nullptr;
    EXPECT_EQ(run([&](HWND sheet) {
                  sheet_seen = sheet;
                  char caption[16];
                  GetWindowTextA(sheet, caption, sizeof caption);
                  EXPECT_STREQ(caption, "Settings");
                  EXPECT_EQ(FindWindowA("#32770", "Settings"), sheet);
                  press(sheet, IDOK);
              }),
              IDOK);
    EXPECT_EQ(joined_events(), "precreate initialized 0:init 0:setactive 0:killactive 0:apply:1");
    EXPECT_FALSE(IsWindow(sheet_seen));
}

TEST_F(SheetTest, StartPageOutOfRangeFallsBackToTheFirst) {
    for (UINT start : {2u, 3u, 100u}) {
        header.nStartPage = start;
        int current = -1;
        run([&](HWND sheet) {
            HWND page = reinterpret_cast<HWND>(SendMessageA(sheet, PSM_GETCURRENTPAGEHWND, 0, 0));
            current =
                static_cast<int>(SendMessageA(sheet, PSM_HWNDTOINDEX, reinterpret_cast<WPARAM>(page), 0));
            press(sheet, IDCANCEL);
        });
        EXPECT_EQ(current, start < 3 ? static_cast<int>(start) : 0);
    }
}

TEST_F(SheetTest, ApplyReachesOnlyThePagesShownSoFar) {
    run([&](HWND sheet) {
        EXPECT_EQ(SendMessageA(sheet, PSM_INDEXTOHWND, 2, 0), 0);  // not made yet
        EXPECT_TRUE(SendMessageA(sheet, PSM_SETCURSEL, 2, 0));
        EXPECT_NE(SendMessageA(sheet, PSM_INDEXTOHWND, 2, 0), 0);
        events().clear();
        press(sheet, IDOK);
    });
    EXPECT_EQ(joined_events(), "2:killactive 0:apply:1 2:apply:1");
}

TEST_F(SheetTest, ChangedEnablesApplyUntilApplied) {
    INT_PTR result = run([&](HWND sheet) {
        HWND apply = GetDlgItem(sheet, kApply);
        EXPECT_FALSE(IsWindowEnabled(apply));
        press(sheet, kApply);  // disabled: nothing happens
        HWND page = reinterpret_cast<HWND>(SendMessageA(sheet, PSM_INDEXTOHWND, 0, 0));
        SendMessageA(sheet, PSM_CHANGED, reinterpret_cast<WPARAM>(page), 0);
        EXPECT_TRUE(IsWindowEnabled(apply));
        events().clear();
        press(sheet, kApply);
        EXPECT_EQ(joined_events(), "0:killactive 0:apply:0 0:setactive");
        EXPECT_FALSE(IsWindowEnabled(apply));
        EXPECT_TRUE(IsWindow(sheet));
        SendMessageA(sheet, PSM_CHANGED, reinterpret_cast<WPARAM>(page), 0);
        SendMessageA(sheet, PSM_UNCHANGED, reinterpret_cast<WPARAM>(page), 0);
        EXPECT_FALSE(IsWindowEnabled(apply));
        press(sheet, IDCANCEL);
    });
    EXPECT_EQ(result, 0);
}

TEST_F(SheetTest, CancelAsksTheCurrentPageAndResetsEveryShownPage) {
    run([&](HWND sheet) {
        SendMessageA(sheet, PSM_SETCURSEL, 1, 0);
        events().clear();
        g_cancel_answer = TRUE;  // the page refuses
        press(sheet, IDCANCEL);
        SendMessageA(sheet, WM_SYSCOMMAND, SC_CLOSE, 0);
        EXPECT_TRUE(IsWindow(sheet));
        // The refused close is asked twice: once for WM_CLOSE, once for the
        // Cancel command that the dialog manager posts after it.
        EXPECT_EQ(joined_events(), "1:querycancel 1:querycancel 1:querycancel");
        events().clear();
        g_cancel_answer = FALSE;
        SendMessageA(sheet, WM_SYSCOMMAND, SC_CLOSE, 0);
        EXPECT_FALSE(IsWindow(sheet));
    });
    // The close box resets with lParam 1; the Cancel posted by the dialog
    // manager never reaches the ended sheet.
    EXPECT_EQ(joined_events(), "1:querycancel 0:reset:1 1:reset:1");
}

TEST_F(SheetTest, HelpGoesToTheCurrentPage) {
    run([&](HWND sheet) {
        HWND help = GetDlgItem(sheet, IDHELP);
        EXPECT_TRUE(IsWindowVisible(help));  // a page asked for help
        EXPECT_TRUE(IsWindowEnabled(help));
        SendMessageA(sheet, PSM_SETCURSEL, 1, 0);
        EXPECT_FALSE(IsWindowEnabled(help));  // page 1 has no help
        SendMessageA(sheet, PSM_SETCURSEL, 0, 0);
        events().clear();
        press(sheet, IDHELP);
        EXPECT_EQ(joined_events(), "0:help");
        press(sheet, IDCANCEL);
    });
}

TEST_F(SheetTest, AbandonedSheetIsCancelled) {
    HWND owner =
        CreateWindowExA(0, "#32770", "host", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    header.hwndParent = owner;
    bool owner_enabled = true;
    EXPECT_EQ(run([&](HWND) { owner_enabled = IsWindowEnabled(owner); }), 0);
    EXPECT_FALSE(owner_enabled);
    EXPECT_TRUE(IsWindowEnabled(owner));
    EXPECT_EQ(abandoned_modal_runs(), 1);
    EXPECT_EQ(joined_events(), "precreate initialized 0:init 0:setactive 0:querycancel 0:reset:0");
    EXPECT_EQ(top_level_z_order(), std::vector<HWND>{owner});
}

TEST_F(SheetTest, PagesWithoutTemplatesAreDropped) {
    pages[1].pszTemplate = MAKEINTRESOURCEA(1);
    run([&](HWND sheet) {
        EXPECT_EQ(SendMessageA(sheet, PSM_SETCURSEL, 2, 0), FALSE);  // only two pages left
        EXPECT_TRUE(SendMessageA(sheet, PSM_SETCURSEL, 1, 0));
        press(sheet, IDCANCEL);
    });
    EXPECT_NE(joined_events().find("2:init"), std::string::npos);
}

}  // namespace
}  // namespace zr::headless::test
