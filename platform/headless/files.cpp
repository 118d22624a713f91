// zr::fs over the host's C library, with Windows paths mapped and the text
// mode of the Windows C runtime reproduced: reading turns CR LF into LF,
// writing turns LF into CR LF, so both worlds give the same bytes.
#include "platform/headless/files.h"

#include <unistd.h>

#include <array>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <map>
#include <string>

#include "platform/fileio.h"

namespace zr::fs {

struct File {
    FILE* stream = nullptr;
    bool text = false;
};

}  // namespace zr::fs

namespace zr::headless {

namespace {

std::map<char, std::string>& drives() {
    static std::map<char, std::string> map;
    return map;
}

struct Faults {
    std::array<int, 5> count{};
    std::array<int, 5> fail_at{};  // 0 = none; else the count at which to fail
};
Faults& faults() {
    static Faults f;
    return f;
}

}  // namespace

void map_drive(char letter, const std::string& host_dir) {
    drives()[static_cast<char>(std::toupper(static_cast<unsigned char>(letter)))] = host_dir;
}

void unmap_drives() { drives().clear(); }

std::string host_path(const char* windows_path) {
    std::string path = windows_path ? windows_path : "";
    if (!path.empty() && path[0] == '/') return path;
    std::string rest = path;
    std::string prefix;
    if (path.size() >= 2 && std::isalpha(static_cast<unsigned char>(path[0])) && path[1] == ':') {
        auto it = drives().find(static_cast<char>(std::toupper(static_cast<unsigned char>(path[0]))));
        prefix = it != drives().end() ? it->second : std::string("/nonexistent-drive-") + path[0];
        rest = path.substr(2);
        if (rest.empty() || (rest[0] != '\\' && rest[0] != '/')) rest.insert(rest.begin(), '/');
    }
    for (char& c : rest) {
        if (c == '\\') c = '/';
    }
    return prefix + rest;
}

void fail_file_op(FileOp op, int nth) {
    auto i = static_cast<size_t>(op);
    faults().fail_at[i] = nth > 0 ? faults().count[i] + nth : 0;
}

void clear_file_faults() { faults() = Faults{}; }

int file_op_count(FileOp op) { return faults().count[static_cast<size_t>(op)]; }

// True when this call of `op` is the one planned to fail.
bool file_op_fails(FileOp op) {
    auto i = static_cast<size_t>(op);
    int n = ++faults().count[i];
    return faults().fail_at[i] != 0 && n == faults().fail_at[i];
}

}  // namespace zr::headless

namespace zr::fs {

using zr::headless::file_op_fails;
using zr::headless::FileOp;
using zr::headless::host_path;

File* open(const char* path, const char* mode) {
    if (!path || !mode || !*mode) return nullptr;
    bool creates = mode[0] == 'w' || mode[0] == 'a';
    if (creates && file_op_fails(FileOp::Create)) return nullptr;
    std::string host_mode(1, mode[0]);
    if (std::strchr(mode, '+')) host_mode.push_back('+');
    host_mode.push_back('b');
    FILE* stream = std::fopen(host_path(path).c_str(), host_mode.c_str());
    if (!stream) return nullptr;
    return new File{stream, std::strchr(mode, 'b') == nullptr};
}

void close(File* f) {
    if (!f) return;
    std::fclose(f->stream);
    delete f;
}

namespace {

size_t raw_write(File* f, const char* data, size_t size) {
    if (file_op_fails(FileOp::Write)) {
        std::fwrite(data, 1, size / 2, f->stream);
        return size / 2;
    }
    return std::fwrite(data, 1, size, f->stream);
}

}  // namespace

size_t read(File* f, void* buffer, size_t size) {
    if (!f || size == 0) return 0;
    char* out = static_cast<char*>(buffer);
    if (!f->text) return std::fread(out, 1, size, f->stream);
    size_t n = 0;
    while (n < size) {
        int c = std::fgetc(f->stream);
        if (c == EOF) break;
        if (c == '\r') {
            int next = std::fgetc(f->stream);
            if (next == '\n') {
                c = '\n';
            } else if (next != EOF) {
                std::ungetc(next, f->stream);
            }
        }
        out[n++] = static_cast<char>(c);
    }
    return n;
}

size_t write(File* f, const void* data, size_t size) {
    if (!f) return 0;
    const char* in = static_cast<const char*>(data);
    if (!f->text) return raw_write(f, in, size);
    std::string converted;
    converted.reserve(size + size / 16);
    for (size_t i = 0; i < size; ++i) {
        if (in[i] == '\n') converted.push_back('\r');
        converted.push_back(in[i]);
    }
    size_t written = raw_write(f, converted.data(), converted.size());
    return written == converted.size() ? size : written / 2;
}

char* gets(File* f, char* buffer, int capacity) {
    if (!f || !buffer || capacity <= 0) return nullptr;
    int n = 0;
    while (n < capacity - 1) {
        char c;
        if (read(f, &c, 1) != 1) break;
        buffer[n++] = c;
        if (c == '\n') break;
    }
    buffer[n] = '\0';
    return n == 0 ? nullptr : buffer;
}

bool seek(File* f, long offset, int whence) { return f && std::fseek(f->stream, offset, whence) == 0; }

long tell(File* f) { return f ? std::ftell(f->stream) : -1; }

bool flush(File* f) {
    if (!f || file_op_fails(FileOp::Flush)) return false;
    return std::fflush(f->stream) == 0;
}

bool sync(File* f) {
    if (!f || file_op_fails(FileOp::Sync)) return false;
    return std::fflush(f->stream) == 0 && ::fsync(::fileno(f->stream)) == 0;
}

bool delete_file(const char* path) { return path && std::remove(host_path(path).c_str()) == 0; }

bool copy_file(const char* from, const char* to, bool fail_if_exists) {
    if (!from || !to) return false;
    if (fail_if_exists && file_exists(to)) return false;
    File* in = open(from, "rb");
    if (!in) return false;
    File* out = open(to, "wb");
    bool ok = out != nullptr;
    char block[65536];
    while (ok) {
        size_t n = read(in, block, sizeof block);
        if (n == 0) break;
        ok = write(out, block, n) == n;
    }
    close(in);
    if (out) ok = std::fclose(out->stream) == 0 && ok;
    delete out;
    return ok;
}

bool replace_file(const char* from, const char* to) {
    if (!from || !to || file_op_fails(FileOp::Rename)) return false;
    return std::rename(host_path(from).c_str(), host_path(to).c_str()) == 0;
}

bool file_exists(const char* path) { return path && ::access(host_path(path).c_str(), F_OK) == 0; }

}  // namespace zr::fs
