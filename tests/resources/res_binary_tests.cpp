// The headless tables and zrres.dll come from one script: this test compiles
// the script with the real resource compiler (windres, into a .res file at
// build time) and checks that every template, control, string and icon in the
// binary is what the generated tables say, bit for bit.
#include <gtest/gtest.h>

#include <cctype>
#include <cstring>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

#include "platform/restable.h"
#include "rc_icon.h"

namespace {

struct Res {
    int type = 0, name = 0;
    std::vector<uint8_t> data;
};

struct Cursor {
    const std::vector<uint8_t>& b;
    size_t p = 0;
    bool ok = true;
    uint16_t u16() {
        if (p + 2 > b.size()) return ok = false, 0;
        uint16_t v = static_cast<uint16_t>(b[p] | b[p + 1] << 8);
        p += 2;
        return v;
    }
    uint32_t u32() {
        uint32_t lo = u16();
        return lo | static_cast<uint32_t>(u16()) << 16;
    }
    uint8_t u8() {
        if (p >= b.size()) return ok = false, 0;
        return b[p++];
    }
    void align4() { p = (p + 3) & ~size_t(3); }
    std::string wstr() {  // UTF-16 text of ASCII characters
        std::string s;
        for (uint16_t c = u16(); ok && c != 0; c = u16()) s += c < 0x80 ? static_cast<char>(c) : '?';
        return s;
    }
    // A name or number field: 0xFFFF then a number, or a string.
    std::string sz_or_ord(int* ord = nullptr) {
        if (p + 2 <= b.size() && b[p] == 0xFF && b[p + 1] == 0xFF) {
            p += 2;
            int v = u16();
            if (ord) *ord = v;
            return "#" + std::to_string(v);
        }
        return wstr();
    }
};

std::vector<Res> read_res(const std::string& path) {
    std::ifstream f(path, std::ios::binary);
    std::vector<uint8_t> bytes((std::istreambuf_iterator<char>(f)), std::istreambuf_iterator<char>());
    std::vector<Res> out;
    Cursor c{bytes};
    while (c.ok && c.p + 8 <= bytes.size()) {
        size_t start = c.p;
        uint32_t data_size = c.u32(), header_size = c.u32();
        Res r;
        c.sz_or_ord(&r.type);
        c.sz_or_ord(&r.name);
        c.p = start + header_size;
        if (c.p + data_size > bytes.size()) break;
        r.data.assign(bytes.begin() + c.p, bytes.begin() + c.p + data_size);
        c.p += data_size;
        c.align4();
        if (r.type != 0) out.push_back(r);
    }
    return out;
}

std::string lower(std::string s) {
    for (char& ch : s) ch = static_cast<char>(std::tolower(static_cast<unsigned char>(ch)));
    return s;
}

std::string class_name(const std::string& field) {
    static const std::map<std::string, std::string> ordinals = {{"#128", "button"},    {"#129", "edit"},
                                                                {"#130", "static"},    {"#131", "listbox"},
                                                                {"#132", "scrollbar"}, {"#133", "combobox"}};
    auto o = ordinals.find(field);
    return o != ordinals.end() ? o->second : lower(field);
}

class ResourceBinary : public ::testing::Test {
protected:
    static void SetUpTestSuite() { resources = read_res(ZR_TEST_RES_FILE); }
    static const Res* find(int type, int name) {
        for (const auto& r : resources)
            if (r.type == type && r.name == name) return &r;
        return nullptr;
    }
    static std::vector<Res> resources;
};
std::vector<Res> ResourceBinary::resources;

TEST_F(ResourceBinary, DialogTemplatesMatchTheTables) {
    int dialogs = 0;
    for (const auto& r : resources) dialogs += r.type == 5;
    EXPECT_EQ(static_cast<size_t>(dialogs), zr::res::kDialogCount);
    for (size_t i = 0; i < zr::res::kDialogCount; ++i) {
        const auto& t = zr::res::kDialogs[i];
        const Res* r = find(5, t.id);
        ASSERT_NE(r, nullptr) << "dialog " << t.id;
        Cursor c{r->data};
        ASSERT_EQ(c.u16(), 1);  // DLGTEMPLATEEX
        ASSERT_EQ(c.u16(), 0xFFFF);
        c.u32();  // help id
        EXPECT_EQ(c.u32(), t.ex_style) << t.id;
        uint32_t style = c.u32();
        EXPECT_EQ(style, t.style) << t.id;
        size_t count = c.u16();
        ASSERT_EQ(count, t.control_count) << t.id;
        EXPECT_EQ(static_cast<int16_t>(c.u16()), t.x);
        EXPECT_EQ(static_cast<int16_t>(c.u16()), t.y);
        EXPECT_EQ(static_cast<int16_t>(c.u16()), t.cx) << t.id;
        EXPECT_EQ(static_cast<int16_t>(c.u16()), t.cy) << t.id;
        EXPECT_EQ(c.sz_or_ord(), "");  // no menu
        EXPECT_EQ(c.sz_or_ord(), "");  // default class
        EXPECT_EQ(c.wstr(), t.caption) << t.id;
        if (style & 0x40) {  // DS_SETFONT
            EXPECT_EQ(c.u16(), t.font_size);
            c.u16();
            c.u8();
            c.u8();
            EXPECT_EQ(c.wstr(), t.font);
        }
        for (size_t k = 0; k < count; ++k) {
            const auto& ct = t.controls[k];
            c.align4();
            c.u32();  // help id
            EXPECT_EQ(c.u32(), ct.ex_style) << t.id << "/" << ct.id;
            EXPECT_EQ(c.u32(), ct.style) << t.id << "/" << ct.id;
            EXPECT_EQ(static_cast<int16_t>(c.u16()), ct.x) << t.id << "/" << ct.id;
            EXPECT_EQ(static_cast<int16_t>(c.u16()), ct.y) << t.id << "/" << ct.id;
            EXPECT_EQ(static_cast<int16_t>(c.u16()), ct.cx) << t.id << "/" << ct.id;
            EXPECT_EQ(static_cast<int16_t>(c.u16()), ct.cy) << t.id << "/" << ct.id;
            EXPECT_EQ(static_cast<int32_t>(c.u32()), ct.id) << t.id << " control " << k;
            EXPECT_EQ(class_name(c.sz_or_ord()), lower(ct.cls)) << t.id << "/" << ct.id;
            EXPECT_EQ(c.sz_or_ord(), ct.text) << t.id << "/" << ct.id;
            uint16_t extra = c.u16();
            c.p += extra;
        }
        EXPECT_TRUE(c.ok) << "dialog " << t.id << " is cut short";
    }
}

TEST_F(ResourceBinary, StringTableMatchesTheTables) {
    std::map<int, std::string> strings;
    for (const auto& r : resources) {
        if (r.type != 6) continue;
        Cursor c{r.data};
        for (int k = 0; k < 16; ++k) {
            size_t n = c.u16();
            std::string s;
            for (size_t j = 0; j < n; ++j) s += static_cast<char>(c.u16());
            if (n) strings[(r.name - 1) * 16 + k] = s;
        }
    }
    ASSERT_EQ(strings.size(), zr::res::kStringCount);
    for (size_t i = 0; i < zr::res::kStringCount; ++i)
        EXPECT_EQ(strings[zr::res::kStrings[i].id], zr::res::kStrings[i].text) << zr::res::kStrings[i].id;
}

TEST_F(ResourceBinary, IconsAreTheDrawnIcon) {
    std::vector<int> groups;
    for (const auto& r : resources)
        if (r.type == 14) groups.push_back(r.name);
    ASSERT_EQ(groups.size(), zr::res::kIconCount);
    for (size_t i = 0; i < zr::res::kIconCount; ++i) EXPECT_EQ(groups[i], zr::res::kIcons[i]);
    // The committed icon file is the one the generator draws.
    std::ifstream f(ZR_TEST_ICON_FILE, std::ios::binary);
    std::vector<uint8_t> committed((std::istreambuf_iterator<char>(f)), std::istreambuf_iterator<char>());
    EXPECT_EQ(committed, zr::rc::make_icon_file());
}

}  // namespace
