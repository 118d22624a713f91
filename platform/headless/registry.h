// The headless registry: an in-memory HKEY_LOCAL_MACHINE (and the other
// predefined roots) behind the advapi32 functions of winapi.h.  These
// functions seed and inspect it from tests; the module itself never creates
// a key.
//
// Key paths are relative to HKEY_LOCAL_MACHINE ("SOFTWARE\Quillmark") or
// start with a root name ("HKEY_CURRENT_USER\Software").  Names compare
// without regard to ASCII case and keep the case they were created with.
// Subkeys enumerate sorted case-insensitively with letters folded to lower
// case, as under Wine ('_' sorts before letters); values keep the order they
// were first set in.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/win.h"

// Status codes of the registry functions beyond the common ones.
#ifndef ERROR_BAD_PATHNAME
#define ERROR_BAD_PATHNAME 161L
#endif
#ifndef ERROR_KEY_DELETED
#define ERROR_KEY_DELETED 1018L
#endif

namespace zr::headless {

// Removes every key and value; handles still open become stale.
void registry_clear();
// Creates the key and any missing key on the way; false for a bad path.
bool registry_create_key(const char* path);
// Removes the key with everything below it; false when it did not exist.
bool registry_delete_tree(const char* path);
bool registry_key_exists(const char* path);

// Setters create the key when it is missing.  Strings are stored as REG_SZ
// with their terminating NUL.
void registry_set_dword(const char* key, const char* name, DWORD value);
void registry_set_string(const char* key, const char* name, const char* value);
// Any type with exactly the given bytes (a string without NUL, a DWORD of
// the wrong size, binary data).
void registry_set_raw(const char* key, const char* name, DWORD type, std::string_view bytes);
bool registry_delete_value(const char* key, const char* name);

// A REG_DWORD of 4 bytes; nothing for any other type or a missing value.
std::optional<DWORD> registry_get_dword(const char* key, const char* name);
// A REG_SZ or REG_EXPAND_SZ up to its first NUL (all of it when it has none).
std::optional<std::string> registry_get_string(const char* key, const char* name);
// The stored bytes and type of any value.
struct RegRawValue {
    DWORD type;
    std::string bytes;
};
std::optional<RegRawValue> registry_get_raw(const char* key, const char* name);

// Number of handles open now (predefined roots not counted).
size_t registry_open_handles();

// REGEDIT4 text as regedit writes it.  The whole text is checked before
// anything changes: on an error the registry is left exactly as it was and
// `line` (1-based) and `message` ("line 7: ...") say what is wrong.
struct RegLoadResult {
    bool ok;
    int line;
    std::string message;
};
RegLoadResult registry_load_reg(std::string_view text);
// The same from a file on the host (a host path, not a Windows one).
RegLoadResult registry_load_reg_file(const std::string& host_file);
// The whole registry as REGEDIT4 text with CR LF line ends: every key below
// the roots, parents first, in enumeration order; a root's own line only
// when the root holds values.
std::string registry_save_reg();

// The native world's default store (embedded REGEDIT4 text: a demo
// installation in C:\Zephyrion), and loading it over the current tree.
std::string_view default_store_text();
RegLoadResult registry_load_default_store();

}  // namespace zr::headless
