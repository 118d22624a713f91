// The in-house helpers that need only the Win32 names: edit-field numbers
// and window centring.  Built in both worlds: headless, and under Wine.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/zrutil.h"

namespace {

struct Window {
    HWND handle;
    explicit Window(HWND h) : handle(h) {}
    ~Window() {
        if (handle != nullptr) DestroyWindow(handle);
    }
};

HWND make_edit(const char* text) {
    return CreateWindowExA(0, "Edit", text, WS_POPUP, 0, 0, 100, 20, nullptr, nullptr, nullptr, nullptr);
}

TEST(EditInt, ReadsTheDocumentedRule) {
    struct Case {
        const char* text;
        UINT expected;
    };
    const std::vector<Case> cases = {
        {"", 0},
        {"0", 0},
        {"1500", 1500},
        {"   42", 42},
        {"\t7", 7},
        {"12abc", 12},
        {"12 34", 12},
        {"abc", 0},
        {"+5", 0},
        {"-", 0},
        {"-1", 0xFFFFFFFFu},
        {"-5", 0xFFFFFFFBu},
        {"4294967295", 0xFFFFFFFFu},
        {"4294967296", 0xFFFFFFFFu},
        {"99999999999999999999999", 0xFFFFFFFFu},
        {"-99999999999", 0xFFFFFFFFu},
        {"0x1F", 0},
        {"007", 7},
    };
    for (const Case& c : cases) {
        Window edit(make_edit(c.text));
        ASSERT_NE(edit.handle, nullptr);
        EXPECT_EQ(Edit_GetInt(edit.handle), c.expected) << '"' << c.text << '"';
    }

    // Only the first 259 characters count: digits beyond them are not read.
    std::string padded(255, ' ');
    padded += "123456";
    Window edit(make_edit(padded.c_str()));
    EXPECT_EQ(Edit_GetInt(edit.handle), 1234u);
}

TEST(EditInt, WritesUnsignedDecimal) {
    Window edit(make_edit("old"));
    char text[32];
    for (UINT value : {0u, 30u, 4294967295u}) {
        Edit_SetInt(edit.handle, value);
        GetWindowTextA(edit.handle, text, sizeof text);
        EXPECT_EQ(std::string(text), std::to_string(value));
        EXPECT_EQ(Edit_GetInt(edit.handle), value);
    }
}

TEST(CenterWindow, CentresOnTheReferenceOrTheScreenAndStaysOnScreen) {
    const int screen_w = GetSystemMetrics(SM_CXSCREEN);
    const int screen_h = GetSystemMetrics(SM_CYSCREEN);
    ASSERT_GT(screen_w, 400);
    ASSERT_GT(screen_h, 300);
    Window owner(
        CreateWindowExA(0, "Static", "", WS_POPUP, 100, 50, 400, 300, nullptr, nullptr, nullptr, nullptr));
    Window dialog(
        CreateWindowExA(0, "Static", "", WS_POPUP, 0, 0, 200, 100, nullptr, nullptr, nullptr, nullptr));
    RECT rc{};

    center_window(owner.handle, dialog.handle);
    GetWindowRect(dialog.handle, &rc);
    EXPECT_EQ(rc.left, 100 + (400 - 200) / 2);
    EXPECT_EQ(rc.top, 50 + (300 - 100) / 2);
    EXPECT_EQ(rc.right - rc.left, 200) << "the size is kept";

    center_window(nullptr, dialog.handle);
    GetWindowRect(dialog.handle, &rc);
    EXPECT_EQ(rc.left, (screen_w - 200) / 2);
    EXPECT_EQ(rc.top, (screen_h - 100) / 2);

    // A reference hanging off the top-left corner: the window is pulled back.
    MoveWindow(owner.handle, -300, -300, 200, 100, FALSE);
    center_window(owner.handle, dialog.handle);
    GetWindowRect(dialog.handle, &rc);
    EXPECT_EQ(rc.left, 0);
    EXPECT_EQ(rc.top, 0);
}

}  // namespace
