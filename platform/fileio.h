// Data-file operations, with paths in Windows form ("C:\dir\name" or
// "dir\name").  On Windows they are the C runtime's stream files (opened
// with sharing that denies nothing) and the kernel32 file calls; in the
// headless world the same calls on the host file system, with the path
// mapped (see platform/headless/world.h) and a seam that can make the Nth
// create, write, flush, sync or rename fail.
#pragma once

#include <cstddef>
#include <cstdio>

namespace zr::fs {

struct File;  // opaque

// Modes as fopen: "r", "w", "rb", "wb", "a".  Null on failure.
File* open(const char* path, const char* mode);
void close(File* f);
size_t read(File* f, void* buffer, size_t size);
size_t write(File* f, const void* data, size_t size);
// Reads one line like fgets: at most capacity - 1 characters, stopping after
// a line end; text mode turns CR LF into LF.  Null at end of file.
char* gets(File* f, char* buffer, int capacity);
bool seek(File* f, long offset, int whence);
long tell(File* f);
bool flush(File* f);
// Forces the file's bytes to the disk (fsync / FlushFileBuffers).
bool sync(File* f);

// kernel32 equivalents.
bool delete_file(const char* path);                        // DeleteFileA
bool copy_file(const char* from, const char* to, bool fail_if_exists);  // CopyFileA
bool replace_file(const char* from, const char* to);       // MoveFileExA(REPLACE_EXISTING|WRITE_THROUGH)
bool file_exists(const char* path);

}  // namespace zr::fs
