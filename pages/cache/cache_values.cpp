#include "pages/cache/cache_values.h"

#include <cstdio>
#include <cstring>

int cache_percentage(uint32_t size_mb, uint32_t drive_mb) {
    if (drive_mb == 0) return 0;
    float percent = static_cast<float>(size_mb) * 100.0f / static_cast<float>(drive_mb) + 0.5f;
    if (percent > 100.0f) percent = 100.0f;
    if (percent < 0.0f) percent = 0.0f;
    return static_cast<int>(percent);
}

uint32_t cache_size_for_position(uint32_t position, uint32_t drive_mb) { return position * drive_mb / 100u; }

void format_cache_bytes(int32_t bytes, char* out, size_t capacity) {
    const unsigned long kb = static_cast<unsigned long>(static_cast<uint32_t>(bytes) >> 10);
    if (kb < 1024)
        std::snprintf(out, capacity, "%lu KB", kb);
    else
        std::snprintf(out, capacity, "%lu MB", kb >> 10);
}

const char* skin_file_name(const char* path) {
    const char* slash = std::strrchr(path, '\\');
    return slash != nullptr ? slash + 1 : path;
}

const char* build_number_text(const char* value) {
    const char* found = std::strstr(value, "build");
    return found != nullptr ? found + 5 : nullptr;
}

bool same_path_ignoring_case(const char* a, const char* b) {
    auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    for (; *a != '\0' && *b != '\0'; ++a, ++b) {
        if (lower(*a) != lower(*b)) return false;
    }
    return *a == *b;
}
