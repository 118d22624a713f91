// Headless skin modules.  A skin is a library module on Windows; headless, a
// skin file is a small text file that lists what such a module would hold:
//
//     ZRSKIN
//     icon 8011
//     bitmap 10000
//     export create_skin_window
//
// The first line is exactly "ZRSKIN"; each following line is "icon <id>",
// "bitmap <id>" or "export <name>"; blank lines and lines starting with '#'
// are skipped.  Any other line, or a file that does not start with "ZRSKIN",
// is not a skin: loading it fails, as loading a file that is not a DLL does.
//
// The headless LoadLibraryA, FindResourceA, LoadImageA, GetProcAddress and
// FreeLibrary consult these functions for every module name that is not the
// resource module.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/win.h"

namespace zr::headless {

struct SkinFile {
    std::vector<int> icons;
    std::vector<int> bitmaps;
    std::vector<std::string> exports;
};

// The contents of a skin file; nullopt when the text is not one.
std::optional<SkinFile> parse_skin_file(const std::string& text);

// LoadLibraryA of a skin path (Windows form): a new module handle, or null
// when the file is missing or is not a skin file.
HMODULE load_skin_module(const char* path);
// True for a handle from load_skin_module that has not been freed.
bool is_skin_module(HMODULE module);
// Whether the module holds icon `id` (a group icon) or bitmap `id`.
bool skin_has_icon(HMODULE module, int id);
bool skin_has_bitmap(HMODULE module, int id);
// GetProcAddress: a stand-in address for an export named `name` (never to be
// called), null when there is none.
FARPROC skin_export(HMODULE module, const char* name);
// FreeLibrary: false when `module` is not a live skin module.
bool free_skin_module(HMODULE module);
// Skin modules loaded and not yet freed (a probe must leave none behind).
int live_skin_modules();

}  // namespace zr::headless
