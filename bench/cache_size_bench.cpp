// Cost of one read_cache_size call on the headless platform, and the
// file-system calls it makes.  The cache page calls it twice a second; the
// goal is 2 opens, 1 read, 1 seek (and the tell that takes the position),
// 2 closes, and well under 20 microseconds a call.
//
// The zr::fs calls are counted by wrapping them at link time
// (-Wl,--wrap=<symbol>, see bench/CMakeLists.txt): the product code is
// measured unchanged.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "pages/cache/cache_stats.h"
#include "platform/fileio.h"
#include "platform/headless/files.h"
#include "platform/headless/registry.h"
#include "settings/store.h"

namespace {

struct Counts {
    long open = 0, read = 0, seek = 0, tell = 0, close = 0;
};
Counts g_counts;

}  // namespace

// The link-time wrappers: count, then call the real zr::fs function.
extern "C" {
zr::fs::File* __real__ZN2zr2fs4openEPKcS2_(const char* path, const char* mode);
size_t __real__ZN2zr2fs4readEPNS0_4FileEPvm(zr::fs::File* f, void* buffer, size_t size);
bool __real__ZN2zr2fs4seekEPNS0_4FileEli(zr::fs::File* f, long offset, int whence);
long __real__ZN2zr2fs4tellEPNS0_4FileE(zr::fs::File* f);
void __real__ZN2zr2fs5closeEPNS0_4FileE(zr::fs::File* f);

zr::fs::File* __wrap__ZN2zr2fs4openEPKcS2_(const char* path, const char* mode) {
    ++g_counts.open;
    return __real__ZN2zr2fs4openEPKcS2_(path, mode);
}
size_t __wrap__ZN2zr2fs4readEPNS0_4FileEPvm(zr::fs::File* f, void* buffer, size_t size) {
    ++g_counts.read;
    return __real__ZN2zr2fs4readEPNS0_4FileEPvm(f, buffer, size);
}
bool __wrap__ZN2zr2fs4seekEPNS0_4FileEli(zr::fs::File* f, long offset, int whence) {
    ++g_counts.seek;
    return __real__ZN2zr2fs4seekEPNS0_4FileEli(f, offset, whence);
}
long __wrap__ZN2zr2fs4tellEPNS0_4FileE(zr::fs::File* f) {
    ++g_counts.tell;
    return __real__ZN2zr2fs4tellEPNS0_4FileE(f);
}
void __wrap__ZN2zr2fs5closeEPNS0_4FileE(zr::fs::File* f) {
    ++g_counts.close;
    __real__ZN2zr2fs5closeEPNS0_4FileE(f);
}
}

namespace {

namespace fs = std::filesystem;

// A cache directory C:\Cache on a fresh host directory, with an index
// naming a data file of `data_bytes`.
struct CacheFixture {
    fs::path root;
    explicit CacheFixture(long data_bytes) {
        std::string pattern = (fs::temp_directory_path() / "zr-bench-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) std::abort();
        root = pattern;
        fs::create_directories(root / "Cache");
        zr::headless::map_drive('C', root.string());
        zr::headless::registry_clear();
        zr::headless::registry_set_string(kProductKey, "cacheDir", "C:\\Cache");
        std::string index = "HEADER-12345cache0001.dat";
        index.resize(64, '\0');
        std::ofstream(root / "Cache" / "cache_data", std::ios::binary) << index;
        std::ofstream(root / "Cache" / "cache0001.dat", std::ios::binary).close();
        fs::resize_file(root / "Cache" / "cache0001.dat", static_cast<uintmax_t>(data_bytes));
    }
    ~CacheFixture() {
        std::error_code ignored;
        fs::remove_all(root, ignored);
        zr::headless::unmap_drives();
    }
};

void report_calls(benchmark::State& state) {
    const double calls = static_cast<double>(state.iterations());
    state.counters["opens"] = static_cast<double>(g_counts.open) / calls;
    state.counters["reads"] = static_cast<double>(g_counts.read) / calls;
    state.counters["seeks"] = static_cast<double>(g_counts.seek) / calls;
    state.counters["tells"] = static_cast<double>(g_counts.tell) / calls;
    state.counters["closes"] = static_cast<double>(g_counts.close) / calls;
}

// The page's timer call: registry read of the cache directory, the index,
// the data file.
void BM_read_cache_size(benchmark::State& state) {
    CacheFixture cache(5000000);
    if (read_cache_size() != 5000000) state.SkipWithError("unexpected size");
    g_counts = {};
    for (auto _ : state) benchmark::DoNotOptimize(read_cache_size());
    report_calls(state);
}
BENCHMARK(BM_read_cache_size)->Unit(benchmark::kMicrosecond);

// The file part alone, without the registry read.
void BM_read_cache_size_in(benchmark::State& state) {
    CacheFixture cache(5000000);
    g_counts = {};
    for (auto _ : state) benchmark::DoNotOptimize(read_cache_size_in("C:\\Cache"));
    report_calls(state);
}
BENCHMARK(BM_read_cache_size_in)->Unit(benchmark::kMicrosecond);

// The index is missing: one failed open, nothing else.
void BM_read_cache_size_missing_index(benchmark::State& state) {
    CacheFixture cache(0);
    fs::remove(cache.root / "Cache" / "cache_data");
    g_counts = {};
    for (auto _ : state) benchmark::DoNotOptimize(read_cache_size());
    report_calls(state);
}
BENCHMARK(BM_read_cache_size_missing_index)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
