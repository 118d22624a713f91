// The index `cache_data` holds, from byte 12, the name of the cache's current
// data file (36 bytes, NUL-terminated or filling the field).  One call costs
// two opens, one read of at most 36 bytes and one seek to the end of the data
// file.  Both files are opened through zr::fs, whose opens deny nothing to
// other openers, so the proxy can keep writing them while the page watches.
//
// Sizes that do not fit: the result is a signed 32-bit number, so a data file
// of 2 GiB or more is reported as 0x7FFFFFFF (2,147,483,647 bytes, shown as
// 2047 MB): the largest size the result can carry, and never a negative or
// wrapped value.  Where the file layer itself cannot tell a position that
// large, the size is unknown and the result is -1 (the page keeps its text).
//
// Paths: each is built in 260 bytes; a path that would not fit is refused
// (-1) rather than cut, as a cut path would name another file.
#include "pages/cache/cache_stats.h"

#include <cstdio>
#include <string>

#include "platform/fileio.h"
#include "settings/store.h"

namespace {

constexpr long kNameOffset = 12;
constexpr size_t kNameField = 36;

// `dir` + "\" + `name` into `path`; false when it would not fit.
bool join_path(char (&path)[260], const char* dir, const char* name) {
    const int length = std::snprintf(path, sizeof path, "%s\\%s", dir, name);
    return length >= 0 && static_cast<size_t>(length) < sizeof path;
}

}  // namespace

int32_t read_cache_size_in(const char* cache_dir) {
    char path[260];
    if (!join_path(path, cache_dir, "cache_data")) return -1;
    zr::fs::File* index = zr::fs::open(path, "r");
    if (index == nullptr) return -1;
    char name[260] = {};
    if (zr::fs::seek(index, kNameOffset, SEEK_SET)) zr::fs::read(index, name, kNameField);
    zr::fs::close(index);

    // An index shorter than 12 bytes gives an empty name, which would name
    // the cache directory itself ("dir\"): that is no data file.
    if (name[0] == '\0') return -1;
    if (!join_path(path, cache_dir, name)) return -1;
    zr::fs::File* data = zr::fs::open(path, "r");
    if (data == nullptr) return -1;
    long size = -1;
    if (zr::fs::seek(data, 0, SEEK_END)) size = zr::fs::tell(data);
    zr::fs::close(data);

    if (size < 0) return -1;
    if (static_cast<unsigned long>(size) > static_cast<unsigned long>(INT32_MAX)) return INT32_MAX;
    return static_cast<int32_t>(size);
}

int32_t read_cache_size() { return read_cache_size_in(cache_directory().c_str()); }
