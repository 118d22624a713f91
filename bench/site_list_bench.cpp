// Read + canonical write of the user site list, per line, at 1k / 100k / 1M
// site lines: the time per line should stay flat.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>

#include "elimination/site_codec.h"
#include "elimination/site_file.h"

namespace {

std::string make_text(long lines) {
    std::string text;
    char line[64];
    for (long i = 0; i < lines; ++i) {
        int n = std::snprintf(line, sizeof line, "site%07ld.example.com %s\r\n", i, i % 3 ? "ap" : "b");
        text.append(line, static_cast<size_t>(n));
    }
    return text;
}

void BM_ParseAndFormat(benchmark::State& state) {
    const std::string text = make_text(state.range(0));
    for (auto _ : state) {
        auto entries = parse_site_text(text);
        std::string out = format_site_list(entries);
        benchmark::DoNotOptimize(out.data());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(text.size()));
}
BENCHMARK(BM_ParseAndFormat)->Arg(1000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

void BM_ReadWriteFiles(benchmark::State& state) {
    const std::string in = "/tmp/zr-bench-in.gui";
    const std::string out = "/tmp/zr-bench-out.gui";
    const std::string text = make_text(state.range(0));
    FILE* f = std::fopen(in.c_str(), "wb");
    std::fwrite(text.data(), 1, text.size(), f);
    std::fclose(f);
    for (auto _ : state) {
        UserSiteList list;
        zr::fs::File* r = zr::fs::open(in.c_str(), "rb");
        read_site_list(r, list);
        zr::fs::close(r);
        zr::fs::File* w = zr::fs::open(out.c_str(), "wb");
        write_site_list(w, list);
        zr::fs::close(w);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    std::remove(in.c_str());
    std::remove(out.c_str());
}
BENCHMARK(BM_ReadWriteFiles)->Arg(1000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
