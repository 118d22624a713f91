// The numbers and texts of the cache page, as pure functions.
#pragma once

#include <cstddef>
#include <cstdint>

// Lowest and highest position of the cache-size track bar (percent of the drive).
inline constexpr int kTrackMin = 3;
inline constexpr int kTrackMax = 90;

// The cache size as a whole percentage of the drive: a 32-bit float,
// size * 100 / drive + 0.5, held to 0..100 and truncated, so it rounds to the
// nearest percent.  A drive size of 0 (unknown) gives 0: a share of an
// unknown drive means nothing, and nothing is divided by zero.
int cache_percentage(uint32_t size_mb, uint32_t drive_mb);

// The cache size for a track-bar position: position * drive / 100 in
// unsigned 32-bit arithmetic (the division drops the rest; a product beyond
// 32 bits wraps, as the record's field does).
uint32_t cache_size_for_position(uint32_t position, uint32_t drive_mb);

// The current cache size as shown: bytes / 1024 below 1,024 gives "%lu KB",
// otherwise "%lu MB" of bytes / 1,048,576 (both rounded down).  `bytes` must
// not be negative.
void format_cache_bytes(int32_t bytes, char* out, size_t capacity);

// The file name of a path: the text behind its last backslash, or the whole
// path when it has none.
const char* skin_file_name(const char* path);

// The text that follows the first "build" (case matters) in `value`, blanks
// included; null when there is none.
const char* build_number_text(const char* value);

// True when two paths are the same text apart from letter case (single-byte,
// ASCII letters).
bool same_path_ignoring_case(const char* a, const char* b);
