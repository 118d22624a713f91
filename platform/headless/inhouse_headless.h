// Headless stand-ins for what the in-house libraries ask of the running
// system: drive sizes set by tests and a record of help requests.
#pragma once

#include <string>
#include <vector>

#include "platform/win.h"

namespace zr::headless {

// get_fixed_drive_info answers these sizes for `root` ("C:\", any case;
// "C:" alike) instead of asking the host.
void set_drive_size(const char* root, DWORD total_mb, DWORD free_mb);
void clear_drive_sizes();

// Every show_help_file call since the last clear: the file argument, "" for
// a null one.
std::vector<std::string> help_requests();
void clear_help_requests();

}  // namespace zr::headless
