// userex.gui on disk: the user site list's file in the data directory.
#pragma once

#include <cstddef>

#include "elimination/site_list.h"
#include "platform/fileio.h"

// The path of data file `name` in the data directory ("<proxy_path>\<name>",
// read into a 1,024-byte buffer).  False when proxy_path cannot be read or is
// empty, or when the path does not fit `capacity` with its NUL: then the file
// operations that need it are refused and no file is touched.
bool data_file_path(const char* name, char* buffer, size_t capacity);

// Opens userex.gui for reading (binary: the reader does the line-end work of
// text mode itself, so both worlds read the same).  Null when the data
// directory is unknown or the file cannot be opened; silent.
zr::fs::File* open_user_site_file();

// Reads `file` to its end and appends one entry per line (site_codec.h gives
// the rules).  The caller opens and closes the file.
void read_site_list(zr::fs::File* file, UserSiteList& list);
void read_user_site_list(zr::fs::File* file);  // into g_settings.user_sites

// Writes every entry in list order (CR LF line ends; write the file in binary
// mode).  False when a write came up short; the writing stops there.
bool write_site_list(zr::fs::File* file, const UserSiteList& list);
bool write_user_site_list(zr::fs::File* file);  // from g_settings.user_sites

// Empties g_settings.user_sites and reads it again from userex.gui; an empty
// list when there is no file.
void reload_user_site_list();
