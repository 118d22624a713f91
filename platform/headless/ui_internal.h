// Inside the headless windowing layer: the window records, the message
// machinery shared by the controls, dialogs and property sheets, and a few
// seams for the layer's own tests.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/headless/ui.h"
#include "platform/restable.h"

namespace zr::headless::ui {

// Built-in window kinds; every other class is either registered
// (RegisterClassA) or a plain window.
enum class Kind { Plain, Dialog, Button, Edit, Static, ListBox, ComboBox, TrackBar, UpDown, ListView, Tab };

struct ListEntry {
    std::string text;
    LPARAM data = 0;
    bool selected = false;
};

struct ViewItem {
    std::vector<std::string> texts;  // [0] the item, then the subitems
    UINT state = 0;
    LPARAM param = 0;
    int image = 0;
};

struct Window {
    HWND handle = nullptr;
    bool alive = true;
    Kind kind = Kind::Plain;
    std::string cls;
    std::string text;
    DWORD style = 0;
    DWORD ex_style = 0;
    int id = 0;
    HWND parent = nullptr;  // child windows
    HWND owner = nullptr;   // top-level windows
    HINSTANCE instance = nullptr;
    RECT rect{};  // relative to the parent; screen for top-level windows
    WNDPROC proc = nullptr;
    DLGPROC dlgproc = nullptr;  // dialogs
    LONG_PTR user_data = 0;
    std::vector<unsigned char> extra;  // window extra bytes (DWLP_* of dialogs)
    std::vector<HWND> children;        // creation order
    // Buttons.
    int check = 0;
    // Edits.
    UINT limit = 30000;
    int sel_start = 0, sel_end = 0;
    // List boxes and combo boxes.
    std::vector<ListEntry> entries;
    int current = -1;  // single selection, or the caret of a multiple-selection list
    int top = 0;
    // Track bars and up-down controls.
    int low = 0, high = 100, pos = 0, base = 10;
    HWND buddy = nullptr;
    // List views.
    std::vector<ViewItem> items;
    std::vector<std::string> columns;
    std::vector<int> column_widths;
    HIMAGELIST images[3] = {};
    DWORD view_ex_style = 0;
    // Dialogs.
    bool ended = false;
    INT_PTR result = 0;
    HWND focus = nullptr;
};

// The window behind a live handle, or null.
Window* find(HWND handle);
// Every window ever made, live or not, in creation order.
std::vector<Window*> all_windows();
// Makes a window of a built-in kind or registered class; null when the class
// is unknown or WM_CREATE refuses.  `menu_or_id` is the control id of a
// child window.
HWND create_window(DWORD ex_style, const char* cls, const char* text, DWORD style, int x, int y, int cx,
                   int cy, HWND parent, int id, HINSTANCE instance, void* param);
// Live children of `parent` in creation order.
std::vector<HWND> children(HWND parent);
HWND top_level_of(HWND handle);

// Messages: a send passes through the API depth counter, so that the modal
// loops know when control is back at their level.
LRESULT send(HWND handle, UINT message, WPARAM wparam, LPARAM lparam);
void notify_parent_command(Window& control, int code);
LRESULT notify_parent(Window& control, UINT code, NMHDR* header);
bool post(HWND handle, UINT message, WPARAM wparam, LPARAM lparam);

// Built-in window procedures.
LRESULT CALLBACK default_window_proc(HWND, UINT, WPARAM, LPARAM);
LRESULT CALLBACK dialog_window_proc(HWND, UINT, WPARAM, LPARAM);
LRESULT CALLBACK button_proc(HWND, UINT, WPARAM, LPARAM);
LRESULT CALLBACK edit_proc(HWND, UINT, WPARAM, LPARAM);
LRESULT CALLBACK static_proc(HWND, UINT, WPARAM, LPARAM);
LRESULT CALLBACK list_box_proc(HWND, UINT, WPARAM, LPARAM);
LRESULT CALLBACK combo_box_proc(HWND, UINT, WPARAM, LPARAM);
LRESULT CALLBACK track_bar_proc(HWND, UINT, WPARAM, LPARAM);
LRESULT CALLBACK up_down_proc(HWND, UINT, WPARAM, LPARAM);
LRESULT CALLBACK list_view_proc(HWND, UINT, WPARAM, LPARAM);
// Up-down controls find their buddy once the dialog's controls exist.
void attach_auto_buddy(Window& up_down);

// Texts.
int compare_nocase(const std::string& a, const std::string& b);
bool starts_with_nocase(const std::string& text, const std::string& prefix);
// Copies `text` into a buffer of `capacity` bytes (cut, always terminated
// when capacity > 0); returns the characters copied.
int copy_text(const std::string& text, char* buffer, size_t capacity);
std::string text_of(LPARAM lparam);  // a char* message parameter

// Dialogs from templates.
const zr::res::DialogTemplate* find_template(HINSTANCE instance, LPCSTR name);
// Creates a dialog (hidden unless the template says visible) with its
// controls and sends WM_INITDIALOG; null when it failed.
HWND create_dialog(const zr::res::DialogTemplate& tmpl, DWORD style, DWORD ex_style, HWND parent_or_owner,
                   HINSTANCE instance, DLGPROC proc, LPARAM param);
int dialog_units_x(int units);
int dialog_units_y(int units);

// Modal runs (dialog boxes and property sheets), innermost last.
struct ModalRun {
    HWND window = nullptr;
    int depth = 0;          // API depth of the loop
    bool finished = false;  // window destroyed, owner enabled again
    HWND disabled_owner = nullptr;
    bool (*ended)(HWND) = nullptr;
    void (*abandon)(HWND) = nullptr;
};
// Runs the modal loop of `run` until it ends; destroys the window.
void run_modal(ModalRun& run);
// Called when an API call returns: at a loop's level the loop takes over
// (posted messages are delivered, an ended run is closed).
void settle();
struct ApiScope {
    ApiScope();
    ~ApiScope();
    ApiScope(const ApiScope&) = delete;
    ApiScope& operator=(const ApiScope&) = delete;
};
// Delivers one posted message; false when the queue is empty.
bool deliver_one_posted();
int api_depth();

// The hooks of ui.h, asked by the message box and the open-file dialog.
int ask_message_box(HWND owner, const char* text, const char* caption, UINT style, bool* answered);
bool ask_open_file(OPENFILENAMEA* ofn);

// Dialog boxes.
bool dialog_ended(HWND dialog);
void dialog_abandon(HWND dialog);

// Hooks and switches.
void call_modal_hook(HWND window);
bool sheet_template_extended();
bool resource_module_missing();
HMODULE resource_module_handle();
bool resource_module_loaded();  // LoadLibraryA'd and not freed
void kill_timers_of(HWND handle);
void reset_windows();
void reset_messages();
void reset_modules();
void reset_image_lists();

// Message boxes shown since reset_ui, for the layer's own tests.
struct BoxRecord {
    HWND owner;
    std::string text;
    std::string caption;
    UINT style;
    int answer;
    HWND window;
};
const std::vector<BoxRecord>& message_box_log();

// Extra dialog templates that the resource module offers besides the
// generated ones (the layer's tests use their own); registered templates
// are found first.
void register_test_dialogs(const zr::res::DialogTemplate* templates, size_t count);

}  // namespace zr::headless::ui
