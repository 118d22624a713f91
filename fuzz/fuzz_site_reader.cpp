// Fuzzes the userex.gui reader.  Properties:
//  - the entries agree with a plain line-by-line reading of the same bytes;
//    in particular no site entry comes from a comment, and every site fits the format;
//  - read -> write -> read is a fixed point;
//  - feeding the bytes in blocks of any size gives the same entries.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "elimination/site_codec.h"

namespace {

void check(bool ok) {
    if (!ok) std::abort();
}

bool same(const std::vector<SiteEntry>& a, const std::vector<SiteEntry>& b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i) {
        if (a[i].kind != b[i].kind || a[i].flags != b[i].flags || a[i].name != b[i].name) return false;
    }
    return true;
}

// The slow, obvious reading: one line at a time.
void check_against_lines(const std::string& text, const std::vector<SiteEntry>& entries) {
    std::string data = text.substr(0, text.find('\x1a'));
    size_t at = 0;
    size_t index = 0;
    while (at < data.size()) {
        size_t lf = data.find('\n', at);
        bool ended = lf != std::string::npos;
        std::string line = data.substr(at, ended ? lf - at : std::string::npos);
        if (ended && !line.empty() && line.back() == '\r') line.pop_back();
        at = ended ? lf + 1 : data.size();
        check(index < entries.size());
        const SiteEntry& e = entries[index++];
        std::string before_hash = line.substr(0, line.find('#'));
        bool has_word = false;
        for (unsigned char c : before_hash) has_word = has_word || !is_white(c);
        if (!has_word || e.kind == kKeptLine) {
            check(e.kind == kKeptLine && e.flags == 0);
            check(e.name == line + (ended ? "\n" : ""));
        } else {
            check(e.kind == kSiteEntry && !e.name.empty());
            check(e.name.find('#') == std::string::npos);
            std::string encoded;
            append_encoded_name(encoded, e.name);
            check(before_hash.find(encoded) != std::string::npos);
            check((e.flags & 0xC000E000u) == 0);
            std::string written;
            append_site_entry(written, e, false);
            check(written.size() - 2 <= kMaxLineLength);
        }
    }
    check(index == entries.size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::string text(reinterpret_cast<const char*>(data), size);
    std::vector<SiteEntry> first = parse_site_text(text);
    check_against_lines(text, first);

    std::string written = format_site_list(first);
    std::vector<SiteEntry> second = parse_site_text(written);
    check(same(first, second));
    check(format_site_list(second) == written);

    size_t block = size == 0 ? 1 : 1 + data[0] % 17;
    SiteReadState state;
    std::vector<SiteEntry> streamed;
    for (size_t at = 0; at < size; at += block)
        feed_site_text(state, text.data() + at, std::min(block, size - at), streamed);
    finish_site_text(state, streamed);
    check(same(first, streamed));
    return 0;
}
