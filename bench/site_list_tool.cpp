// Command-line driver for the site-list measurements of run_site_list_bench.sh:
//   make <lines> <file>      writes a userex.gui of <lines> site lines
//   readwrite <in> <out>     reads <in> into a list and writes it to <out>
//   apply <dir>              one apply with all three switches on, over the
//                            data directory <dir> (userex.gui, excad.dat,
//                            aggressive.dat): reload, rebuild, reload
//   peak <file>              reads <file>; prints the growth of the peak
//                            resident size in bytes
#include <sys/resource.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "elimination/elimination_files.h"
#include "elimination/site_file.h"
#include "platform/headless/files.h"
#include "platform/headless/registry.h"
#include "settings/context.h"
#include "settings/store.h"

namespace {

long peak_kib() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

int make(long lines, const char* path) {
    FILE* f = std::fopen(path, "wb");
    if (!f) return 1;
    static const char* const kFlags[] = {"p", "ap", "b", "d", "", "oa", "pS"};
    for (long i = 0; i < lines; ++i) {
        if (i % 50 == 0) std::fprintf(f, "# block %ld\r\n", i / 50);
        std::fprintf(f, "site%07ld.example.com %s\r\n", i, kFlags[i % 7]);
    }
    return std::fclose(f) == 0 ? 0 : 1;
}

int readwrite(const char* in, const char* out) {
    UserSiteList list;
    zr::fs::File* r = zr::fs::open(in, "rb");
    if (!r) return 1;
    read_site_list(r, list);
    zr::fs::close(r);
    zr::fs::File* w = zr::fs::open(out, "wb");
    if (!w) return 1;
    bool ok = write_site_list(w, list);
    zr::fs::close(w);
    return ok ? 0 : 1;
}

int apply(const char* dir) {
    zr::headless::map_drive('C', dir);
    zr::headless::registry_set_string(kSettingsKey, "proxy_path", "C:\\");
    zr::headless::registry_set_dword(kSettingsKey, "site_elimination", 1);
    g_settings.working.ad_list_on = 1;
    g_settings.working.aggressive_elimination = 1;
    reload_user_site_list();
    write_elimination_files();
    reload_user_site_list();
    return g_settings.user_sites.entries.empty() ? 1 : 0;
}

int peak(const char* path) {
    long before = peak_kib();
    UserSiteList list;
    zr::fs::File* r = zr::fs::open(path, "rb");
    if (!r) return 1;
    read_site_list(r, list);
    zr::fs::close(r);
    std::printf("%ld %zu\n", (peak_kib() - before) * 1024, list.entries.size());
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 4 && !std::strcmp(argv[1], "make")) return make(std::atol(argv[2]), argv[3]);
    if (argc == 4 && !std::strcmp(argv[1], "readwrite")) return readwrite(argv[2], argv[3]);
    if (argc == 3 && !std::strcmp(argv[1], "apply")) return apply(argv[2]);
    if (argc == 3 && !std::strcmp(argv[1], "peak")) return peak(argv[2]);
    std::fprintf(stderr, "usage: site_list_tool make|readwrite|apply|peak ...\n");
    return 2;
}
