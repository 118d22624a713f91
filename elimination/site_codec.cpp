// The userex.gui line format (see site_codec.h).
#include "elimination/site_codec.h"

#include <array>
#include <bit>
#include <cstring>

const char kFlagOrder[28] = "oabprvdgxmlncsPBRVDGXAMLNCS";

namespace {

constexpr char kLowerLetters[] = "pbrvdgxamlncs";  // bits 0 to 12

struct FlagTable {
    std::array<uint32_t, 256> bits{};
    constexpr FlagTable() {
        for (int i = 0; i < 13; ++i) {
            unsigned char lower = static_cast<unsigned char>(kLowerLetters[i]);
            bits[lower] = 1u << i;
            bits[lower - 'a' + 'A'] = 1u << (i + 17);
        }
        bits['o'] = 1u << 16;
    }
};
constexpr FlagTable kFlags;

struct WhiteTable {
    std::array<bool, 256> white{};
    constexpr WhiteTable() {
        for (int c = 0x09; c <= 0x0D; ++c) white[c] = true;
        white[0x20] = true;
    }
};
constexpr WhiteTable kWhite;

constexpr char kCtrlZ = 0x1A;

}  // namespace

bool is_white(unsigned char c) { return kWhite.white[c]; }

uint32_t flag_bit(char letter) { return kFlags.bits[static_cast<unsigned char>(letter)]; }

uint32_t flags_from_word(std::string_view word) {
    uint32_t flags = 0;
    for (char c : word) flags |= kFlags.bits[static_cast<unsigned char>(c)];
    return flags;
}

void append_flag_letters(std::string& out, uint32_t flags) {
    char letters[sizeof kFlagOrder];
    size_t n = 0;
    for (const char* p = kFlagOrder; *p && flags; ++p) {
        uint32_t bit = flag_bit(*p);
        if (flags & bit) {
            letters[n++] = *p;
            flags &= ~bit;
        }
    }
    out.append(letters, n);
}

std::string decode_spaces(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (;;) {
        size_t at = text.find("%20");
        if (at == std::string_view::npos) {
            result.append(text);
            return result;
        }
        result.append(text.substr(0, at));
        result.push_back(' ');
        text.remove_prefix(at + 3);
    }
}

void append_encoded_name(std::string& out, std::string_view name) {
    for (;;) {
        size_t space = name.find(' ');
        if (space == std::string_view::npos) {
            out.append(name);
            return;
        }
        out.append(name.substr(0, space));
        out.append("%20");
        name.remove_prefix(space + 1);
    }
}

namespace {

size_t skip(std::string_view text, size_t i, bool white) {
    while (i < text.size() && is_white(static_cast<unsigned char>(text[i])) == white) ++i;
    return i;
}

}  // namespace

void parse_site_line(std::string_view text, bool has_line_end, std::vector<SiteEntry>& out) {
    SiteEntry& entry = out.emplace_back();
    std::string_view cut = text;
    if (const void* hash = std::memchr(cut.data(), '#', cut.size()))
        cut = cut.substr(0, static_cast<size_t>(static_cast<const char*>(hash) - cut.data()));
    size_t start = skip(cut, 0, true);
    if (start < cut.size()) {
        size_t end = skip(cut, start, false);
        std::string_view word = cut.substr(start, end - start);
        size_t flag_start = skip(cut, end, true);
        uint32_t flags = flags_from_word(cut.substr(flag_start, skip(cut, flag_start, false) - flag_start));
        // The encoded name is the word itself: this is the written form's length.
        if (word.size() + 28 <= kMaxLineLength ||
            word.size() + 1 + static_cast<size_t>(std::popcount(flags)) <= kMaxLineLength) {
            entry.kind = kSiteEntry;
            entry.flags = flags;
            if (word.find('%') == std::string_view::npos)
                entry.name = std::string(word);  // allocated at its exact size
            else
                entry.name = decode_spaces(word);
            return;
        }
    }
    // Kept line: the whole line, with "\n" standing for its line end.
    entry.name = std::string(text.size() + (has_line_end ? 1 : 0), '\n');
    if (!text.empty()) std::memcpy(entry.name.data(), text.data(), text.size());
}

namespace {

// Splits on LF; `text` ends before the LF, a CR right before it is dropped.
void emit_line(const char* begin, const char* lf, std::vector<SiteEntry>& out) {
    const char* end = lf;
    if (end > begin && end[-1] == '\r') --end;
    parse_site_line(std::string_view(begin, static_cast<size_t>(end - begin)), true, out);
}

}  // namespace

void feed_site_text(SiteReadState& state, const char* data, size_t size, std::vector<SiteEntry>& out) {
    if (state.stopped || size == 0) return;
    if (const void* z = std::memchr(data, kCtrlZ, size)) {
        size = static_cast<size_t>(static_cast<const char*>(z) - data);
        state.stopped = true;
    }
    const char* p = data;
    const char* end = data + size;
    if (!state.pending.empty()) {
        const char* lf = static_cast<const char*>(std::memchr(p, '\n', size));
        if (!lf) {
            state.pending.append(p, size);
            return;
        }
        state.pending.append(p, static_cast<size_t>(lf - p));
        emit_line(state.pending.data(), state.pending.data() + state.pending.size(), out);
        state.pending.clear();
        p = lf + 1;
    }
    while (p < end) {
        const char* lf = static_cast<const char*>(std::memchr(p, '\n', static_cast<size_t>(end - p)));
        if (!lf) {
            state.pending.assign(p, static_cast<size_t>(end - p));
            return;
        }
        emit_line(p, lf, out);
        p = lf + 1;
    }
}

void finish_site_text(SiteReadState& state, std::vector<SiteEntry>& out) {
    if (!state.pending.empty()) {
        // The last line has no line end: its CR (if any) is part of the line.
        parse_site_line(state.pending, false, out);
        state.pending.clear();
    }
}

std::vector<SiteEntry> parse_site_text(std::string_view text) {
    std::vector<SiteEntry> out;
    out.reserve(count_lines(text.data(), text.size()));
    SiteReadState state;
    feed_site_text(state, text.data(), text.size(), out);
    finish_site_text(state, out);
    return out;
}

size_t count_lines(const char* data, size_t size) {
    size_t lines = 0;
    const char* p = data;
    const char* end = data + size;
    while (p < end) {
        const char* lf = static_cast<const char*>(std::memchr(p, '\n', static_cast<size_t>(end - p)));
        ++lines;
        if (!lf) break;
        p = lf + 1;
    }
    return lines;
}

void append_site_entry(std::string& out, const SiteEntry& entry, bool more_follows) {
    if (entry.kind == kSiteEntry) {
        append_encoded_name(out, entry.name);
        out.push_back(' ');
        append_flag_letters(out, entry.flags);
        out.append("\r\n");
        return;
    }
    std::string_view text = entry.name;
    bool has_end = !text.empty() && text.back() == '\n';
    if (has_end) text.remove_suffix(1);
    out.append(text);
    if (has_end || more_follows) out.append("\r\n");
}

std::string format_site_list(const std::vector<SiteEntry>& entries) {
    size_t size = 0;
    for (const SiteEntry& entry : entries) size += entry.name.size() + 30;  // name, space, letters, CR LF
    std::string out;
    out.reserve(size);
    for (size_t i = 0; i < entries.size(); ++i) append_site_entry(out, entries[i], i + 1 < entries.size());
    return out;
}
