// Modal dialog boxes of the headless layer: building from the template, the
// modal run with the simulated user's hook, ending, the default handling of
// the close box, and abandoned runs.
#include "tests/platform/ui_test_support.h"

namespace zr::headless::test {
namespace {

using DialogTest = UiTest;

INT_PTR CALLBACK entry_proc(HWND h, UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
        case WM_INITDIALOG:
            record("init:" + std::to_string(GetDlgCtrlID(reinterpret_cast<HWND>(wparam))) + ":" +
                   std::to_string(lparam));
            return TRUE;
        case WM_COMMAND:
            record("command:" + std::to_string(LOWORD(wparam)));
            if (LOWORD(wparam) == IDOK) EndDialog(h, 1);
            return TRUE;  // Cancel is left to nobody: the dialog stays
        case WM_CLOSE:
            return FALSE;
        default:
            return FALSE;
    }
}

INT_PTR run_entry(HWND owner = nullptr, LPARAM param = 42) {
    return DialogBoxParamA(ui::resource_module_handle(), MAKEINTRESOURCEA(kEntryDialog), owner, entry_proc,
                           param);
}

TEST_F(DialogTest, InitialisationAndEndingThroughTheHook) {
    HWND owner =
        CreateWindowExA(0, "#32770", "owner", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    HWND seen = nullptr;
    set_modal_hook([&](HWND dialog) {
        seen = dialog;
        EXPECT_TRUE(IsWindowVisible(dialog));
        EXPECT_FALSE(IsWindowEnabled(owner));  // the owner waits
        EXPECT_EQ(GetWindow(dialog, GW_OWNER), owner);
        char title[16];
        GetWindowTextA(dialog, title, sizeof title);
        EXPECT_STREQ(title, "Entry");
        SendMessageA(GetDlgItem(dialog, IDOK), BM_CLICK, 0, 0);
        EXPECT_FALSE(IsWindow(dialog));  // closed as soon as control is back at the loop
    });
    EXPECT_EQ(run_entry(owner), 1);
    // The first control that takes the focus: 300 is disabled, so 301.
    EXPECT_EQ(joined_events(), "init:301:42 command:1");
    EXPECT_FALSE(IsWindow(seen));
    EXPECT_TRUE(IsWindowEnabled(owner));
    EXPECT_EQ(abandoned_modal_runs(), 0);
}

TEST_F(DialogTest, CloseBoxPostsCancelForTheDialogProcedure) {
    set_modal_hook([](HWND dialog) {
        SendMessageA(dialog, WM_SYSCOMMAND, SC_CLOSE, 0);
        EXPECT_TRUE(IsWindow(dialog));  // IDCANCEL is handled but does not end the dialog
        EndDialog(dialog, 7);
        EXPECT_FALSE(IsWindow(dialog));
    });
    EXPECT_EQ(run_entry(), 7);
    EXPECT_EQ(joined_events(), "init:301:42 command:2");
}

TEST_F(DialogTest, AbandonedRunIsEndedAndCounted) {
    EXPECT_EQ(run_entry(), 0);  // no hook: Cancel does not end it, so EndDialog(0)
    EXPECT_EQ(abandoned_modal_runs(), 1);
    EXPECT_EQ(joined_events(), "init:301:42 command:2");
    EXPECT_TRUE(top_level_z_order().empty());
}

TEST_F(DialogTest, NestedDialogsRunInsideTheOuterHook) {
    int calls = 0;
    set_modal_hook([&](HWND dialog) {
        if (++calls == 1) {
            record("outer");
            EXPECT_EQ(run_entry(dialog, 1), 1);
            EXPECT_TRUE(IsWindowEnabled(dialog));
            EndDialog(dialog, 3);
        } else {
            record("inner");
            SendMessageA(GetDlgItem(dialog, IDOK), BM_CLICK, 0, 0);
        }
    });
    EXPECT_EQ(run_entry(), 3);
    EXPECT_EQ(joined_events(), "init:301:42 outer init:301:1 inner command:1");
}

TEST_F(DialogTest, MissingTemplateOrModuleFails) {
    EXPECT_EQ(DialogBoxParamA(ui::resource_module_handle(), MAKEINTRESOURCEA(1), nullptr, entry_proc, 0), -1);
    EXPECT_EQ(DialogBoxParamA(nullptr, MAKEINTRESOURCEA(kEntryDialog), nullptr, entry_proc, 0), -1);
    FreeLibrary(module);
    EXPECT_EQ(run_entry(), -1);
}

INT_PTR CALLBACK result_proc(HWND h, UINT message, WPARAM, LPARAM) {
    if (message == WM_USER) {
        SetWindowLongPtrA(h, DWLP_MSGRESULT, 1234);
        return TRUE;
    }
    return message == WM_INITDIALOG ? 99 : FALSE;
}

TEST_F(DialogTest, DialogResultsComeFromMsgResult) {
    HWND dialog = make_controls_dialog(result_proc);
    EXPECT_EQ(SendMessageA(dialog, WM_USER, 0, 0), 1234);
    EXPECT_EQ(SendMessageA(dialog, WM_INITDIALOG, 0, 0), 99);  // returned as it stands
    EXPECT_EQ(SendMessageA(dialog, WM_USER + 1, 0, 0), 0);
}

}  // namespace
}  // namespace zr::headless::test
