// The world of a scenario test on Windows (under Wine in practice): the real
// registry of the prefix, real files in a fresh directory per test, real
// windows.  The system family is switched with ZR_WINDOWS_FAMILY and help
// requests are logged through ZR_HELP_LOG (see platform/win32/system.cpp).
#include "tests/driver/world.h"

#include <cstdio>
#include <cstring>
#include <string>

namespace zr::test {
namespace {

const char* const kProductRoot = "SOFTWARE\\Quillmark";
const char* const kStackKeys[] = {
    "System\\CurrentControlSet\\Services\\VxD\\MSTCP",
    "System\\CurrentControlSet\\Services\\Class\\NetTrans",
};
const char* const kResourceModule = "zrres.dll";

struct WorldState {
    std::string dir;         // this test's data directory
    std::string saved_path;  // PATH while the resource module is hidden
    bool module_hidden = false;
    HWND app = nullptr;
    std::vector<PostedMessage> posted;
    unsigned serial = 0;
};

WorldState& state() {
    static WorldState s;
    return s;
}

std::string temp_root() {
    char buffer[MAX_PATH];
    const DWORD length = GetTempPathA(sizeof buffer, buffer);
    std::string root =
        (length > 0 && length < sizeof buffer) ? std::string(buffer, length) : std::string("C:\\");
    if (root.back() != '\\') root += '\\';
    return root + "zr-tests";
}

void remove_tree(const std::string& dir) {
    WIN32_FIND_DATAA found;
    HANDLE search = FindFirstFileA((dir + "\\*").c_str(), &found);
    if (search != INVALID_HANDLE_VALUE) {
        do {
            const std::string name = found.cFileName;
            if (name == "." || name == "..") continue;
            const std::string path = dir + "\\" + name;
            if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
                remove_tree(path);
            } else {
                SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
                DeleteFileA(path.c_str());
            }
        } while (FindNextFileA(search, &found));
        FindClose(search);
    }
    RemoveDirectoryA(dir.c_str());
}

LRESULT CALLBACK app_window_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message >= WM_USER && window == state().app) state().posted.push_back({message, wparam, lparam});
    return DefWindowProcA(window, message, wparam, lparam);
}

// Dialogs, sheets and application windows a failed test left open.
BOOL CALLBACK destroy_leftover(HWND window, LPARAM) {
    char name[64] = {};
    GetClassNameA(window, name, sizeof name);
    if (std::strcmp(name, "#32770") == 0 || std::strcmp(name, "Zephyrion") == 0) DestroyWindow(window);
    return TRUE;
}

void pump_app_messages() {
    MSG msg;
    while (state().app != nullptr && PeekMessageA(&msg, state().app, 0, 0, PM_REMOVE)) {
        TranslateMessage(&msg);
        DispatchMessageA(&msg);
    }
}

std::optional<std::string> query_value(const char* key, const char* name, DWORD* type) {
    HKEY handle;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, key, 0, KEY_READ, &handle) != ERROR_SUCCESS) return std::nullopt;
    DWORD size = 0;
    std::optional<std::string> result;
    if (RegQueryValueExA(handle, name, nullptr, type, nullptr, &size) == ERROR_SUCCESS) {
        std::string data(size, '\0');
        if (RegQueryValueExA(handle, name, nullptr, type, reinterpret_cast<BYTE*>(data.data()), &size) ==
            ERROR_SUCCESS) {
            data.resize(size);
            result = data;
        }
    }
    RegCloseKey(handle);
    return result;
}

}  // namespace

void world_reset() {
    WorldState& s = state();
    // Windows left behind by a failed test, then the application window.
    EnumThreadWindows(GetCurrentThreadId(), destroy_leftover, 0);
    s.app = nullptr;
    s.posted.clear();

    reg_delete_tree(kProductRoot);
    for (const char* key : kStackKeys) reg_delete_tree(key);
    reg_create_key(kStackKeys[0]);  // Wine's prefix has this key, empty

    const std::string root = temp_root();
    if (!s.dir.empty()) remove_tree(s.dir);
    CreateDirectoryA(root.c_str(), nullptr);
    char name[64];
    std::snprintf(name, sizeof name, "\\t%lu-%u", GetCurrentProcessId(), ++s.serial);
    s.dir = root + name;
    remove_tree(s.dir);
    CreateDirectoryA(s.dir.c_str(), nullptr);

    const std::string help_log = s.dir + ".help";
    DeleteFileA(help_log.c_str());
    SetEnvironmentVariableA("ZR_HELP_LOG", help_log.c_str());

    set_nt_family(true);
    set_resource_module_missing(false);
}

void reg_create_key(const char* path) {
    HKEY handle;
    if (RegCreateKeyExA(HKEY_LOCAL_MACHINE, path, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &handle, nullptr) ==
        ERROR_SUCCESS)
        RegCloseKey(handle);
}

void reg_delete_tree(const char* path) {
    HKEY handle;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, path, 0, KEY_ALL_ACCESS, &handle) != ERROR_SUCCESS) return;
    RegDeleteTreeA(handle, nullptr);
    RegCloseKey(handle);
    RegDeleteKeyA(HKEY_LOCAL_MACHINE, path);
}

bool reg_key_exists(const char* path) {
    HKEY handle;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, path, 0, KEY_READ, &handle) != ERROR_SUCCESS) return false;
    RegCloseKey(handle);
    return true;
}

