// Runner hooks of the headless world: the simulated modal loops, message
// boxes and open-file dialogs call the scripted user directly.
#include <cstring>
#include <string>

#include "platform/headless/ui.h"
#include "tests/driver/runner_hooks.h"

namespace zr::test::hooks {

namespace {

// What a real open-file dialog leaves in the record for `path`: the full
// path, the offset of the file name and of its extension (0 when none).
bool fill_open_file(OPENFILENAMEA* ofn, const std::string& path) {
    if (path.empty() || ofn->lpstrFile == nullptr) return false;
    if (path.size() + 1 > ofn->nMaxFile) return false;  // the buffer is too small: the dialog fails
    std::memcpy(ofn->lpstrFile, path.c_str(), path.size() + 1);
    size_t name = path.find_last_of("\\/:");
    name = name == std::string::npos ? 0 : name + 1;
    size_t dot = path.find_last_of('.');
    ofn->nFileOffset = static_cast<WORD>(name);
    ofn->nFileExtension = static_cast<WORD>(dot != std::string::npos && dot >= name ? dot + 1 : 0);
    return true;
}

}  // namespace

void install(const Handlers& handlers) {
    zr::headless::set_modal_hook(handlers.on_modal);
    zr::headless::set_message_box_hook(handlers.on_box);
    auto choose = handlers.on_open_file;
    zr::headless::set_open_file_hook([choose](OPENFILENAMEA* ofn) {
        if (!choose) return false;
        return fill_open_file(ofn, choose(ofn->hwndOwner));
    });
}

void uninstall() {
    zr::headless::set_modal_hook(nullptr);
    zr::headless::set_message_box_hook(nullptr);
    zr::headless::set_open_file_hook(nullptr);
}

bool modal_ended(HWND modal) { return !IsWindow(modal); }

void let_time_pass(int ms) {
    if (ms > 0) zr::headless::advance_time(static_cast<unsigned>(ms));
}

}  // namespace zr::test::hooks
