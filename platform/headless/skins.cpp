#include "platform/headless/skins.h"

#include <cstdlib>
#include <set>
#include <sstream>

#include "platform/fileio.h"

namespace zr::headless {

namespace {

struct SkinModule {
    SkinFile contents;
};

std::set<SkinModule*>& live_modules() {
    static std::set<SkinModule*> modules;
    return modules;
}

SkinModule* as_skin(HMODULE module) {
    auto* skin = reinterpret_cast<SkinModule*>(module);
    return live_modules().count(skin) != 0 ? skin : nullptr;
}

// A whole decimal number; false for anything else.
bool parse_id(const std::string& text, int* id) {
    if (text.empty() || text.size() > 9) return false;
    for (char c : text) {
        if (c < '0' || c > '9') return false;
    }
    *id = std::atoi(text.c_str());
    return true;
}

bool contains(const std::vector<int>& ids, int id) {
    for (int each : ids) {
        if (each == id) return true;
    }
    return false;
}

// Stands for an exported function's address; never called.
void skin_export_stand_in() {}

}  // namespace

std::optional<SkinFile> parse_skin_file(const std::string& text) {
    std::istringstream lines(text);
    std::string line;
    if (!std::getline(lines, line)) return std::nullopt;
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line != "ZRSKIN") return std::nullopt;
    SkinFile skin;
    while (std::getline(lines, line)) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (line.empty() || line[0] == '#') continue;
        const size_t blank = line.find(' ');
        if (blank == std::string::npos) return std::nullopt;
        const std::string kind = line.substr(0, blank);
        const std::string value = line.substr(blank + 1);
        int id = 0;
        if (kind == "icon" && parse_id(value, &id)) {
            skin.icons.push_back(id);
        } else if (kind == "bitmap" && parse_id(value, &id)) {
            skin.bitmaps.push_back(id);
        } else if (kind == "export" && !value.empty()) {
            skin.exports.push_back(value);
        } else {
            return std::nullopt;
        }
    }
    return skin;
}

HMODULE load_skin_module(const char* path) {
    if (path == nullptr) return nullptr;
    zr::fs::File* file = zr::fs::open(path, "rb");
    if (file == nullptr) return nullptr;
    std::string text;
    char chunk[512];
    size_t got = 0;
    // A skin file is a few lines; anything beyond 64 KiB is not one.
    while ((got = zr::fs::read(file, chunk, sizeof chunk)) > 0 && text.size() <= 65536)
        text.append(chunk, got);
    zr::fs::close(file);
    if (text.size() > 65536) return nullptr;
    std::optional<SkinFile> contents = parse_skin_file(text);
    if (!contents) return nullptr;
    auto* skin = new SkinModule{std::move(*contents)};
    live_modules().insert(skin);
    return reinterpret_cast<HMODULE>(skin);
}

bool is_skin_module(HMODULE module) { return as_skin(module) != nullptr; }

bool skin_has_icon(HMODULE module, int id) {
    SkinModule* skin = as_skin(module);
    return skin != nullptr && contains(skin->contents.icons, id);
}

bool skin_has_bitmap(HMODULE module, int id) {
    SkinModule* skin = as_skin(module);
    return skin != nullptr && contains(skin->contents.bitmaps, id);
}

FARPROC skin_export(HMODULE module, const char* name) {
    SkinModule* skin = as_skin(module);
    if (skin == nullptr || name == nullptr) return nullptr;
    for (const std::string& each : skin->contents.exports) {
        if (each == name) return reinterpret_cast<FARPROC>(&skin_export_stand_in);
    }
    return nullptr;
}

bool free_skin_module(HMODULE module) {
    SkinModule* skin = as_skin(module);
    if (skin == nullptr) return false;
    live_modules().erase(skin);
    delete skin;
    return true;
}

int live_skin_modules() { return static_cast<int>(live_modules().size()); }

}  // namespace zr::headless
