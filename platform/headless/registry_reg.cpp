// REGEDIT4 files for the headless registry, in the form regedit writes:
//
//   REGEDIT4                              first line
//   ; comment                             anywhere a line may start
//   [HKEY_LOCAL_MACHINE\SOFTWARE\Maker]   key (created with every key above it)
//   [-HKEY_LOCAL_MACHINE\SOFTWARE\Old]    key deleted with all below it
//   "name"="text"                         REG_SZ; escapes \\ \" \n \r
//   @="text"                              the key's default value
//   "count"=dword:0000001e                REG_DWORD, 1 to 8 hex digits
//   "blob"=hex:01,02,ff                   REG_BINARY
//   "path"=hex(2):43,3a,00                any type by number, raw bytes
//   "gone"=-                              value deleted
//
// Hex data may go on over several lines, each but the last ending in a
// backslash.  Reading checks the whole text first and changes nothing when
// any line is wrong; the error names the first wrong line.
#include <cstdio>
#include <cstring>
#include <fstream>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "platform/headless/registry.h"
#include "platform/headless/registry_tree.h"

namespace zr::headless {

namespace {

// One change the file asks for, applied in file order once all lines passed.
struct RegOp {
    enum Kind { OpenKey, DeleteKey, SetValue, DeleteValue } kind;
    HKEY root = nullptr;
    std::string path;  // below the root
    std::string name;
    DWORD type = REG_NONE;
    std::vector<BYTE> data;
};

struct Line {
    std::string_view text;
    int number;
};

struct ParseError {
    int line;
    std::string message;
};

bool is_blank(char c) { return c == ' ' || c == '\t'; }

std::string_view trim(std::string_view s) {
    while (!s.empty() && is_blank(s.front())) s.remove_prefix(1);
    while (!s.empty() && is_blank(s.back())) s.remove_suffix(1);
    return s;
}

int hex_digit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

bool starts_with_nocase(std::string_view s, std::string_view prefix) {
    return s.size() >= prefix.size() && reg::same_name(s.substr(0, prefix.size()), prefix);
}

// Only blanks or a comment may follow a value's data.
bool rest_is_empty(std::string_view rest) {
    rest = trim(rest);
    return rest.empty() || rest.front() == ';';
}

std::vector<Line> split_lines(std::string_view text) {
    std::vector<Line> lines;
    int number = 1;
    size_t start = 0;
    while (start < text.size()) {
        size_t end = text.find_first_of("\r\n", start);
        if (end == std::string_view::npos) end = text.size();
        lines.push_back(Line{text.substr(start, end - start), number++});
        if (end < text.size() && text[end] == '\r' && end + 1 < text.size() && text[end + 1] == '\n') ++end;
        start = end + 1;
    }
    return lines;
}

// Reads a quoted string starting after its opening quote; `pos` ends after
// the closing quote.
std::optional<std::string> read_quoted(std::string_view s, size_t& pos, std::string& error) {
    std::string out;
    while (pos < s.size()) {
        const char c = s[pos++];
        if (c == '"') return out;
        if (c != '\\') {
            out.push_back(c);
            continue;
        }
        if (pos >= s.size()) break;
        const char e = s[pos++];
        switch (e) {
            case '\\':
                out.push_back('\\');
                break;
            case '"':
                out.push_back('"');
                break;
            case 'n':
                out.push_back('\n');
                break;
            case 'r':
                out.push_back('\r');
                break;
            default:
                error = std::string("unknown escape \\") + e;
                return std::nullopt;
        }
    }
    error = "unterminated string";
    return std::nullopt;
}

// "[HKEY_...\path]" or "[-HKEY_...\path]".
std::optional<ParseError> parse_key_line(const Line& line, std::string_view s, RegOp& op) {
    const size_t close = s.rfind(']');
    if (close == std::string_view::npos) return ParseError{line.number, "key line without ']'"};
    if (!rest_is_empty(s.substr(close + 1))) return ParseError{line.number, "text after ']'"};
    std::string_view name = s.substr(1, close - 1);
    op.kind = RegOp::OpenKey;
    if (!name.empty() && name.front() == '-') {
        op.kind = RegOp::DeleteKey;
        name.remove_prefix(1);
    }
    const size_t slash = name.find('\\');
    const reg::Root* root = reg::find_root(name.substr(0, slash));
    if (root == nullptr) return ParseError{line.number, "unknown root key in '" + std::string(name) + "'"};
    op.root = root->handle;
    const std::string_view path =
        slash == std::string_view::npos ? std::string_view() : name.substr(slash + 1);
    std::vector<std::string_view> parts;
    if (!reg::split_path(path, parts))
        return ParseError{line.number, "bad key path '" + std::string(name) + "'"};
    if (op.kind == RegOp::DeleteKey && parts.empty())
        return ParseError{line.number, "a root key cannot be deleted"};
    op.path = std::string(path);
    return std::nullopt;
}

// Hex bytes "01,02,ff", possibly continued over lines ending in '\'.
// `index` points at the value's line and ends at its last line.
std::optional<ParseError> parse_hex(const std::vector<Line>& lines, size_t& index, std::string_view data,
                                    std::vector<BYTE>& out) {
    bool need_byte = false;  // after a comma another byte must come
    while (true) {
        const int number = lines[index].number;
        std::string_view rest = trim(data);
        const bool continued = !rest.empty() && rest.back() == '\\';
        if (continued)
            rest = trim(rest.substr(0, rest.size() - 1));
        else if (const size_t semi = rest.find(';'); semi != std::string_view::npos)
            rest = trim(rest.substr(0, semi));
        while (!rest.empty()) {
            size_t digits = 0;
            int value = 0;
            while (digits < rest.size() && hex_digit(rest[digits]) >= 0) {
                if (digits < 2) value = value * 16 + hex_digit(rest[digits]);
                ++digits;
            }
            if (digits == 0 || digits > 2)
                return ParseError{number, "bad hex byte in '" + std::string(rest) + "'"};
            out.push_back(static_cast<BYTE>(value));
            rest = trim(rest.substr(digits));
            need_byte = false;
            if (rest.empty()) break;
            if (rest.front() != ',') return ParseError{number, "expected ',' between hex bytes"};
            rest = trim(rest.substr(1));
            need_byte = true;
        }
        if (!continued) break;
        if (index + 1 >= lines.size()) return ParseError{number, "continued hex data at end of file"};
        data = lines[++index].text;
    }
    if (need_byte) return ParseError{lines[index].number, "hex data ends with ','"};
    return std::nullopt;
}

// "name"=data or @=data.
std::optional<ParseError> parse_value_line(const std::vector<Line>& lines, size_t& index, std::string_view s,
                                           RegOp& op) {
    const int number = lines[index].number;
    size_t pos = 0;
    std::string error;
    if (s.front() == '@') {
        pos = 1;
    } else {
        pos = 1;
        auto name = read_quoted(s, pos, error);
        if (!name) return ParseError{number, error + " in value name"};
        op.name = *name;
    }
    while (pos < s.size() && is_blank(s[pos])) ++pos;
    if (pos >= s.size() || s[pos] != '=') return ParseError{number, "expected '=' after the value name"};
    ++pos;
    while (pos < s.size() && is_blank(s[pos])) ++pos;
    const std::string_view data = s.substr(pos);

    if (!data.empty() && data.front() == '-' && rest_is_empty(data.substr(1))) {
        op.kind = RegOp::DeleteValue;
        return std::nullopt;
    }
    op.kind = RegOp::SetValue;
    if (!data.empty() && data.front() == '"') {
        size_t at = 1;
        auto text = read_quoted(data, at, error);
        if (!text) return ParseError{number, error};
        if (!rest_is_empty(data.substr(at))) return ParseError{number, "text after the closing quote"};
        op.type = REG_SZ;
        op.data.assign(text->begin(), text->end());
        op.data.push_back(0);
        return std::nullopt;
    }
    if (starts_with_nocase(data, "dword:")) {
        std::string_view digits = data.substr(6);
        size_t n = 0;
        DWORD value = 0;
        while (n < digits.size() && hex_digit(digits[n]) >= 0)
            value = value * 16 + static_cast<DWORD>(hex_digit(digits[n++]));
        if (n == 0 || n > 8 || !rest_is_empty(digits.substr(n)))
            return ParseError{number, "bad dword '" + std::string(trim(digits)) + "' (1 to 8 hex digits)"};
        op.type = REG_DWORD;
        const BYTE* bytes = reinterpret_cast<const BYTE*>(&value);
        op.data.assign(bytes, bytes + sizeof value);
        return std::nullopt;
    }
    if (starts_with_nocase(data, "hex:")) {
        op.type = REG_BINARY;
        return parse_hex(lines, index, data.substr(4), op.data);
    }
    if (starts_with_nocase(data, "hex(")) {
        const size_t close = data.find("):");
        unsigned long type = 0;
        size_t n = 4;
        for (; n < close && n < data.size() && hex_digit(data[n]) >= 0; ++n)
            type = type * 16 + static_cast<unsigned long>(hex_digit(data[n]));
        if (close == std::string_view::npos || n != close || n == 4 || n > 12)
            return ParseError{number, "bad value type in '" + std::string(data) + "'"};
        op.type = static_cast<DWORD>(type);
        return parse_hex(lines, index, data.substr(close + 2), op.data);
    }
    return ParseError{number, "unknown value data '" + std::string(data) + "'"};
}

std::optional<ParseError> parse(std::string_view text, std::vector<RegOp>& ops) {
    if (text.size() >= 3 && text.substr(0, 3) == "\xEF\xBB\xBF") text.remove_prefix(3);
    const std::vector<Line> lines = split_lines(text);
    if (lines.empty() || trim(lines[0].text) != "REGEDIT4")
        return ParseError{1, "the first line must be REGEDIT4"};
    bool have_key = false;
    bool key_deleted = false;
    for (size_t i = 1; i < lines.size(); ++i) {
        const std::string_view s = trim(lines[i].text);
        if (s.empty() || s.front() == ';') continue;
        RegOp op{};
        if (s.front() == '[') {
            if (auto error = parse_key_line(lines[i], s, op)) return error;
            have_key = true;
            key_deleted = op.kind == RegOp::DeleteKey;
        } else if (s.front() == '"' || s.front() == '@') {
            if (!have_key) return ParseError{lines[i].number, "value before any key"};
            if (key_deleted) return ParseError{lines[i].number, "value under a deleted key"};
            if (auto error = parse_value_line(lines, i, s, op)) return error;
        } else {
            return ParseError{lines[i].number, "unexpected text '" + std::string(s) + "'"};
        }
        ops.push_back(std::move(op));
    }
    return std::nullopt;
}

void apply(const std::vector<RegOp>& ops) {
    std::shared_ptr<reg::Key> current;
    for (const RegOp& op : ops) {
        std::vector<std::string_view> parts;
        reg::split_path(op.path, parts);
        switch (op.kind) {
            case RegOp::OpenKey:
                current = reg::root_key(op.root);
                for (std::string_view part : parts) current = reg::add_subkey(*current, part);
                break;
            case RegOp::DeleteKey: {
                std::shared_ptr<reg::Key> parent = reg::root_key(op.root);
                for (size_t i = 0; parent != nullptr && i + 1 < parts.size(); ++i)
                    parent = reg::find_subkey(*parent, parts[i]);
                if (parent != nullptr) reg::remove_subkey(*parent, parts.back());
                current = nullptr;
                break;
            }
            case RegOp::SetValue:
                reg::set_value(*current, op.name, op.type, op.data.data(), op.data.size());
                break;
            case RegOp::DeleteValue:
                reg::remove_value(*current, op.name);
                break;
        }
    }
}

// ---- writing

std::string escape(std::string_view s) {
    std::string out;
    for (const char c : s) {
        switch (c) {
            case '\\':
                out += "\\\\";
                break;
            case '"':
                out += "\\\"";
                break;
            case '\n':
                out += "\\n";
                break;
            case '\r':
                out += "\\r";
                break;
            default:
                out.push_back(c);
        }
    }
    return out;
}

// A REG_SZ that reads back the same from "..." form: one NUL, at the end.
bool plain_string(const reg::Value& value) {
    const auto& d = value.data;
    if (value.type != REG_SZ || d.empty() || d.back() != 0) return false;
    for (size_t i = 0; i + 1 < d.size(); ++i)
        if (d[i] == 0) return false;
    return true;
}

// Hex lines are wrapped as regedit wraps them: after the comma that brings
// the line to 77 characters, a backslash and a new line indented by two.
void write_value(std::string& out, const reg::Value& value) {
    // Built by appending: GCC 12 misreads `"x" + std::string` chains as overlapping copies.
    std::string line;
    if (value.name.empty()) {
        line = "@=";
    } else {
        line.append(1, '"').append(escape(value.name)).append("\"=");
    }
    char buffer[32];
    if (plain_string(value)) {
        line.append(1, '"');
        line.append(escape(std::string_view(reinterpret_cast<const char*>(value.data.data()),
                                            value.data.size() - 1)));
        line.append(1, '"');
    } else if (value.type == REG_DWORD && value.data.size() == 4) {
        DWORD number = 0;
        std::memcpy(&number, value.data.data(), 4);
        std::snprintf(buffer, sizeof buffer, "dword:%08x", static_cast<unsigned>(number));
        line += buffer;
    } else {
        if (value.type == REG_BINARY)
            line += "hex:";
        else {
            std::snprintf(buffer, sizeof buffer, "hex(%x):", static_cast<unsigned>(value.type));
            line += buffer;
        }
        size_t width = line.size();
        for (size_t i = 0; i < value.data.size(); ++i) {
            std::snprintf(buffer, sizeof buffer, "%02x", static_cast<unsigned>(value.data[i]));
            line += buffer;
            if (i + 1 == value.data.size()) break;
            line += ',';
            width += 3;
            if (width >= 77) {
                line += "\\\r\n  ";
                width = 2;
            }
        }
    }
    out += line;
    out += "\r\n";
}

void write_key(std::string& out, const reg::Key& key, const std::string& path) {
    out += "\r\n[" + path + "]\r\n";
    for (const reg::Value& value : key.values) write_value(out, value);
    for (const auto& sub : key.subkeys) write_key(out, *sub, path + "\\" + sub->name);
}

}  // namespace

RegLoadResult registry_load_reg(std::string_view text) {
    std::vector<RegOp> ops;
    if (auto error = parse(text, ops))
        return RegLoadResult{false, error->line,
                             "line " + std::to_string(error->line) + ": " + error->message};
    apply(ops);
    return RegLoadResult{true, 0, ""};
}

RegLoadResult registry_load_reg_file(const std::string& host_file) {
    std::ifstream in(host_file, std::ios::binary);
    if (!in) return RegLoadResult{false, 0, "cannot read " + host_file};
    std::ostringstream text;
    text << in.rdbuf();
    return registry_load_reg(text.str());
}

std::string registry_save_reg() {
    std::string out = "REGEDIT4\r\n";
    for (const reg::Root& root : reg::roots()) {
        const auto tree = reg::root_key(root.handle);
        if (!tree->values.empty()) {
            out += std::string("\r\n[") + root.name + "]\r\n";
            for (const reg::Value& value : tree->values) write_value(out, value);
        }
        for (const auto& sub : tree->subkeys) write_key(out, *sub, std::string(root.name) + "\\" + sub->name);
    }
    out += "\r\n";
    return out;
}

}  // namespace zr::headless
