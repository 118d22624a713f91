// What a scenario test needs of the world it runs in.  One implementation per
// world: headless (in-memory registry, mapped file system, simulated windows)
// and Win32 (the real registry of the Wine prefix, real files, real windows).
// Paths are in Windows form.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/win.h"

namespace zr::test {

// Fresh world: no product keys in the registry, an empty data directory, no
// windows left over, the NT family, the resource module available.
void world_reset();

// Registry under HKEY_LOCAL_MACHINE (seeding and checking; the module itself
// never creates keys).
void reg_create_key(const char* path);
void reg_delete_tree(const char* path);
bool reg_key_exists(const char* path);
void reg_set_dword(const char* key, const char* name, uint32_t value);
void reg_set_string(const char* key, const char* name, const char* value);
std::optional<uint32_t> reg_get_dword(const char* key, const char* name);
std::optional<std::string> reg_get_string(const char* key, const char* name);

// A fresh, empty directory for this test, in Windows form, no trailing
// backslash.  Stable within one test.
std::string data_dir();
// `dir` + "\" + `name`.
std::string data_path(const char* name);
std::optional<std::string> read_file(const std::string& path);  // bytes
void write_file(const std::string& path, const std::string& bytes);
void remove_file(const std::string& path);

// Take the Windows 9x path (false) or the NT path (true).
void set_nt_family(bool nt);
// Make loading the resource module fail.
void set_resource_module_missing(bool missing);

// A top-level window of class "Zephyrion", standing for the running
// application.  Messages posted to it are recorded.
HWND create_app_window();
struct PostedMessage {
    UINT message;
    WPARAM wparam;
    LPARAM lparam;
};
std::vector<PostedMessage> app_window_messages();

// The size in megabytes of the drive that holds data_dir(), as the module's
// get_fixed_drive_info will report it.  Headless: the drive is given
// `total_mb` (half of it free) and the result is `total_mb`.  Win32: a real
// drive cannot be resized, so its real size is returned instead and the
// scenario takes its numbers from the result.  0 when the drive is unknown.
uint32_t set_cache_drive_size(uint32_t total_mb);

// Calls to the help library since world_reset (the file argument, "" for null).
std::vector<std::string> help_requests();

}  // namespace zr::test
