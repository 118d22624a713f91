// The world of a scenario test on the headless platform: the in-memory
// registry, a drive letter mapped onto a fresh host directory per test, and
// the simulated windowing system.
#include "tests/driver/world.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>

#include "platform/headless/files.h"
#include "platform/headless/inhouse_headless.h"
#include "platform/headless/registry.h"
#include "platform/headless/ui.h"

namespace zr::test {

namespace {

namespace fs = std::filesystem;

constexpr char kDrive = 'Z';
constexpr char kAppClass[] = "Zephyrion";

struct WorldState {
    fs::path root;         // this process's directory, mapped as drive Z:
    fs::path dir;          // this test's data directory below it
    std::string dir_name;  // its Windows form
    unsigned serial = 0;
    HWND app = nullptr;
    std::vector<PostedMessage> posted;
};

WorldState& state() {
    static WorldState s;
    return s;
}

// Removes the process's directory when the tests end.
struct RootRemover {
    ~RootRemover() {
        std::error_code ignored;
        if (!state().root.empty()) fs::remove_all(state().root, ignored);
    }
};

const fs::path& process_root() {
    WorldState& s = state();
    if (s.root.empty()) {
        std::string pattern = (fs::temp_directory_path() / "zr-world-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) std::abort();
        s.root = pattern;
        static RootRemover remover;
    }
    zr::headless::map_drive(kDrive, s.root.string());
    return s.root;
}

void remove_data_dir() {
    WorldState& s = state();
    std::error_code ignored;
    if (!s.dir.empty()) fs::remove_all(s.dir, ignored);
    s.dir.clear();
    s.dir_name.clear();
}

LRESULT CALLBACK app_window_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    // The requests of the module; what the window gets at creation is not one.
    if (message >= WM_USER && window == state().app) state().posted.push_back({message, wparam, lparam});
    return DefWindowProcA(window, message, wparam, lparam);
}

}  // namespace

void world_reset() {
    WorldState& s = state();
    zr::headless::reset_ui();
    s.app = nullptr;
    s.posted.clear();
    zr::headless::registry_clear();
    zr::headless::clear_file_faults();
    zr::headless::clear_help_requests();
    zr::headless::clear_drive_sizes();
    remove_data_dir();
    set_nt_family(true);
    set_resource_module_missing(false);
}

void reg_create_key(const char* path) { zr::headless::registry_create_key(path); }
void reg_delete_tree(const char* path) { zr::headless::registry_delete_tree(path); }
bool reg_key_exists(const char* path) { return zr::headless::registry_key_exists(path); }

void reg_set_dword(const char* key, const char* name, uint32_t value) {
    zr::headless::registry_set_dword(key, name, value);
}

void reg_set_string(const char* key, const char* name, const char* value) {
    zr::headless::registry_set_string(key, name, value);
}

std::optional<uint32_t> reg_get_dword(const char* key, const char* name) {
    std::optional<DWORD> value = zr::headless::registry_get_dword(key, name);
    if (!value) return std::nullopt;
    return static_cast<uint32_t>(*value);
}

std::optional<std::string> reg_get_string(const char* key, const char* name) {
    return zr::headless::registry_get_string(key, name);
}

std::string data_dir() {
    WorldState& s = state();
    const fs::path& root = process_root();  // maps the drive, also after unmap_drives
    if (s.dir.empty()) {
        std::string name = "t" + std::to_string(++s.serial);
        s.dir = root / name;
        std::error_code ignored;
        fs::remove_all(s.dir, ignored);
        fs::create_directories(s.dir);
        s.dir_name = std::string(1, kDrive) + ":\\" + name;
    }
    return s.dir_name;
}

std::string data_path(const char* name) { return data_dir() + "\\" + name; }

std::optional<std::string> read_file(const std::string& path) {
    std::ifstream in(zr::headless::host_path(path.c_str()), std::ios::binary);
    if (!in) return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void write_file(const std::string& path, const std::string& bytes) {
    std::ofstream out(zr::headless::host_path(path.c_str()), std::ios::binary | std::ios::trunc);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

void remove_file(const std::string& path) {
    std::error_code ignored;
    fs::remove(zr::headless::host_path(path.c_str()), ignored);
}

void set_nt_family(bool nt) { zr::headless::set_winnt(nt); }

void set_resource_module_missing(bool missing) { zr::headless::set_resource_module_missing(missing); }

HWND create_app_window() {
    WorldState& s = state();
    if (s.app != nullptr && IsWindow(s.app)) return s.app;
    WNDCLASSA window_class{};
    window_class.lpfnWndProc = app_window_proc;
    window_class.lpszClassName = kAppClass;
    RegisterClassA(&window_class);  // fails harmlessly when it is registered already
    s.posted.clear();
    s.app = CreateWindowExA(0, kAppClass, "Zephyrion", WS_OVERLAPPEDWINDOW, 0, 0, 320, 200, nullptr, nullptr,
                            nullptr, nullptr);
    return s.app;
}

std::vector<PostedMessage> app_window_messages() {
    zr::headless::pump();
    return state().posted;
}

std::vector<std::string> help_requests() { return zr::headless::help_requests(); }

}  // namespace zr::test
