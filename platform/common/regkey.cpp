// kRegKey: a short-lived registry key over the advapi32 functions.  The same
// code runs against the real registry and against the headless one.
#include <cstring>
#include <vector>

#include "platform/zrutil.h"

namespace {

bool is_string_type(DWORD type) { return type == REG_SZ || type == REG_EXPAND_SZ; }

// Largest byte count handed to the registry in one call.
DWORD clamp_to_dword(size_t count) { return count > 0xFFFFFFFFu ? 0xFFFFFFFFu : static_cast<DWORD>(count); }

}  // namespace

kRegKey::~kRegKey() { Close(); }

bool kRegKey::Open(HKEY root, const char* path, REGSAM access) {
    Close();
    HKEY opened = nullptr;
    if (RegOpenKeyExA(root, path, 0, access, &opened) != ERROR_SUCCESS) return false;
    key_ = opened;
    return true;
}

bool kRegKey::GetDWORD(const char* name, DWORD* value) {
    if (key_ == nullptr || value == nullptr) return false;
    DWORD type = REG_NONE;
    DWORD read = 0;
    DWORD size = sizeof read;
    if (RegQueryValueExA(key_, name, nullptr, &type, reinterpret_cast<LPBYTE>(&read), &size) != ERROR_SUCCESS)
        return false;
    if (type != REG_DWORD || size != sizeof read) return false;
    *value = read;
    return true;
}

// The stored bytes are fetched whole into a scratch buffer (the registry
// hands out nothing when the caller's buffer is too small), then the text up
// to the first NUL, or all of it when it has none, is cut to capacity - 1
// characters and terminated.  The caller's buffer is touched only when the
// value is read.
bool kRegKey::GetString(const char* name, char* buffer, size_t capacity) {
    if (key_ == nullptr || buffer == nullptr || capacity == 0) return false;
    std::vector<BYTE> data;
    DWORD type = REG_NONE;
    DWORD size = 0;
    LONG status = RegQueryValueExA(key_, name, nullptr, &type, nullptr, &size);
    // The value may grow between the size query and the read; a few rounds
    // settle it.
    for (int round = 0; status == ERROR_SUCCESS && round < 4; ++round) {
        if (!is_string_type(type)) return false;
        data.resize(size);
        DWORD got = size;
        status = RegQueryValueExA(key_, name, nullptr, &type, size > 0 ? data.data() : nullptr, &got);
        if (status == ERROR_MORE_DATA) {
            size = got;
            status = ERROR_SUCCESS;
            continue;
        }
        if (status != ERROR_SUCCESS || !is_string_type(type)) return false;
        size_t length = 0;
        while (length < got && data[length] != 0) ++length;
        if (length > capacity - 1) length = capacity - 1;
        if (length > 0) std::memcpy(buffer, data.data(), length);
        buffer[length] = '\0';
        return true;
    }
    return false;
}

bool kRegKey::SetDWORD(const char* name, DWORD value) {
    if (key_ == nullptr) return false;
    return RegSetValueExA(key_, name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&value), sizeof value) ==
           ERROR_SUCCESS;
}

bool kRegKey::SetString(const char* name, const char* value) {
    if (key_ == nullptr) return false;
    if (value == nullptr) value = "";
    const DWORD size = clamp_to_dword(std::strlen(value) + 1);
    return RegSetValueExA(key_, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value), size) == ERROR_SUCCESS;
}

bool kRegKey::Close() {
    if (key_ == nullptr) return false;
    const LONG status = RegCloseKey(key_);
    key_ = nullptr;
    return status == ERROR_SUCCESS;
}

DWORD kRegKey::children() {
    if (key_ == nullptr) return 0;
    DWORD count = 0;
    if (RegQueryInfoKeyA(key_, nullptr, nullptr, nullptr, &count, nullptr, nullptr, nullptr, nullptr, nullptr,
                         nullptr, nullptr) != ERROR_SUCCESS)
        return 0;
    return count;
}

// A name that does not fit leaves an empty buffer and gives false.
bool kRegKey::child(DWORD index, char* buffer, size_t capacity) {
    if (buffer == nullptr || capacity == 0) return false;
    buffer[0] = '\0';
    if (key_ == nullptr) return false;
    DWORD length = clamp_to_dword(capacity);
    if (RegEnumKeyExA(key_, index, buffer, &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) {
        buffer[0] = '\0';
        return false;
    }
    buffer[capacity - 1] = '\0';
    return true;
}
