// The userex.gui line format, as pure functions over bytes.  The same format
// serves the maker's lists (excad.dat, aggressive.dat) and exclude.gui.
//
// Reading rules:
//  - Lines end in LF; one CR directly before the LF belongs to the line end.
//    A kept line stores its line end as a single "\n" (the file's CR LF or LF).
//  - A byte 0x1A (Ctrl-Z) ends the text, as the C runtime's text mode reads it.
//  - A line is at most kMaxLineLength characters, line end excluded.  A longer
//    line is outside the format; the reader still takes it as one line (never
//    in pieces), so no tail of a long comment can turn into a site of its own.
//  - The part before the first "#" decides: no word -> kept line (the whole
//    line, line end included); otherwise the first word is the site name with
//    "%20" decoded, the second word (if any) the flag word.  A site whose
//    written form (encoded name, space, flag letters) would not fit in
//    kMaxLineLength characters is kept whole as a kept line instead: every
//    site the reader yields can be written back within the format and reads
//    back the same.
// Writing rules: site entry -> encoded name, one space, the flag letters in the
// fixed order, CR LF.  Kept line -> its text, CR LF for its "\n" line end.  A
// kept line without a line end is given one when anything follows it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "elimination/site_list.h"

constexpr size_t kMaxLineLength = 2046;  // characters, line end excluded
constexpr size_t kLinePiece = 2047;      // the reader's piece: a line and its line end

// The 27 flag letters in written order, and each letter's bit.
extern const char kFlagOrder[28];
uint32_t flag_bit(char letter);  // 0 for a character that is no flag letter
uint32_t flags_from_word(std::string_view word);
// Appends the letters of `flags` in written order.
void append_flag_letters(std::string& out, uint32_t flags);

// "%20" -> one space, scanning from the left without overlap.
std::string decode_spaces(std::string_view text);
// One space -> "%20".
void append_encoded_name(std::string& out, std::string_view name);

bool is_white(unsigned char c);

// Turns one line (`text` without its line end) into an entry appended to `out`.
void parse_site_line(std::string_view text, bool has_line_end, std::vector<SiteEntry>& out);

// Streaming reader: feed the file's bytes in blocks of any size, then finish.
struct SiteReadState {
    std::string pending;   // the start of a line that continues in the next block
    bool stopped = false;  // a Ctrl-Z was seen; the rest is ignored
};
void feed_site_text(SiteReadState& state, const char* data, size_t size, std::vector<SiteEntry>& out);
void finish_site_text(SiteReadState& state, std::vector<SiteEntry>& out);
// The whole text at once.
std::vector<SiteEntry> parse_site_text(std::string_view text);

// Number of entries the text will give at most (for reserving).
size_t count_lines(const char* data, size_t size);

// Appends the written form of one entry.  `more_follows` gives a kept line
// without a line end its CR LF.
void append_site_entry(std::string& out, const SiteEntry& entry, bool more_follows);
std::string format_site_list(const std::vector<SiteEntry>& entries);
