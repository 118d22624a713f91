// Fuzzes the maker-list merge (copy_exclude_ads) on real files.  The input is
// the destination's bytes, a 0xFF byte, and the source list's bytes.
// Properties: the destination keeps every byte it held; reading the result
// gives the destination's site entries followed by the source's site entries,
// and never a site entry that came from a comment.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "elimination/site_codec.h"
#include "platform/zrutil.h"

namespace {

void check(bool ok) {
    if (!ok) std::abort();
}

std::vector<SiteEntry> sites_of(const std::string& text) {
    std::vector<SiteEntry> sites;
    for (SiteEntry& e : parse_site_text(text)) {
        if (e.kind == kSiteEntry) sites.push_back(std::move(e));
    }
    return sites;
}

void put(const std::string& path, const std::string& bytes) {
    FILE* f = std::fopen(path.c_str(), "wb");
    check(f != nullptr);
    std::fwrite(bytes.data(), 1, bytes.size(), f);
    std::fclose(f);
}

std::string get(const std::string& path) {
    std::string bytes;
    FILE* f = std::fopen(path.c_str(), "rb");
    check(f != nullptr);
    char block[4096];
    size_t n;
    while ((n = std::fread(block, 1, sizeof block, f)) > 0) bytes.append(block, n);
    std::fclose(f);
    return bytes;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::string input(reinterpret_cast<const char*>(data), size);
    size_t split = input.find('\xff');
    bool has_destination = split != std::string::npos;
    std::string destination = has_destination ? input.substr(0, split) : "";
    std::string source = has_destination ? input.substr(split + 1) : input;
    // A Ctrl-Z ends what a reader sees; entries after it would be hidden.
    if (destination.find('\x1a') != std::string::npos) return 0;

    static const std::string dir = [] {
        // In memory where there is such a file system: the merge syncs its file.
        char shm[] = "/dev/shm/zr-merge-fuzz-XXXXXX";
        char tmp[] = "/tmp/zr-merge-fuzz-XXXXXX";
        char* pattern = access("/dev/shm", W_OK) == 0 ? shm : tmp;
        check(mkdtemp(pattern) != nullptr);
        static std::string made = pattern;
        std::atexit([] { std::filesystem::remove_all(made); });
        return made;
    }();
    std::string src = dir + "/excad.dat";
    std::string dst = dir + "/exclude.gui";
    put(src, source);
    if (has_destination)
        put(dst, destination);
    else
        std::remove(dst.c_str());

    check(copy_exclude_ads(src.data(), dst.data()) == 1);
    std::string result = get(dst);
    check(result.compare(0, destination.size(), destination) == 0);

    std::vector<SiteEntry> expected = sites_of(destination);
    for (SiteEntry& e : sites_of(source)) expected.push_back(std::move(e));
    std::vector<SiteEntry> got = sites_of(result);
    check(got.size() == expected.size());
    for (size_t i = 0; i < got.size(); ++i)
        check(got[i].name == expected[i].name && got[i].flags == expected[i].flags);
    return 0;
}
