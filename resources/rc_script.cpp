// Reader of the resource script: a line-based pre-pass for the preprocessor
// lines, a tokenizer, and a recursive-descent reader of the statements.
#include "rc_script.h"

#include <cctype>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

namespace zr::rc {

ScriptError::ScriptError(const std::string& f, int l, const std::string& m)
    : std::runtime_error(f + ":" + std::to_string(l) + ": " + m), file(f), line(l), message(m) {}

namespace {

enum class Tok { Ident, Number, String, Punct, End };

struct Token {
    Tok kind = Tok::End;
    std::string text;   // identifier, punctuation, or the decoded string
    int64_t value = 0;  // numbers
    int file = 0;
    int line = 0;
};

const std::map<std::string, int64_t>& builtin_names() {
    static const std::map<std::string, int64_t> names = {
#define ZR_RC_NAME(name, value) {#name, static_cast<int64_t>(value)},
#include "rc_names.h"
#undef ZR_RC_NAME
    };
    return names;
}

struct Reader {
    std::vector<std::string> files;  // names for messages, by index
    std::vector<Token> toks;
    std::map<std::string, int64_t> defines;
    size_t pos = 0;
    int depth = 0;

    [[noreturn]] void fail(int file, int line, const std::string& msg) const {
        throw ScriptError(files[file], line, msg);
    }
    [[noreturn]] void fail(const Token& t, const std::string& msg) const { fail(t.file, t.line, msg); }

    // ---- tokenizer -------------------------------------------------------

