// The in-house pieces that differ by world, headless: the system family
// comes from the simulated world, drive sizes from tests or the host
// directory a drive is mapped to, and help requests are only recorded.
#include "platform/headless/inhouse_headless.h"

#include <sys/statvfs.h>

#include <map>

#include "platform/headless/files.h"
#include "platform/headless/ui.h"
#include "platform/zrinfo.h"
#include "platform/zrutil.h"

namespace zr::headless {

namespace {

struct DriveSize {
    DWORD total_mb;
    DWORD free_mb;
};

std::map<char, DriveSize>& drive_sizes() {
    static std::map<char, DriveSize> sizes;
    return sizes;
}

std::vector<std::string>& help_log() {
    static std::vector<std::string> log;
    return log;
}

// The upper-case drive letter of "X:" or "X:\"; 0 for anything else.
char drive_letter(const char* root) {
    if (root == nullptr) return 0;
    char letter = root[0];
    if (letter >= 'a' && letter <= 'z') letter = static_cast<char>(letter - 'a' + 'A');
    if (letter < 'A' || letter > 'Z' || root[1] != ':') return 0;
    if (root[2] == '\0' || ((root[2] == '\\' || root[2] == '/') && root[3] == '\0')) return letter;
    return 0;
}

DWORD megabytes(unsigned long long blocks, unsigned long long block_size) {
    const unsigned long long mb = blocks * block_size / (1024ull * 1024ull);
    return mb > 0xFFFFFFFFull ? 0xFFFFFFFFu : static_cast<DWORD>(mb);
}

}  // namespace

void set_drive_size(const char* root, DWORD total_mb, DWORD free_mb) {
    if (const char letter = drive_letter(root)) drive_sizes()[letter] = DriveSize{total_mb, free_mb};
}

void clear_drive_sizes() { drive_sizes().clear(); }

std::vector<std::string> help_requests() { return help_log(); }

void clear_help_requests() { help_log().clear(); }

}  // namespace zr::headless

bool is_this_winnt() { return zr::headless::winnt(); }

// Only drive roots are answered: a size set by a test, else the file system
// of the host directory the drive is mapped to.  An unmapped drive is
// unknown.
bool get_fixed_drive_info(const char* root, DWORD* total_mb, DWORD* free_mb) {
    const char letter = zr::headless::drive_letter(root);
    if (letter == 0) return false;
    DWORD total = 0, free = 0;
    auto& sizes = zr::headless::drive_sizes();
    if (auto it = sizes.find(letter); it != sizes.end()) {
        total = it->second.total_mb;
        free = it->second.free_mb;
    } else {
        const char drive_root[] = {letter, ':', '\\', '\0'};
        struct statvfs info {};
        if (statvfs(zr::headless::host_path(drive_root).c_str(), &info) != 0) return false;
        total = zr::headless::megabytes(info.f_blocks, info.f_frsize);
        free = zr::headless::megabytes(info.f_bfree, info.f_frsize);
    }
    if (total_mb != nullptr) *total_mb = total;
    if (free_mb != nullptr) *free_mb = free;
    return true;
}

void show_help_file(const char* file) { zr::headless::help_log().push_back(file != nullptr ? file : ""); }
