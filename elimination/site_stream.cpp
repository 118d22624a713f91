// The user site list read from and written to an open file, in blocks.
#include <cstdio>
#include <cstring>
#include <string>

#include "elimination/site_codec.h"
#include "elimination/site_file.h"

namespace {

constexpr size_t kBlock = 1 << 16;

}  // namespace

void read_site_list(zr::fs::File* file, UserSiteList& list) {
    if (!file) return;
    std::string block(kBlock, '\0');
    // First pass: count the lines, so the list grows once, to its exact size.
    long start = zr::fs::tell(file);
    if (start >= 0) {
        size_t lines = 0;
        char last = '\n';
        for (;;) {
            size_t n = zr::fs::read(file, block.data(), block.size());
            if (n == 0) break;
            for (const char* p = block.data();
                 (p = static_cast<const char*>(std::memchr(p, '\n', block.data() + n - p))) != nullptr; ++p)
                ++lines;
            last = block[n - 1];
        }
        if (last != '\n') ++lines;
        list.entries.reserve(list.entries.size() + lines);
        if (!zr::fs::seek(file, start, SEEK_SET)) return;
    }
    SiteReadState state;
    for (;;) {
        size_t n = zr::fs::read(file, block.data(), block.size());
        if (n == 0) break;
        feed_site_text(state, block.data(), n, list.entries);
    }
    finish_site_text(state, list.entries);
}

bool write_site_list(zr::fs::File* file, const UserSiteList& list) {
    if (!file) return false;
    std::string out;
    out.reserve(kBlock + 4096);
    const size_t count = list.entries.size();
    for (size_t i = 0; i < count; ++i) {
        append_site_entry(out, list.entries[i], i + 1 < count);
        if (out.size() >= kBlock || i + 1 == count) {
            if (zr::fs::write(file, out.data(), out.size()) != out.size()) return false;
            out.clear();
        }
    }
    return true;
}
