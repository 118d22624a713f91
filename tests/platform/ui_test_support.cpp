#include "tests/platform/ui_test_support.h"

namespace zr::headless::test {

namespace {

using zr::res::ControlTemplate;
using zr::res::DialogTemplate;

const DWORD kChild = WS_CHILD | WS_VISIBLE;

const ControlTemplate kControls[] = {
    {10, "Button", "check", kChild | BS_AUTOCHECKBOX | WS_TABSTOP, 0, 0, 0, 50, 10},
    {11, "Button", "three", kChild | BS_AUTO3STATE | WS_TABSTOP, 0, 0, 10, 50, 10},
    {20, "Button", "a", kChild | BS_AUTORADIOBUTTON | WS_GROUP, 0, 0, 20, 50, 10},
    {21, "Button", "b", kChild | BS_AUTORADIOBUTTON, 0, 0, 30, 50, 10},
    {22, "Button", "c", kChild | BS_AUTORADIOBUTTON | WS_GROUP, 0, 0, 40, 50, 10},
    {23, "Button", "d", kChild | BS_AUTORADIOBUTTON, 0, 0, 50, 50, 10},
    {24, "Button", "plain", kChild | BS_CHECKBOX | WS_GROUP, 0, 0, 60, 50, 10},
    {30, "Edit", "start", kChild | ES_AUTOHSCROLL, 0, 60, 0, 50, 12},
    {31, "Edit", "", kChild | ES_MULTILINE, 0, 60, 15, 50, 30},
    {40, "ListBox", "", kChild | LBS_SORT | LBS_MULTIPLESEL, 0, 120, 0, 50, 40},
    {41, "ListBox", "", kChild, 0, 120, 45, 50, 40},
    {50, "ComboBox", "", kChild | CBS_DROPDOWNLIST | CBS_SORT, 0, 180, 0, 50, 60},
    {60, "msctls_trackbar32", "", kChild, 0, 180, 20, 50, 15},
    {70, "Edit", "", kChild, 0, 180, 40, 30, 12},
    {71, "msctls_updown32", "", kChild | UDS_AUTOBUDDY | UDS_SETBUDDYINT, 0, 210, 40, 10, 12},
    {80, "SysListView32", "", kChild | LVS_REPORT | LVS_SINGLESEL, 0, 0, 80, 100, 40},
    {IDOK, "Button", "OK", kChild | BS_DEFPUSHBUTTON | WS_TABSTOP | WS_GROUP, 0, 120, 130, 40, 14},
    {IDCANCEL, "Button", "Cancel", kChild | BS_PUSHBUTTON | WS_TABSTOP, 0, 170, 130, 40, 14},
};

const ControlTemplate kEntry[] = {
    {300, "Edit", "", kChild | WS_TABSTOP | WS_DISABLED, 0, 5, 5, 100, 12},
    {301, "Edit", "", kChild | WS_TABSTOP, 0, 5, 20, 100, 12},
    {IDOK, "Button", "OK", kChild | BS_DEFPUSHBUTTON | WS_TABSTOP, 0, 5, 40, 40, 14},
    {IDCANCEL, "Button", "Cancel", kChild | WS_TABSTOP, 0, 50, 40, 40, 14},
};

const ControlTemplate kPageControls[] = {
    {300, "Button", "option", kChild | BS_AUTOCHECKBOX | WS_TABSTOP, 0, 5, 5, 100, 10},
};

const DWORD kPopup = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME;
const DWORD kPage = WS_CHILD | WS_CAPTION | DS_3DLOOK;

const DialogTemplate kTemplates[] = {
    {kControlsDialog, kPopup, 0, "Controls", "MS Shell Dlg", 8, 0, 0, 240, 150, kControls,
     std::size(kControls)},
    {kEntryDialog, kPopup | WS_VISIBLE, 0, "Entry", "MS Shell Dlg", 8, 10, 10, 120, 60, kEntry,
     std::size(kEntry)},
    {kPage0, kPage, 0, "Zero", "MS Shell Dlg", 8, 0, 0, 200, 100, kPageControls, std::size(kPageControls)},
    {kPage1, kPage, 0, "One", "MS Shell Dlg", 8, 0, 0, 220, 120, kPageControls, std::size(kPageControls)},
    {kPage2, kPage, 0, "Two", "MS Shell Dlg", 8, 0, 0, 200, 100, kPageControls, std::size(kPageControls)},
};

}  // namespace

std::vector<std::string>& events() {
    static std::vector<std::string> log;
    return log;
}

std::string joined_events() {
    std::string out;
    for (const std::string& e : events()) out += (out.empty() ? "" : " ") + e;
    return out;
}

void record(const std::string& event) { events().push_back(event); }

INT_PTR CALLBACK recording_proc(HWND, UINT message, WPARAM wparam, LPARAM) {
    if (message == WM_COMMAND)
        record("command:" + std::to_string(LOWORD(wparam)) + ":" + std::to_string(HIWORD(wparam)));
    return FALSE;
}

HWND make_controls_dialog(DLGPROC proc) {
    const auto* t = zr::headless::ui::find_template(zr::headless::ui::resource_module_handle(),
                                                    MAKEINTRESOURCEA(kControlsDialog));
    return zr::headless::ui::create_dialog(*t, t->style, t->ex_style, nullptr,
                                           zr::headless::ui::resource_module_handle(),
                                           proc != nullptr ? proc : recording_proc, 0);
}

void UiTest::SetUp() {
    zr::headless::reset_ui();
    zr::headless::ui::register_test_dialogs(kTemplates, std::size(kTemplates));
    events().clear();
    module = LoadLibraryA("zrres.dll");
    ASSERT_NE(module, nullptr);
}

void UiTest::TearDown() { zr::headless::reset_ui(); }

}  // namespace zr::headless::test
