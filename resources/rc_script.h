// Reader of the resource script zrres.rc: the subset of the resource-compiler
// language that the script is written in, read into plain records with the
// values the resource compiler (windres) puts into the binary.
//
// Accepted: #include "file" (read for its #define lines and statements),
// #include <file> and #pragma (skipped), #define NAME expression;
// DIALOGEX templates with STYLE, EXSTYLE, CAPTION and FONT and controls in the
// generic form  CONTROL "text", id, "class", style, x, y, cx, cy [, exstyle];
// STRINGTABLE; ICON and BITMAP statements. Anything else is an error.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace zr::rc {

struct Control {
    int id = 0;
    std::string cls;  // canonical spelling: "Button", "Edit", "msctls_updown32"...
    std::string text;
    uint32_t style = 0;  // as stored: WS_CHILD | WS_VISIBLE unless taken away by NOT
    uint32_t ex_style = 0;
    int x = 0, y = 0, cx = 0, cy = 0;
};

struct Dialog {
    int id = 0;
    uint32_t style = 0;  // STYLE, plus WS_CAPTION with CAPTION and DS_SETFONT with FONT
    uint32_t ex_style = 0;
    std::string caption;
    std::string font;  // empty without FONT
    int font_size = 0;
    int x = 0, y = 0, cx = 0, cy = 0;
    std::vector<Control> controls;
};

struct StringEntry {
    int id = 0;
    std::string text;
};

struct FileResource {
    int id = 0;
    std::string file;
};

struct Script {
    std::vector<Dialog> dialogs;
    std::vector<StringEntry> strings;
    std::vector<FileResource> icons;
    std::vector<FileResource> bitmaps;
};

// A script the reader does not understand; what() is "file:line: message".
class ScriptError : public std::runtime_error {
public:
    ScriptError(const std::string& file, int line, const std::string& message);
    std::string file;
    int line;
    std::string message;
};

// Reads the script held in `text`; `name` is used in messages and `dir` is the
// folder against which #include "file" is resolved (empty: includes fail).
Script parse_script(const std::string& text, const std::string& name, const std::string& dir);
Script parse_script_file(const std::string& path);

// Canonical spelling of a known window class (any letter case), or empty.
std::string canonical_class(const std::string& cls);

}  // namespace zr::rc
