// zrres.dll as the module meets it: loadable by its bare name, with every
// template creatable by the dialog manager (so each control class resolves)
// and holding the controls its page drives; the strings and the site icon.
#include <windows.h>
// after windows.h
#include <commctrl.h>
#include <gtest/gtest.h>

#include <string>

#include "page_needs.h"

namespace {

INT_PTR CALLBACK quiet_proc(HWND, UINT msg, WPARAM, LPARAM) { return msg == WM_INITDIALOG; }

class ZrresDll : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        INITCOMMONCONTROLSEX icc = {sizeof icc, ICC_WIN95_CLASSES};
        InitCommonControlsEx(&icc);
        module = LoadLibraryA("zrres.dll");
    }
    static HMODULE module;
};
HMODULE ZrresDll::module = nullptr;

bool same_class(const char* a, const char* b) { return lstrcmpiA(a, b) == 0; }

TEST_F(ZrresDll, EveryTemplateCreatesWithTheControlsItsPageDrives) {
    ASSERT_NE(module, nullptr) << "zrres.dll not found on the search path";
    for (const auto& page : zr_test::kNeeds) {
        // Pages are child templates: give them a frame, as the property sheet does.
        HWND frame = CreateWindowExA(0, "#32770", "frame", WS_POPUP | WS_CAPTION, 0, 0, 400, 400, nullptr,
                                     nullptr, nullptr, nullptr);
        HWND dlg = CreateDialogParamA(module, MAKEINTRESOURCEA(page.dialog), frame, quiet_proc, 0);
        ASSERT_NE(dlg, nullptr) << "template " << page.dialog << " error " << GetLastError();
        for (const auto& need : page.controls) {
            HWND c = GetDlgItem(dlg, need.id);
            ASSERT_NE(c, nullptr) << page.dialog << "/" << need.id;
            char cls[64] = "";
            GetClassNameA(c, cls, sizeof cls);
            const char* want = zr_test::kind_class(need.kind);
            if (*want) {
                EXPECT_TRUE(same_class(cls, want)) << page.dialog << "/" << need.id << " is " << cls;
            } else {
                EXPECT_TRUE(same_class(cls, "Static") || same_class(cls, "Button"))
                    << page.dialog << "/" << need.id;
            }
            LONG type = GetWindowLongA(c, GWL_STYLE) & 0xF;
            if (need.kind == zr_test::Kind::Check) {
                EXPECT_EQ(type, BS_AUTOCHECKBOX) << page.dialog << "/" << need.id;
            }
            if (need.kind == zr_test::Kind::Check3) {
                EXPECT_EQ(type, BS_3STATE) << page.dialog << "/" << need.id;
            }
            if (need.kind == zr_test::Kind::Radio) {
                EXPECT_EQ(type, BS_AUTORADIOBUTTON) << page.dialog << "/" << need.id;
            }
        }
        DestroyWindow(dlg);
        DestroyWindow(frame);
    }
}

TEST_F(ZrresDll, StringsAndTheSiteIcon) {
    ASSERT_NE(module, nullptr);
    char buf[1024];
    ASSERT_GT(LoadStringA(module, 6006, buf, sizeof buf), 0);
    EXPECT_STREQ(buf, "Reset Cache?");
    for (int id : {6000, 6002, 6004, 6005, 6021, 6022, 6031, 6032, 6033, 6039, 6040, 6056, 6058, 6059, 6060,
                   6061, 6062})
        EXPECT_GT(LoadStringA(module, id, buf, sizeof buf), 0) << id;
    HANDLE icon = LoadImageA(module, MAKEINTRESOURCEA(5001), IMAGE_ICON, 16, 16, 0);
    EXPECT_NE(icon, nullptr);
    if (icon) DestroyIcon(static_cast<HICON>(icon));
}

}  // namespace
