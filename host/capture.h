// Window pictures for the demo host's screenshot mode.
#pragma once

#include <string>

#include "platform/win.h"

// "settings-2-connection.bmp" from ("settings", 2, "Connection").
std::string shot_name(const char* sheet, int number, const char* title);

// Saves what the screen shows of `window` (frame included) as a 24-bit BMP
// file.  False when the window has no area or the file cannot be written.
bool save_window_bitmap(HWND window, const std::string& path);
