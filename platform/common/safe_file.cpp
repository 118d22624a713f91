// Crash-safe replacement of data files over zr::fs.
#include "platform/safe_file.h"

#include <cstring>

namespace zr::fs {

bool begin_replace(Replacement& r, const char* target, const char* mode) {
    r = Replacement{};
    size_t length = target ? std::strlen(target) : 0;
    if (length == 0 || length >= sizeof r.target) return false;
    std::memcpy(r.target, target, length + 1);
    std::memcpy(r.temp, target, length);
    std::memcpy(r.temp + length, ".new", 5);
    r.file = open(r.temp, mode);
    return r.file != nullptr;
}

bool write_all(Replacement& r, const void* data, size_t size) {
    if (!r.file || r.failed) return false;
    if (size != 0 && write(r.file, data, size) != size) r.failed = true;
    return !r.failed;
}

bool commit_replace(Replacement& r) {
    if (!r.file) return false;
    bool ok = !r.failed && flush(r.file) && sync(r.file);
    close(r.file);
    r.file = nullptr;
    ok = ok && replace_file(r.temp, r.target);
    if (!ok) delete_file(r.temp);
    r.failed = !ok;
    return ok;
}

void abandon_replace(Replacement& r) {
    if (!r.file) return;
    close(r.file);
    r.file = nullptr;
    delete_file(r.temp);
}

bool copy_file_safely(const char* source, const char* target) {
    File* in = open(source, "rb");
    if (!in) return false;
    Replacement r;
    bool ok = begin_replace(r, target);
    char block[65536];
    while (ok) {
        size_t n = read(in, block, sizeof block);
        if (n == 0) break;
        ok = write_all(r, block, n);
    }
    close(in);
    if (!ok) {
        abandon_replace(r);
        return false;
    }
    return commit_replace(r);
}

}  // namespace zr::fs
