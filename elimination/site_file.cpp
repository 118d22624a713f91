// userex.gui on disk.
#include "elimination/site_file.h"

#include <cstdio>
#include <cstring>
#include <string>

#include "elimination/site_codec.h"
#include "platform/safe_file.h"
#include "settings/context.h"
#include "settings/store.h"

bool data_file_path(const char* name, char* buffer, size_t capacity) {
    char directory[zr::fs::kDataPathCapacity] = {};
    if (!read_data_directory(directory, sizeof directory) || directory[0] == '\0') return false;
    int length = std::snprintf(buffer, capacity, "%s\\%s", directory, name);
    return length > 0 && static_cast<size_t>(length) < capacity;
}

zr::fs::File* open_user_site_file() {
    char path[zr::fs::kDataPathCapacity];
    if (!data_file_path("userex.gui", path, sizeof path)) return nullptr;
    return zr::fs::open(path, "rb");
}

void read_user_site_list(zr::fs::File* file) { read_site_list(file, g_settings.user_sites); }

bool write_user_site_list(zr::fs::File* file) { return write_site_list(file, g_settings.user_sites); }

void reload_user_site_list() {
    g_settings.user_sites.entries.clear();  // keeps its room for the reload
    zr::fs::File* file = open_user_site_file();
    if (!file) return;
    read_user_site_list(file);
    zr::fs::close(file);
}
