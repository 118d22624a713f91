// The in-house utility layer: registry key class, system family, resource
// strings, drive information, window helpers, edit-field numbers and the
// maker-list merges.  Written once over the Win32 names of platform/win.h,
// so it behaves the same in both worlds.
#pragma once

#include <cstddef>

#include "platform/win.h"

// Full access, the mask every key of the module is opened with.
constexpr REGSAM kFullAccess = 0xF003F;

// A short-lived registry key: open, read or write, close.  Dropping the
// object closes the key.  The class never creates a key.
class kRegKey {
public:
    kRegKey() = default;
    ~kRegKey();
    kRegKey(const kRegKey&) = delete;
    kRegKey& operator=(const kRegKey&) = delete;

    // Opens an existing key; false when it is missing.
    bool Open(HKEY root, const char* path, REGSAM access);
    // True when read; *value is left unchanged when the value is missing or
    // is not a DWORD.
    bool GetDWORD(const char* name, DWORD* value);
    // Writes a NUL-terminated string of at most `capacity` bytes.  A longer
    // stored value is cut to capacity - 1 characters; a value stored without
    // a NUL ends where its bytes end.  False, with the buffer left as it
    // was, when the value is missing or not a string (REG_SZ, REG_EXPAND_SZ),
    // so a default put there first survives.
    bool GetString(const char* name, char* buffer, size_t capacity);
    bool SetDWORD(const char* name, DWORD value);
    bool SetString(const char* name, const char* value);
    bool Close();
    // Number of subkeys; 0 when the key is not open.
    DWORD children();
    // Name of the subkey at `index`; false when there is none or it does not
    // fit `capacity` with its NUL.
    bool child(DWORD index, char* buffer, size_t capacity);
    HKEY getkey() const { return key_; }

private:
    HKEY key_ = nullptr;
};

// True on the Windows NT family, false on the 9x family.
bool is_this_winnt();

// Loads string `id` of `module` into `buffer` (always NUL-terminated when
// capacity > 0; empty when the string is missing).  Returns its length.
int load_res_string(HMODULE module, UINT id, char* buffer, int capacity);

// Size and free space of the fixed drive whose root is `root` ("C:\"), in
// megabytes.  False when the drive is unknown.
bool get_fixed_drive_info(const char* root, DWORD* total_mb, DWORD* free_mb);

// Centres `window` on `reference`, or on the screen when reference is null.
void center_window(HWND reference, HWND window);

// A control's text as a decimal number.  Leading blanks are skipped; the
// digits that follow are read (an optional leading '-' wraps modulo 2^32);
// an empty text or one that starts with no digit gives 0; values beyond
// 32 bits saturate at 0xFFFFFFFF.
UINT Edit_GetInt(HWND edit);
// Puts `value` into a control's text as unsigned decimal ("%u").
void Edit_SetInt(HWND edit, UINT value);

// Maker-list merges: append the entries of the list at `source` to the file
// at `destination`, keeping what it holds and creating it when absent.
int copy_exclude_ads(char* source, char* destination);
int copy_aggressive(char* source, char* destination);
