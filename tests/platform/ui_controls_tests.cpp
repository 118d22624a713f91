// Built-in behaviour of the headless controls, as the Windows controls have
// it: automatic buttons, edit notifications, list and combo boxes, track
// bars, up-down controls with their buddy, list views.
#include "tests/platform/ui_test_support.h"

namespace zr::headless::test {
namespace {

class ControlsTest : public UiTest {
protected:
    void SetUp() override {
        UiTest::SetUp();
        dialog = make_controls_dialog();
        ASSERT_NE(dialog, nullptr);
        events().clear();
    }
    HWND item(int id) const { return GetDlgItem(dialog, id); }
    LRESULT msg(int id, UINT message, WPARAM w = 0, LPARAM l = 0) {
        return SendDlgItemMessageA(dialog, id, message, w, l);
    }
    void click(int id) { msg(id, BM_CLICK); }
    HWND dialog = nullptr;
};

TEST_F(ControlsTest, AutoCheckBoxTogglesThenNotifies) {
    click(10);
    EXPECT_EQ(IsDlgButtonChecked(dialog, 10), BST_CHECKED);
    click(10);
    EXPECT_EQ(IsDlgButtonChecked(dialog, 10), BST_UNCHECKED);
    EXPECT_EQ(joined_events(), "command:10:0 command:10:0");
}

TEST_F(ControlsTest, ThreeStateCyclesThroughIndeterminate) {
    const UINT expected[] = {BST_CHECKED, BST_INDETERMINATE, BST_UNCHECKED, BST_CHECKED};
    for (UINT state : expected) {
        click(11);
        EXPECT_EQ(IsDlgButtonChecked(dialog, 11), state);
    }
}

TEST_F(ControlsTest, SetCheckClampsToTheButtonsStatesAndNeverNotifies) {
    CheckDlgButton(dialog, 10, BST_INDETERMINATE);  // two-state: becomes checked
    EXPECT_EQ(IsDlgButtonChecked(dialog, 10), BST_CHECKED);
    CheckDlgButton(dialog, 11, BST_INDETERMINATE);
    EXPECT_EQ(IsDlgButtonChecked(dialog, 11), BST_INDETERMINATE);
    CheckDlgButton(dialog, IDOK, BST_CHECKED);  // push buttons hold no state
    EXPECT_EQ(IsDlgButtonChecked(dialog, IDOK), 0u);
    EXPECT_EQ(IsDlgButtonChecked(dialog, 999), 0u);
    EXPECT_TRUE(events().empty());
}

TEST_F(ControlsTest, AutoRadioClearsOnlyItsOwnGroup) {
    click(22);
    click(20);
    EXPECT_EQ(IsDlgButtonChecked(dialog, 20), BST_CHECKED);
    EXPECT_EQ(IsDlgButtonChecked(dialog, 22), BST_CHECKED);  // the next group is untouched
    click(21);
    EXPECT_EQ(IsDlgButtonChecked(dialog, 20), BST_UNCHECKED);
    EXPECT_EQ(IsDlgButtonChecked(dialog, 21), BST_CHECKED);
    click(23);
    EXPECT_EQ(IsDlgButtonChecked(dialog, 22), BST_UNCHECKED);
    EXPECT_EQ(IsDlgButtonChecked(dialog, 21), BST_CHECKED);
    click(23);  // a checked radio button still notifies
    EXPECT_EQ(events().back(), "command:23:0");
    EXPECT_EQ(IsDlgButtonChecked(dialog, 23), BST_CHECKED);
}

TEST_F(ControlsTest, DisabledButtonIgnoresClicks) {
    EnableWindow(item(10), FALSE);
    click(10);
    EXPECT_EQ(IsDlgButtonChecked(dialog, 10), BST_UNCHECKED);
    EXPECT_TRUE(events().empty());
    EXPECT_FALSE(IsWindowEnabled(item(10)));
    EXPECT_TRUE(EnableWindow(item(10), TRUE));  // returns "was disabled"
}

TEST_F(ControlsTest, CheckRadioButtonSetsTheRangeWithoutNotifying) {
    CheckRadioButton(dialog, 20, 23, 21);
    EXPECT_EQ(IsDlgButtonChecked(dialog, 21), BST_CHECKED);
    for (int id : {20, 22, 23}) EXPECT_EQ(IsDlgButtonChecked(dialog, id), BST_UNCHECKED);
    EXPECT_TRUE(events().empty());
}

TEST_F(ControlsTest, SingleLineEditNotifiesUpdateThenChangeOnSetText) {
    SetDlgItemTextA(dialog, 30, "hello");
    EXPECT_EQ(joined_events(), "command:30:1024 command:30:768");
    events().clear();
    SetDlgItemTextA(dialog, 31, "multi");  // multiline edits do not notify
    EXPECT_TRUE(events().empty());
    char text[4];
    EXPECT_EQ(GetDlgItemTextA(dialog, 30, text, sizeof text), 3u);  // cut to the buffer
    EXPECT_STREQ(text, "hel");
}

TEST_F(ControlsTest, EditLimitAndReadOnly) {
    msg(30, EM_LIMITTEXT, 3);
    EXPECT_EQ(msg(30, EM_GETLIMITTEXT), 3);
    SetDlgItemTextA(dialog, 30, "longer");  // setting the text ignores the limit
    EXPECT_EQ(GetWindowTextLengthA(item(30)), 6);
    msg(30, EM_SETREADONLY, TRUE);
    EXPECT_TRUE(GetWindowLongA(item(30), GWL_STYLE) & ES_READONLY);
    msg(30, EM_SETREADONLY, FALSE);
    EXPECT_FALSE(GetWindowLongA(item(30), GWL_STYLE) & ES_READONLY);
}

TEST_F(ControlsTest, SortedListBoxIgnoresLetterCase) {
    for (const char* s : {"beta", "Alpha", "alpha", "Gamma", "BETA"})
        msg(40, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(s));
    const char* expected[] = {"Alpha", "alpha", "beta", "BETA", "Gamma"};
    char text[16];
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(msg(40, LB_GETTEXT, i, reinterpret_cast<LPARAM>(text)),
                  static_cast<LRESULT>(std::strlen(expected[i])));
        EXPECT_STREQ(text, expected[i]);
    }
    EXPECT_EQ(msg(40, LB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>("GAMMA")), 4);
    EXPECT_EQ(msg(40, LB_FINDSTRINGEXACT, 1, reinterpret_cast<LPARAM>("alpha")), 0);  // wraps past the end
    EXPECT_EQ(msg(40, LB_GETTEXT, 5, reinterpret_cast<LPARAM>(text)), LB_ERR);
}

TEST_F(ControlsTest, MultipleSelectionListBox) {
    for (const char* s : {"a", "b", "c", "d"}) msg(40, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(s));
    msg(40, LB_SETSEL, TRUE, 3);
    msg(40, LB_SETSEL, TRUE, 1);
    int rows[4] = {};
    EXPECT_EQ(msg(40, LB_GETSELCOUNT), 2);
    EXPECT_EQ(msg(40, LB_GETSELITEMS, 4, reinterpret_cast<LPARAM>(rows)), 2);
    EXPECT_EQ(rows[0], 1);
    EXPECT_EQ(rows[1], 3);
    msg(40, LB_DELETESTRING, 0);
    EXPECT_GT(msg(40, LB_GETSEL, 0), 0);  // "b" moved up with its selection
    msg(40, LB_SETSEL, TRUE, -1);
    EXPECT_EQ(msg(40, LB_GETSELCOUNT), 3);
    msg(40, LB_SETSEL, FALSE, -1);
    EXPECT_EQ(msg(40, LB_GETSELCOUNT), 0);
    EXPECT_EQ(msg(40, LB_SETCURSEL, 1), LB_ERR);  // single-selection message
    EXPECT_TRUE(events().empty());                // programmatic changes never notify
}

TEST_F(ControlsTest, SingleSelectionListBox) {
    for (const char* s : {"zeta", "alpha"}) msg(41, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(s));
    EXPECT_EQ(msg(41, LB_GETTEXTLEN, 0), 4);  // not sorted: insertion order
    EXPECT_EQ(msg(41, LB_SETSEL, TRUE, 0), LB_ERR);
    EXPECT_EQ(msg(41, LB_GETSELCOUNT), LB_ERR);
    EXPECT_EQ(msg(41, LB_SETCURSEL, 1), 1);
    EXPECT_EQ(msg(41, LB_GETCURSEL), 1);
    msg(41, LB_INSERTSTRING, 0, reinterpret_cast<LPARAM>("first"));
    EXPECT_EQ(msg(41, LB_GETCURSEL), 2);
    msg(41, LB_DELETESTRING, 2);
    EXPECT_EQ(msg(41, LB_GETCURSEL), LB_ERR);
    msg(41, LB_SETITEMDATA, 1, 77);
    EXPECT_EQ(msg(41, LB_GETITEMDATA, 1), 77);
}

TEST_F(ControlsTest, ComboBoxSelection) {
    for (const char* s : {"Modem", "lan", "ISDN"}) msg(50, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(s));
    char text[16];
    msg(50, CB_GETLBTEXT, 0, reinterpret_cast<LPARAM>(text));
    EXPECT_STREQ(text, "ISDN");
    EXPECT_EQ(msg(50, CB_SELECTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>("LA")), 1);
    GetDlgItemTextA(dialog, 50, text, sizeof text);
    EXPECT_STREQ(text, "lan");
    EXPECT_EQ(msg(50, CB_SELECTSTRING, 1, reinterpret_cast<LPARAM>("i")),
              0);  // searches on from the start, wrapping
    EXPECT_EQ(msg(50, CB_SELECTSTRING, 0, reinterpret_cast<LPARAM>("x")), CB_ERR);
    EXPECT_EQ(msg(50, CB_GETCURSEL), 0);  // a failed search keeps the selection
    EXPECT_EQ(msg(50, CB_SETCURSEL, 7), CB_ERR);
    EXPECT_EQ(msg(50, CB_GETCURSEL), CB_ERR);  // out of range clears it
    EXPECT_EQ(GetWindowTextLengthA(item(50)), 0);
    EXPECT_TRUE(events().empty());
}

TEST_F(ControlsTest, TrackBarClampsToItsRange) {
    msg(60, TBM_SETRANGE, TRUE, MAKELONG(3, 90));
    msg(60, TBM_SETPOS, TRUE, 100);
    EXPECT_EQ(msg(60, TBM_GETPOS), 90);
    msg(60, TBM_SETPOS, TRUE, 1);
    EXPECT_EQ(msg(60, TBM_GETPOS), 3);
    msg(60, TBM_SETPOS, TRUE, 50);
    msg(60, TBM_SETRANGEMAX, TRUE, 40);
    EXPECT_EQ(msg(60, TBM_GETPOS), 40);
    EXPECT_EQ(msg(60, TBM_GETRANGEMIN), 3);
}

TEST_F(ControlsTest, UpDownWritesItsBuddy) {
    EXPECT_EQ(reinterpret_cast<HWND>(msg(71, UDM_GETBUDDY)), item(70));  // the control before it
    msg(71, UDM_SETRANGE, 0, MAKELONG(10240, 16));
    EXPECT_EQ(msg(71, UDM_GETRANGE), MAKELONG(10240, 16));
    msg(71, UDM_SETPOS, 0, MAKELONG(1500, 0));
    char text[16];
    GetDlgItemTextA(dialog, 70, text, sizeof text);
    EXPECT_STREQ(text, "1,500");
    EXPECT_EQ(events().back(), "command:70:768");  // the buddy edit notifies
    msg(71, UDM_SETPOS, 0, MAKELONG(5, 0));
    EXPECT_EQ(LOWORD(msg(71, UDM_GETPOS)), 16);
    SetDlgItemTextA(dialog, 70, "300");
    EXPECT_EQ(msg(71, UDM_GETPOS), 300);
    SetDlgItemTextA(dialog, 70, "abc");
    EXPECT_NE(HIWORD(msg(71, UDM_GETPOS)), 0);  // not a number
}

INT_PTR CALLBACK list_view_parent(HWND, UINT message, WPARAM, LPARAM lparam) {
    if (message == WM_NOTIFY) {
        const NMLISTVIEW* nm = reinterpret_cast<const NMLISTVIEW*>(lparam);
        if (nm->hdr.code == LVN_ITEMCHANGED)
            record("changed:" + std::to_string(nm->iItem) + ":" + std::to_string(nm->uNewState));
    }
    return FALSE;
}

TEST_F(ControlsTest, ListViewItemsAndSelection) {
    HWND page = make_controls_dialog(list_view_parent);
    HWND view = GetDlgItem(page, 80);
    LVITEMA in{};
    in.mask = LVIF_TEXT | LVIF_PARAM;
    for (int i = 0; i < 3; ++i) {
        std::string name = "site" + std::to_string(i);
        in.iItem = i, in.pszText = name.data(), in.lParam = 100 + i;
        EXPECT_EQ(SendMessageA(view, LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&in)), i);
    }
    LVITEMA state{};
    state.state = state.stateMask = LVIS_SELECTED;
    SendMessageA(view, LVM_SETITEMSTATE, 1, reinterpret_cast<LPARAM>(&state));
    SendMessageA(view, LVM_SETITEMSTATE, 2, reinterpret_cast<LPARAM>(&state));  // single selection moves
    EXPECT_EQ(joined_events(), "changed:1:2 changed:1:0 changed:2:2");
    EXPECT_EQ(SendMessageA(view, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED), 2);
    EXPECT_EQ(SendMessageA(view, LVM_GETSELECTEDCOUNT, 0, 0), 1);
    char text[5];
    LVITEMA get{};
    get.mask = LVIF_TEXT | LVIF_PARAM, get.iItem = 2, get.pszText = text, get.cchTextMax = sizeof text;
    ASSERT_TRUE(SendMessageA(view, LVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&get)));
    EXPECT_STREQ(text, "site");  // cut to the buffer
    EXPECT_EQ(get.lParam, 102);
    SendMessageA(view, LVM_DELETEITEM, 0, 0);
    EXPECT_EQ(SendMessageA(view, LVM_GETITEMCOUNT, 0, 0), 2);
    EXPECT_EQ(SendMessageA(view, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED), 1);
}

}  // namespace
}  // namespace zr::headless::test
