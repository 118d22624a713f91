// The settings store: the product's registry keys, values read with a
// default, and the data and cache directories.
#pragma once

#include <cstddef>
#include <string>

#include "platform/win.h"

// Keys under HKEY_LOCAL_MACHINE.
inline constexpr char kSettingsKey[] = "SOFTWARE\\Quillmark\\Zephyrion\\Settings";
inline constexpr char kProductKey[] = "SOFTWARE\\Quillmark\\Zephyrion";
inline constexpr char kMakerKey[] = "Software\\Quillmark";

// Reads DWORD `name` of `key`; `fallback` when the key or the value is missing.
DWORD read_dword(const char* key, const char* name, DWORD fallback);
// Writes DWORD `name` of `key` when the key exists; nothing otherwise.
void write_dword(const char* key, const char* name, DWORD value);
// Reads string `name` of `key` into `buffer` (cut to capacity - 1); false
// and the buffer left as it was when the key or value is missing.
bool read_string(const char* key, const char* name, char* buffer, size_t capacity);

// The data directory (`proxy_path` of the Settings key) into `buffer`; true
// when the key opened and the value was read.
bool read_data_directory(char* buffer, size_t capacity);

// The whole `cacheDir` value of the product key (read into 260 bytes); empty
// when the key cannot be opened or has no such value.
std::string cache_directory();

// `cacheDir` (read into 1,024 bytes) cut right after its first backslash:
// "C:\Cache\Data" gives "C:\", "D:\" stays "D:\".  A value without any
// backslash has no drive root of its own and is returned whole.  Empty when
// the key cannot be opened.
std::string cache_drive_root();
