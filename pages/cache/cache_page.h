// The cache page (dialog template 2000) and its skin helpers.  The page
// procedure itself is declared with the other pages in settings/pages.h.
#pragma once

#include <cstddef>

#include "platform/win.h"

// Runs the open-file dialog for a skin, starting at `current`.  False when
// the user cancels; otherwise the chosen path (up to 1,023 characters, cut to
// capacity - 1) is copied into `chosen`.
bool choose_skin_file(HWND owner, const char* current, char* chosen, size_t capacity);

// True when the file at `path` is a usable skin module: it holds icon 8011
// and bitmap 10000, or it exports `create_skin_window`.
bool probe_skin(const char* path);

// Texts of the two skin refusals.
inline constexpr char kInvalidSkinText[] = "The file you have chosen is not a valid Zephyrion Skin file.";
inline constexpr char kSkinPathTooLongText[] =
    "The path of the file you have chosen is too long for a Zephyrion Skin file "
    "(at most 259 characters). Please move the skin to a shorter path and choose it again.";
