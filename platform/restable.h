// Resources of the resource module as data: generated at build time from
// resources/zrres.rc (the one description of every dialog, string and icon),
// so the headless world builds exactly the dialogs the real module holds.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zr::res {

struct ControlTemplate {
    int id;               // control id (-1 for IDC_STATIC)
    const char* cls;      // window class: "Button", "Edit", "Static", "ListBox",
                          // "ComboBox", "msctls_trackbar32", "msctls_updown32",
                          // "SysListView32", ...
    const char* text;     // initial text ("" when none)
    uint32_t style;       // full window style, WS_CHILD | WS_VISIBLE included
    uint32_t ex_style;
    int x, y, cx, cy;     // dialog units
};

struct DialogTemplate {
    int id;
    uint32_t style;
    uint32_t ex_style;
    const char* caption;
    const char* font;     // "MS Shell Dlg"
    int font_size;
    int x, y, cx, cy;
    const ControlTemplate* controls;
    size_t control_count;
};

struct StringResource {
    int id;
    const char* text;
};

// The generated tables (one module: zrres.dll).
extern const DialogTemplate kDialogs[];
extern const size_t kDialogCount;
extern const StringResource kStrings[];
extern const size_t kStringCount;
extern const int kIcons[];      // icon ids
extern const size_t kIconCount;
extern const int kBitmaps[];    // bitmap ids
extern const size_t kBitmapCount;

const DialogTemplate* find_dialog(int id);
const char* find_string(int id);  // null when missing

}  // namespace zr::res
