// Control of the headless windowing layer, for the tests and the scripted
// user: the simulated user's hooks into the modal loops, message boxes and
// open-file dialogs, the virtual clock, the message queue and the state of
// the simulated system (family, resource module).
#pragma once

#include <functional>
#include <vector>

#include "platform/headless/winapi.h"

namespace zr::headless {

// Destroys every window and clears the message queue, the timers, the hooks
// and the logs; back to the NT family with the resource module available.
void reset_ui();
void set_winnt(bool);  // read by the headless is_this_winnt
bool winnt();
void set_resource_module_missing(bool);
// Called once per modal run (property sheet or dialog box), when the window
// is up and idle.  While it runs, the modal loop keeps running between the
// calls it makes: posted messages are delivered and an ended run is closed
// (its window destroyed) as soon as control is back at the loop's level.
void set_modal_hook(std::function<void(HWND)>);
// Answers a message box: given owner, text, caption (as shown) and style,
// returns the button (IDOK, IDYES...).
void set_message_box_hook(std::function<int(HWND, const char*, const char*, UINT)>);
// Answers an open-file dialog: fills lpstrFile (at most nMaxFile bytes with
// its NUL) and returns true, or returns false for a cancelled dialog.
void set_open_file_hook(std::function<bool(OPENFILENAMEA*)>);
// Moves the virtual clock on by `ms`, delivering WM_TIMER to every timer as
// it falls due.
void advance_time(unsigned ms);
// Delivers the posted messages, including those posted meanwhile.
void pump();
std::vector<HWND> top_level_z_order();  // top to bottom
// Modal runs whose hook returned with the window still open: the run is then
// ended (a sheet as if Cancel was pressed, a dialog by its Cancel button or
// else EndDialog(0)) and counted.
int abandoned_modal_runs();
// The sheet's template handed to PSCB_PRECREATE: DLGTEMPLATEEX when true.
void set_sheet_template_extended(bool);
// Message boxes shown with no hook set whose style asked a question (any
// but MB_OK); they are answered with IDCANCEL, or IDNO when there is no
// Cancel button.
int unanswered_message_boxes();

}  // namespace zr::headless