    static bool ident_char(char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_'; }

    std::string read_string(const std::string& s, size_t& i, int file, int line) {
        std::string out;
        ++i;  // opening quote
        for (;;) {
            if (i >= s.size()) fail(file, line, "unterminated string");
            char c = s[i++];
            if (c == '"') {
                if (i < s.size() && s[i] == '"') {
                    out += '"';
                    ++i;
                    continue;
                }
                return out;
            }
            if (c == '\\') {
                if (i >= s.size()) fail(file, line, "unterminated string");
                char e = s[i++];
                switch (e) {
                    case 'n':
                        out += '\n';
                        break;
                    case 't':
                        out += '\t';
                        break;
                    case 'r':
                        out += '\r';
                        break;
                    case '\\':
                        out += '\\';
                        break;
                    default:
                        fail(file, line, std::string("unsupported escape \\") + e + " in string");
                }
                continue;
            }
            if (static_cast<unsigned char>(c) < 0x20 || static_cast<unsigned char>(c) > 0x7e)
                fail(file, line, "only printable ASCII text is allowed in strings");
            out += c;
        }
    }

    int64_t read_number(const std::string& s, size_t& i, int file, int line) {
        size_t start = i;
        while (i < s.size() && ident_char(s[i])) ++i;
        std::string t = s.substr(start, i - start);
        while (!t.empty() && (t.back() == 'L' || t.back() == 'l' || t.back() == 'U' || t.back() == 'u'))
            t.pop_back();
        int base = 10;
        std::string digits = t;
        if (t.size() > 2 && t[0] == '0' && (t[1] == 'x' || t[1] == 'X')) {
            base = 16;
            digits = t.substr(2);
        } else if (t.size() > 1 && t[0] == '0') {
            fail(file, line, "number with a leading zero: " + s.substr(start, i - start));
        }
        if (digits.empty() || digits.size() > 10)
            fail(file, line, "bad number " + s.substr(start, i - start));
        int64_t v = 0;
        for (char c : digits) {
            int d = std::isdigit(static_cast<unsigned char>(c)) ? c - '0'
                    : std::isxdigit(static_cast<unsigned char>(c))
                        ? std::tolower(static_cast<unsigned char>(c)) - 'a' + 10
                        : 99;
            if (d >= base) fail(file, line, "bad number " + s.substr(start, i - start));
            v = v * base + d;
        }
        if (v > 0xFFFFFFFFll) fail(file, line, "number out of range " + s.substr(start, i - start));
        return v;
    }

    void tokenize_line(const std::string& s, int file, int line, bool& in_comment, std::vector<Token>& out) {
        size_t i = 0;
        while (i < s.size()) {
            if (in_comment) {
                size_t e = s.find("*/", i);
                if (e == std::string::npos) return;
                in_comment = false;
                i = e + 2;
                continue;
            }
            char c = s[i];
            if (c == ' ' || c == '\t' || c == '\r') {
                ++i;
            } else if (s.compare(i, 2, "//") == 0) {
                return;
            } else if (s.compare(i, 2, "/*") == 0) {
                in_comment = true;
                i += 2;
            } else if (c == '"') {
                out.push_back({Tok::String, read_string(s, i, file, line), 0, file, line});
            } else if (std::isdigit(static_cast<unsigned char>(c))) {
                out.push_back({Tok::Number, "", read_number(s, i, file, line), file, line});
            } else if (ident_char(c)) {
                size_t start = i;
                while (i < s.size() && ident_char(s[i])) ++i;
                out.push_back({Tok::Ident, s.substr(start, i - start), 0, file, line});
            } else if (c == ',' || c == '|' || c == '(' || c == ')' || c == '-' || c == '{' || c == '}') {
                out.push_back({Tok::Punct, std::string(1, c), 0, file, line});
                ++i;
            } else {
                fail(file, line, std::string("unexpected character '") + c + "'");
            }
        }
    }

    // ---- preprocessor lines ----------------------------------------------

    void read_text(const std::string& text, const std::string& name, const std::string& dir) {
        if (++depth > 8) fail(0, 0, "includes nested too deeply at " + name);
        int file = static_cast<int>(files.size());
        files.push_back(name);
        std::istringstream in(text);
        std::string s;
        int line = 0;
        bool in_comment = false;
        while (std::getline(in, s)) {
            ++line;
            size_t first = s.find_first_not_of(" \t");
            if (!in_comment && first != std::string::npos && s[first] == '#') {
                directive(s.substr(first + 1), file, line, dir);
                continue;
            }
            tokenize_line(s, file, line, in_comment, toks);
        }
        if (in_comment) fail(file, line, "unterminated comment");
        --depth;
    }

    void directive(const std::string& rest, int file, int line, const std::string& dir) {
        std::vector<Token> t;
        bool in_comment = false;
        size_t n = 0;
        while (n < rest.size() && (rest[n] == ' ' || rest[n] == '\t')) ++n;
        size_t e = n;
        while (e < rest.size() && ident_char(rest[e])) ++e;
        std::string word = rest.substr(n, e - n);
        std::string args = rest.substr(e);
        if (word == "pragma") return;
        if (word == "include") {
            size_t a = args.find_first_not_of(" \t");
            if (a != std::string::npos && args[a] == '<') return;  // SDK header: names are built in
            tokenize_line(args, file, line, in_comment, t);
            if (t.size() != 1 || t[0].kind != Tok::String) fail(file, line, "malformed #include");
            if (dir.empty()) fail(file, line, "cannot include \"" + t[0].text + "\" here");
            std::string path = dir + "/" + t[0].text;
            std::ifstream f(path, std::ios::binary);
            if (!f) fail(file, line, "cannot open included file " + t[0].text);
            std::stringstream ss;
            ss << f.rdbuf();
            read_text(ss.str(), t[0].text, dir);
            return;
        }
        if (word == "define") {
            tokenize_line(args, file, line, in_comment, t);
            if (t.empty() || t[0].kind != Tok::Ident) fail(file, line, "malformed #define");
            std::string name = t[0].text;
            if (t.size() == 1) fail(file, line, "#define " + name + " has no value");
            if (defines.count(name) || builtin_names().count(name)) fail(file, line, name + " defined twice");
            t.erase(t.begin());
            t.push_back({Tok::End, "", 0, file, line});
            std::swap(t, toks);
            size_t saved = pos;
            pos = 0;
            int64_t v = expr(false, 0);
            if (cur().kind != Tok::End) fail(cur(), "unexpected text after the value of " + name);
            std::swap(t, toks);
            pos = saved;
            defines[name] = v;
            return;
        }
        fail(file, line, "unsupported preprocessor line #" + word);
    }

    // ---- token access ------------------------------------------------------

    const Token& cur() const { return toks[pos]; }
    bool is_punct(const char* p) const { return cur().kind == Tok::Punct && cur().text == p; }
    bool is_word(const char* w) const { return cur().kind == Tok::Ident && cur().text == w; }
    void expect_punct(const char* p) {
        if (!is_punct(p)) fail(cur(), std::string("expected '") + p + "'" + found());
        ++pos;
    }
    std::string found() const {
        const Token& t = cur();
        switch (t.kind) {
            case Tok::End:
                return ", found the end of the script";
            case Tok::String:
                return ", found \"" + t.text + "\"";
            case Tok::Number:
                return ", found " + std::to_string(t.value);
            default:
                return ", found '" + t.text + "'";
        }
    }
    std::string expect_string(const char* what) {
        if (cur().kind != Tok::String) fail(cur(), std::string("expected ") + what + found());
        return toks[pos++].text;
    }

    // ---- expressions -------------------------------------------------------
    // or-expression of terms; in style context a term may be NOT x, which
    // clears x's bits from what has been built so far (starting at `base`).

    int64_t primary() {
        const Token& t = cur();
        if (t.kind == Tok::Number) {
            ++pos;
            return t.value;
        }
        if (t.kind == Tok::Ident) {
            ++pos;
            auto d = defines.find(t.text);
            if (d != defines.end()) return d->second;
            auto b = builtin_names().find(t.text);
            if (b != builtin_names().end()) return b->second;
            fail(t, "unknown name " + t.text);
        }
        if (is_punct("-")) {
            ++pos;
            return -primary();
        }
        if (is_punct("(")) {
            ++pos;
            int64_t v = expr(false, 0);
            expect_punct(")");
            return v;
        }
        fail(t, "expected a number or a name" + found());
    }

    int64_t expr(bool style, int64_t base) {
        int64_t v = base;
        for (;;) {
            if (is_word("NOT")) {
                if (!style) fail(cur(), "NOT is only allowed in a style");
                ++pos;
                v &= ~primary();
            } else {
                v |= primary();
            }
            if (!is_punct("|")) return v;
            ++pos;
        }
    }

    int int_value(int64_t v, const Token& at, int64_t lo, int64_t hi, const char* what) const {
        if (v < lo || v > hi) fail(at, std::string(what) + " out of range: " + std::to_string(v));
        return static_cast<int>(v);
    }
    int number(int64_t lo, int64_t hi, const char* what) {
        const Token& at = cur();
        return int_value(expr(false, 0), at, lo, hi, what);
    }
    uint32_t style_value(int64_t base) {
        const Token& at = cur();
        int64_t v = expr(true, base);
        if (v < -0x80000000ll || v > 0xFFFFFFFFll) fail(at, "style out of range");
        return static_cast<uint32_t>(v);
    }

    // ---- statements --------------------------------------------------------

    void block_begin() {
        if (is_word("BEGIN") || is_punct("{")) {
            ++pos;
            return;
        }
        fail(cur(), "expected BEGIN" + found());
    }
    bool block_end() {
        if (is_word("END") || is_punct("}")) {
            ++pos;
            return true;
        }
        if (cur().kind == Tok::End) fail(cur(), "missing END");
        return false;
    }

    Control control() {
        if (!is_word("CONTROL")) {
            if (cur().kind == Tok::Ident)
                fail(cur(), "unsupported control statement " + cur().text + " (write controls as CONTROL)");
            fail(cur(), "expected CONTROL" + found());
        }
        ++pos;
        Control c;
        c.text = expect_string("the control's text");
        expect_punct(",");
        c.id = number(-1, 65535, "control id");
        expect_punct(",");
        const Token& cls_at = cur();
        std::string cls = expect_string("the control's class name");
        c.cls = canonical_class(cls);
        if (c.cls.empty()) fail(cls_at, "unknown window class \"" + cls + "\"");
        expect_punct(",");
        c.style = style_value(0x50000000);  // WS_CHILD | WS_VISIBLE, as the compiler adds
        int* dims[] = {&c.x, &c.y, &c.cx, &c.cy};
        for (int* d : dims) {
            expect_punct(",");
            *d = number(-32768, 32767, "coordinate");
        }
        if (is_punct(",")) {
            ++pos;
            c.ex_style = style_value(0);
        }
        return c;
    }

    Dialog dialog(int id, const Token& at) {
        Dialog d;
        d.id = int_value(id, at, 1, 65535, "dialog id");
        int* dims[] = {&d.x, &d.y, &d.cx, &d.cy};
        for (int i = 0; i < 4; ++i) {
            if (i > 0) expect_punct(",");
            *dims[i] = number(-32768, 32767, "coordinate");
        }
        bool have_style = false;
        bool have_caption = false;
        for (;;) {
            if (is_word("STYLE")) {
                ++pos;
                d.style |= style_value(0);
                have_style = true;
            } else if (is_word("EXSTYLE")) {
                ++pos;
                d.ex_style = style_value(0);
            } else if (is_word("CAPTION")) {
                ++pos;
                d.caption = expect_string("the caption");
                have_caption = true;
            } else if (is_word("FONT")) {
                ++pos;
                d.font_size = number(1, 72, "font size");
                expect_punct(",");
                d.font = expect_string("the font name");
                for (int i = 0; i < 3 && is_punct(","); ++i) {  // weight, italic, character set
                    ++pos;
                    number(0, 1000, "font attribute");
                }
            } else {
                break;
            }
        }
        if (!have_style) fail(at, "dialog " + std::to_string(d.id) + " has no STYLE");
        if (have_caption) d.style |= 0x00C00000;     // WS_CAPTION
        if (!d.font.empty()) d.style |= 0x00000040;  // DS_SETFONT
        block_begin();
        std::set<int> ids;
        while (!block_end()) {
            const Token& cat = cur();
            Control c = control();
            if (c.id != -1 && !ids.insert(c.id).second)
                fail(cat,
                     "control id " + std::to_string(c.id) + " used twice in dialog " + std::to_string(d.id));
            d.controls.push_back(c);
        }
        return d;
    }

    void string_table(Script& s, std::set<int>& seen) {
        while (cur().kind == Tok::Ident && !is_word("BEGIN")) ++pos;  // memory options
        block_begin();
        while (!block_end()) {
            const Token& at = cur();
            int id = number(0, 65535, "string id");
            if (is_punct(",")) ++pos;
            std::string text = expect_string("the string's text");
            if (!seen.insert(id).second) fail(at, "string " + std::to_string(id) + " defined twice");
            s.strings.push_back({id, text});
        }
    }

    Script script() {
        Script s;
        std::set<int> dialog_ids, string_ids, icon_ids, bitmap_ids;
        while (cur().kind != Tok::End) {
            if (is_word("STRINGTABLE")) {
                ++pos;
                string_table(s, string_ids);
                continue;
            }
            const Token at = cur();
            int64_t id = expr(false, 0);
            if (cur().kind != Tok::Ident) fail(cur(), "expected a resource type" + found());
            std::string type = toks[pos++].text;
            if (type == "DIALOGEX") {
                if (!dialog_ids.insert(static_cast<int>(id)).second)
                    fail(at, "dialog " + std::to_string(id) + " defined twice");
                s.dialogs.push_back(dialog(static_cast<int>(id), at));
            } else if (type == "ICON" || type == "BITMAP") {
                FileResource r{int_value(id, at, 1, 65535, "resource id"), ""};
                r.file = expect_string("a file name");
                auto& seen = type == "ICON" ? icon_ids : bitmap_ids;
                if (!seen.insert(r.id).second) fail(at, type + " " + std::to_string(r.id) + " defined twice");
                (type == "ICON" ? s.icons : s.bitmaps).push_back(r);
            } else if (type == "DIALOG") {
                fail(at, "write dialog templates as DIALOGEX");
            } else {
                fail(at, "unsupported resource type " + type);
            }
        }
        return s;
    }
};

}  // namespace

std::string canonical_class(const std::string& cls) {
    static const char* const known[] = {"Button",
                                        "Edit",
                                        "Static",
                                        "ListBox",
                                        "ScrollBar",
                                        "ComboBox",
                                        "msctls_trackbar32",
                                        "msctls_updown32",
                                        "msctls_progress32",
                                        "SysListView32",
                                        "SysTreeView32",
                                        "SysTabControl32"};
    for (const char* k : known) {
        std::string a = k;
        if (a.size() != cls.size()) continue;
        bool same = true;
        for (size_t i = 0; i < a.size() && same; ++i)
            same = std::tolower(static_cast<unsigned char>(a[i])) ==
                   std::tolower(static_cast<unsigned char>(cls[i]));
        if (same) return a;
    }
    return "";
}

Script parse_script(const std::string& text, const std::string& name, const std::string& dir) {
    Reader r;
    r.read_text(text, name, dir);
    int last = r.toks.empty() ? 0 : r.toks.back().line;
    int last_file = r.toks.empty() ? 0 : r.toks.back().file;
    r.toks.push_back({Tok::End, "", 0, last_file, last});
    return r.script();
}

Script parse_script_file(const std::string& path) {
    std::ifstream f(path, std::ios::binary);
    if (!f) throw ScriptError(path, 0, "cannot open the script");
    std::stringstream ss;
    ss << f.rdbuf();
    size_t slash = path.find_last_of('/');
    std::string dir = slash == std::string::npos ? "." : path.substr(0, slash);
    return parse_script(ss.str(), path, dir);
}

}  // namespace zr::rc