void reg_set_dword(const char* key, const char* name, uint32_t value) {
    HKEY handle;
    if (RegCreateKeyExA(HKEY_LOCAL_MACHINE, key, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &handle, nullptr) !=
        ERROR_SUCCESS)
        return;
    const DWORD data = value;
    RegSetValueExA(handle, name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&data), sizeof data);
    RegCloseKey(handle);
}

void reg_set_string(const char* key, const char* name, const char* value) {
    HKEY handle;
    if (RegCreateKeyExA(HKEY_LOCAL_MACHINE, key, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &handle, nullptr) !=
        ERROR_SUCCESS)
        return;
    RegSetValueExA(handle, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value),
                   static_cast<DWORD>(std::strlen(value) + 1));
    RegCloseKey(handle);
}

std::optional<uint32_t> reg_get_dword(const char* key, const char* name) {
    DWORD type = 0;
    const std::optional<std::string> data = query_value(key, name, &type);
    if (!data || type != REG_DWORD || data->size() != sizeof(uint32_t)) return std::nullopt;
    uint32_t value;
    std::memcpy(&value, data->data(), sizeof value);
    return value;
}

std::optional<std::string> reg_get_string(const char* key, const char* name) {
    DWORD type = 0;
    std::optional<std::string> data = query_value(key, name, &type);
    if (!data || (type != REG_SZ && type != REG_EXPAND_SZ)) return std::nullopt;
    const size_t end = data->find('\0');
    if (end != std::string::npos) data->resize(end);
    return data;
}

std::string data_dir() {
    if (state().dir.empty()) world_reset();
    return state().dir;
}

std::string data_path(const char* name) { return data_dir() + "\\" + name; }

std::optional<std::string> read_file(const std::string& path) {
    FILE* in = std::fopen(path.c_str(), "rb");
    if (in == nullptr) return std::nullopt;
    std::string bytes;
    char chunk[4096];
    size_t got;
    while ((got = std::fread(chunk, 1, sizeof chunk, in)) > 0) bytes.append(chunk, got);
    std::fclose(in);
    return bytes;
}

void write_file(const std::string& path, const std::string& bytes) {
    FILE* out = std::fopen(path.c_str(), "wb");
    if (out == nullptr) return;
    std::fwrite(bytes.data(), 1, bytes.size(), out);
    std::fclose(out);
}

void remove_file(const std::string& path) { DeleteFileA(path.c_str()); }

void set_nt_family(bool nt) { SetEnvironmentVariableA("ZR_WINDOWS_FAMILY", nt ? nullptr : "9x"); }

// The module loads the resource module by its bare name through the library
// search.  Hiding it: drop every reference this process holds, then take the
// directories that hold it off PATH.
void set_resource_module_missing(bool missing) {
    WorldState& s = state();
    if (missing && !s.module_hidden) {
        for (int guard = 0; guard < 1000; ++guard) {
            HMODULE loaded = GetModuleHandleA(kResourceModule);
            if (loaded == nullptr || !FreeLibrary(loaded)) break;
        }
        char buffer[32768];
        const DWORD length = GetEnvironmentVariableA("PATH", buffer, sizeof buffer);
        s.saved_path = (length > 0 && length < sizeof buffer) ? std::string(buffer, length) : std::string();
        std::string kept;
        size_t start = 0;
        while (start <= s.saved_path.size()) {
            size_t end = s.saved_path.find(';', start);
            if (end == std::string::npos) end = s.saved_path.size();
            const std::string entry = s.saved_path.substr(start, end - start);
            const std::string candidate = entry + "\\" + kResourceModule;
            if (!entry.empty() && GetFileAttributesA(candidate.c_str()) == INVALID_FILE_ATTRIBUTES)
                kept += (kept.empty() ? "" : ";") + entry;
            start = end + 1;
        }
        SetEnvironmentVariableA("PATH", kept.c_str());
        s.module_hidden = true;
    } else if (!missing && s.module_hidden) {
        SetEnvironmentVariableA("PATH", s.saved_path.c_str());
        s.module_hidden = false;
    }
}

HWND create_app_window() {
    WorldState& s = state();
    static bool registered = false;
    if (!registered) {
        WNDCLASSA window_class{};
        window_class.lpfnWndProc = app_window_proc;
        window_class.hInstance = GetModuleHandleA(nullptr);
        window_class.lpszClassName = "Zephyrion";
        window_class.hCursor = LoadCursor(nullptr, IDC_ARROW);
        registered = RegisterClassA(&window_class) != 0;
    }
    if (s.app == nullptr || !IsWindow(s.app)) {
        s.app =
            CreateWindowExA(0, "Zephyrion", "Zephyrion", WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, CW_USEDEFAULT,
                            320, 200, nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
        s.posted.clear();
    }
    return s.app;
}

std::vector<PostedMessage> app_window_messages() {
    pump_app_messages();
    return state().posted;
}

std::vector<std::string> help_requests() {
    std::vector<std::string> requests;
    const std::optional<std::string> log = read_file(state().dir + ".help");
    if (!log) return requests;
    size_t start = 0;
    while (start < log->size()) {
        size_t end = log->find('\n', start);
        if (end == std::string::npos) end = log->size();
        requests.push_back(log->substr(start, end - start));
        start = end + 1;
    }
    return requests;
}

}  // namespace zr::test
