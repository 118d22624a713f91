// The scripted user: a scenario arranges what a person would do once a modal
// sheet or dialog is up, then runs the code that opens it.  The steps run in
// order, each in the modal window that is topmost when it runs: a step that
// opens a nested modal dialog (the site entry dialog, a message box) hands
// the following steps to that dialog until one of them closes it.
//
// Both worlds implement it: headless through the simulated modal loops, and
// Win32 with real messages (the modal loop dispatches a posted message to the
// driver, which then acts with SendMessage as a person's clicks would).
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/win.h"

namespace zr::test {

// A view of the modal window a step runs in.
struct Modal {
    HWND window;  // the property sheet or dialog
    HWND page;    // the sheet's current page; the dialog itself otherwise
    HWND item(int id) const { return GetDlgItem(page, id); }
    bool enabled(int id) const;
    bool visible(int id) const;
    int checked(int id) const;  // BST_* of a button
    std::string text(int id) const;
};

class User {
public:
    using Check = std::function<void(const Modal&)>;

    User& show_page(int index);          // select a page of the sheet
    User& click(int id);                 // a button, check box or radio button
    User& type(int id, std::string text);  // replace an edit's text
    User& select_rows(int id, std::vector<int> rows);  // list box selection, as clicks would
    User& scroll(int id, int code, int position);  // track bar: WM_HSCROLL code/position
    User& apply();                       // the sheet's Apply button
    User& ok();                          // OK of the sheet or dialog
    User& cancel();                      // Cancel of the sheet or dialog
    User& help();                        // the sheet's Help button
    User& close();                       // the window frame's close box
    // Answer the next message box with `button` (IDYES, IDNO, IDOK...).
    // Arm it before the step that makes the box appear.
    User& answer_box(int button);
    // Answer the next open-file dialog with `path` ("" cancels it).  Arm it
    // before the step that opens the dialog.
    User& choose_file(std::string path);
    // Let `ms` milliseconds pass with the modal loop running (timers fire).
    User& wait(int ms);
    // Look at the state of the modal window at this point of the script.
    User& check(Check check);

    // Runs `open` (which returns when the modal window closes), performing
    // the steps while it is up.  Fails the current test when a step cannot
    // run, when steps are left over, when the script ends with a modal
    // window still open, when an armed answer finds no box, or when a
    // message box appears that no step answers.  A message box or open-file
    // dialog shown while no modal window is up (before or after it) takes
    // the answers at the head of the remaining script.  After a sheet's OK,
    // Cancel or close box the following steps wait for the next modal window.
    void run(const std::function<void()>& open);

    struct BoxSeen {
        HWND owner;
        std::string text;
        std::string caption;
        UINT style;
        int answer;
    };
    // The message boxes shown during run(), in order.
    const std::vector<BoxSeen>& boxes() const { return boxes_; }

    struct Step {
        enum Kind { ShowPage, Click, Type, SelectRows, Scroll, Apply, Ok, Cancel, Help, Close, Answer, ChooseFile, Wait, Look };
        Kind kind;
        int id = 0;
        int a = 0, b = 0;
        std::string text;
        std::vector<int> rows;
        Check check;
    };

private:
    std::vector<Step> steps_;
    std::vector<BoxSeen> boxes_;
    friend struct UserRunner;
};

}  // namespace zr::test
