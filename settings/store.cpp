#include "settings/store.h"

#include <cstring>

#include "platform/zrutil.h"

DWORD read_dword(const char* key, const char* name, DWORD fallback) {
    DWORD value = fallback;
    kRegKey reg;
    if (reg.Open(HKEY_LOCAL_MACHINE, key, kFullAccess)) {
        reg.GetDWORD(name, &value);
        reg.Close();
    }
    return value;
}

void write_dword(const char* key, const char* name, DWORD value) {
    kRegKey reg;
    if (reg.Open(HKEY_LOCAL_MACHINE, key, kFullAccess)) {
        reg.SetDWORD(name, value);
        reg.Close();
    }
}

bool read_string(const char* key, const char* name, char* buffer, size_t capacity) {
    kRegKey reg;
    if (!reg.Open(HKEY_LOCAL_MACHINE, key, kFullAccess)) return false;
    bool read = reg.GetString(name, buffer, capacity);
    reg.Close();
    return read;
}

bool read_data_directory(char* buffer, size_t capacity) {
    return read_string(kSettingsKey, "proxy_path", buffer, capacity);
}

std::string cache_directory() {
    char value[260] = {};
    if (!read_string(kProductKey, "cacheDir", value, sizeof value)) value[0] = '\0';
    return value;
}

std::string cache_drive_root() {
    char value[1024] = {};
    if (!read_string(kProductKey, "cacheDir", value, sizeof value)) value[0] = '\0';
    std::string root = value;
    const size_t slash = root.find('\\');
    if (slash != std::string::npos) root.resize(slash + 1);
    return root;
}
