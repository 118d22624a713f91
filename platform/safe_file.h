// Crash-safe replacement of a data file: the new bytes go to a temporary file
// beside the target ("<target>.new"), which is flushed, forced to disk and then
// renamed over the target.  A failure at any point leaves the target as it was
// (wholly old); success leaves it wholly new, byte for byte what was written.
#pragma once

#include <cstddef>

#include "platform/fileio.h"

namespace zr::fs {

constexpr size_t kDataPathCapacity = 1024;  // a data file's path with its NUL

struct Replacement {
    File* file = nullptr;
    bool failed = false;  // some step failed: commit will refuse
    char target[kDataPathCapacity] = {};
    char temp[kDataPathCapacity + 8] = {};
};

// Opens the temporary file for writing in `mode` ("wb" or "w").  False (and
// nothing created) when the target path does not fit or the create fails.
bool begin_replace(Replacement& r, const char* target, const char* mode = "wb");
// Writes all of `data`; a short write marks the replacement failed.
bool write_all(Replacement& r, const void* data, size_t size);
// Flush, sync, close, rename.  On any failure the temporary file is deleted,
// the target is untouched and the result is false.
bool commit_replace(Replacement& r);
// Closes and deletes the temporary file; the target is untouched.
void abandon_replace(Replacement& r);

// Replaces `target` by a copy of `source` the same way (CopyFileA with
// fail-if-exists false, made crash-safe).  False when `source` cannot be read.
bool copy_file_safely(const char* source, const char* target);

}  // namespace zr::fs
