// The in-house pieces that ask the running Windows system: the system
// family, drive sizes and the help page.
//
// Environment switches (read at every call):
//   ZR_WINDOWS_FAMILY=9x  is_this_winnt answers false, as on Windows 95/98/Me,
//                         so the 9x-only paths can be run on an NT system.
//   ZR_HELP_LOG=<file>    show_help_file appends the requested file name (an
//                         empty line for the main page) to <file> instead of
//                         opening a browser; the end-to-end tests use it.
#include <cstdio>
#include <cstring>

#include "platform/win.h"
#include "platform/zrinfo.h"
#include "platform/zrutil.h"
// clang-format off
#include <shellapi.h>  // after <windows.h>
// clang-format on

namespace {

// Copies environment variable `name` into `buffer`; false when it is unset
// or does not fit.
bool read_environment(const char* name, char* buffer, DWORD capacity) {
    const DWORD length = GetEnvironmentVariableA(name, buffer, capacity);
    return length > 0 && length < capacity;
}

// The directory of the module that holds this code, with a trailing
// backslash; empty when it cannot be found.
void module_directory(char* buffer, DWORD capacity) {
    buffer[0] = '\0';
    HMODULE self = nullptr;
    if (!GetModuleHandleExA(
            GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
            reinterpret_cast<LPCSTR>(&show_help_file), &self))
        return;
    const DWORD length = GetModuleFileNameA(self, buffer, capacity);
    if (length == 0 || length >= capacity) {
        buffer[0] = '\0';
        return;
    }
    char* slash = std::strrchr(buffer, '\\');
    if (slash == nullptr)
        buffer[0] = '\0';
    else
        slash[1] = '\0';
}

}  // namespace

bool is_this_winnt() {
    char family[8];
    if (read_environment("ZR_WINDOWS_FAMILY", family, sizeof family) && lstrcmpiA(family, "9x") == 0)
        return false;
    OSVERSIONINFOA version{};
    version.dwOSVersionInfoSize = sizeof version;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
    if (!GetVersionExA(&version)) return (GetVersion() & 0x80000000u) == 0;
#pragma GCC diagnostic pop
    return version.dwPlatformId == VER_PLATFORM_WIN32_NT;
}

bool get_fixed_drive_info(const char* root, DWORD* total_mb, DWORD* free_mb) {
    if (root == nullptr || root[0] == '\0') return false;
    ULARGE_INTEGER available{}, total{}, total_free{};
    if (!GetDiskFreeSpaceExA(root, &available, &total, &total_free)) return false;
    const unsigned long long kMegabyte = 1024ull * 1024ull;
    const unsigned long long total_value = total.QuadPart / kMegabyte;
    const unsigned long long free_value = total_free.QuadPart / kMegabyte;
    if (total_mb != nullptr)
        *total_mb = total_value > 0xFFFFFFFFull ? 0xFFFFFFFFu : static_cast<DWORD>(total_value);
    if (free_mb != nullptr)
        *free_mb = free_value > 0xFFFFFFFFull ? 0xFFFFFFFFu : static_cast<DWORD>(free_value);
    return true;
}

void show_help_file(const char* file) {
    const char* name = (file != nullptr && file[0] != '\0') ? file : "zrsettings.html";

    char log[MAX_PATH];
    if (read_environment("ZR_HELP_LOG", log, sizeof log)) {
        FILE* out = std::fopen(log, "ab");
        if (out != nullptr) {
            std::fprintf(out, "%s\n", file != nullptr ? file : "");
            std::fclose(out);
        }
        return;
    }

    // The help pages lie next to the module; a name that does not fit is
    // not opened.
    char path[MAX_PATH];
    module_directory(path, sizeof path);
    if (std::strlen(path) + std::strlen(name) >= sizeof path) return;
    std::strcat(path, name);
    ShellExecuteA(nullptr, "open", path, nullptr, nullptr, SW_SHOWNORMAL);
}
