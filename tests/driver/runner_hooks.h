// How the scripted user gets control inside a modal loop: one implementation
// per world (headless: the simulated loops call back; Win32: a hook on window
// activation posts to the driver, which runs when the real loop dispatches).
#pragma once

#include <functional>
#include <string>

#include "platform/win.h"

namespace zr::test::hooks {

struct Handlers {
    // A modal sheet or dialog is up and idle: run the steps meant for it.
    std::function<void(HWND modal)> on_modal;
    // A message box appeared: return the button that answers it.
    std::function<int(HWND owner, const char* text, const char* caption, UINT style)> on_box;
    // An open-file dialog appeared: return the chosen path, "" to cancel.
    std::function<std::string(HWND owner)> on_open_file;
};

void install(const Handlers& handlers);
void uninstall();
// True when `modal` has been closed (its modal loop is ending).
bool modal_ended(HWND modal);
// Let `ms` milliseconds pass with the current modal loop running.
void let_time_pass(int ms);

}  // namespace zr::test::hooks
