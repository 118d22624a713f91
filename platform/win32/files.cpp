// zr::fs over the C runtime's stream files (shared, denying nothing) and the
// kernel32 file calls.
#include <io.h>
#include <share.h>

#include <cstdio>

#include "platform/fileio.h"
#include "platform/win.h"

namespace zr::fs {

struct File {
    FILE* stream = nullptr;
};

File* open(const char* path, const char* mode) {
    if (!path || !mode) return nullptr;
    FILE* stream = _fsopen(path, mode, _SH_DENYNO);
    if (!stream) return nullptr;
    return new File{stream};
}

void close(File* f) {
    if (!f) return;
    std::fclose(f->stream);
    delete f;
}

size_t read(File* f, void* buffer, size_t size) { return f ? std::fread(buffer, 1, size, f->stream) : 0; }

size_t write(File* f, const void* data, size_t size) { return f ? std::fwrite(data, 1, size, f->stream) : 0; }

char* gets(File* f, char* buffer, int capacity) {
    return f ? std::fgets(buffer, capacity, f->stream) : nullptr;
}

bool seek(File* f, long offset, int whence) { return f && std::fseek(f->stream, offset, whence) == 0; }

long tell(File* f) { return f ? std::ftell(f->stream) : -1; }

bool flush(File* f) { return f && std::fflush(f->stream) == 0; }

bool sync(File* f) {
    if (!f || std::fflush(f->stream) != 0) return false;
    HANDLE handle = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(f->stream)));
    return handle != INVALID_HANDLE_VALUE && FlushFileBuffers(handle) != 0;
}

bool delete_file(const char* path) { return path && DeleteFileA(path) != 0; }

bool copy_file(const char* from, const char* to, bool fail_if_exists) {
    return from && to && CopyFileA(from, to, fail_if_exists ? TRUE : FALSE) != 0;
}

bool replace_file(const char* from, const char* to) {
    return from && to && MoveFileExA(from, to, MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
}

bool file_exists(const char* path) { return path && GetFileAttributesA(path) != INVALID_FILE_ATTRIBUTES; }

}  // namespace zr::fs
