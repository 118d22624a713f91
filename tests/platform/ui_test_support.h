// Shared by the windowing-layer tests: small dialog templates of their own,
// a log of what the dialog procedures saw, and a fresh layer per test.
#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "platform/headless/ui_internal.h"

namespace zr::headless::test {

enum : int { kControlsDialog = 9001, kEntryDialog = 9002, kPage0 = 9100, kPage1 = 9101, kPage2 = 9102 };

// What the dialog procedures of a test saw, in order.
std::vector<std::string>& events();
std::string joined_events();
void record(const std::string& event);

// The controls dialog (template kControlsDialog) made directly, no modal run.
HWND make_controls_dialog(DLGPROC proc = nullptr);

// A procedure that records WM_COMMAND as "command:<id>:<code>".
INT_PTR CALLBACK recording_proc(HWND, UINT, WPARAM, LPARAM);

class UiTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;
    HMODULE module = nullptr;  // the resource module, loaded
};

}  // namespace zr::headless::test
