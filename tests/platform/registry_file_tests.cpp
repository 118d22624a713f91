// REGEDIT4 files: loading, saving, and refusing malformed text whole.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "platform/headless/registry.h"

using namespace zr::headless;

namespace {

// Test texts are written with LF; saved text has CR LF.
std::string crlf(const std::string& text) {
    std::string out;
    for (char c : text) {
        if (c == '\n') out += '\r';
        out += c;
    }
    return out;
}

class RegistryFile : public ::testing::Test {
protected:
    void SetUp() override { registry_clear(); }
};

const char kCanonical[] =
    "REGEDIT4\n"
    "\n"
    "[HKEY_LOCAL_MACHINE\\SOFTWARE]\n"
    "\n"
    "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Quillmark]\n"
    "\"zephyrion_pi\"=\"C:\\\\Program Files\\\\Zephyrion\"\n"
    "\n"
    "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Quillmark\\Zephyrion]\n"
    "@=\"default \\\"quoted\\\"\"\n"
    "\"prefetch_always\"=dword:00000001\n"
    "\"multi\"=\"line one\\nline two\\r\"\n"
    "\"bare\"=hex(1):61,62,63\n"
    "\"short\"=hex(4):01,02\n"
    "\"path\"=hex(2):25,54,45,4d,50,25,00\n"
    "\"empty blob\"=hex:\n"
    "\n"
    "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Quillmark\\Zephyrion\\Settings]\n"
    "\"proxy_path\"=\"C:\\\\Proxy\"\n"
    "\"prefetch_idle_watch_time\"=dword:0000001e\n"
    "\"MaxMTU\"=\"\"\n"
    "\n"
    "[HKEY_LOCAL_MACHINE\\System]\n"
    "\n"
    "[HKEY_CURRENT_USER\\Software]\n"
    "\"x\"=dword:ffffffff\n"
    "\n";

TEST_F(RegistryFile, SaveLoadSaveGivesTheSameText) {
    const RegLoadResult loaded = registry_load_reg(kCanonical);
    ASSERT_TRUE(loaded.ok) << loaded.message;
    const std::string saved = registry_save_reg();
    EXPECT_EQ(saved, crlf(kCanonical));

    registry_clear();
    ASSERT_TRUE(registry_load_reg(saved).ok);
    EXPECT_EQ(registry_save_reg(), saved);
}

TEST_F(RegistryFile, ValuesLoadWithTheirTypesAndEscapes) {
    ASSERT_TRUE(registry_load_reg(kCanonical).ok);
    const char* product = "software\\quillmark\\zephyrion";
    EXPECT_EQ(registry_get_string("SOFTWARE\\Quillmark", "zephyrion_pi"), "C:\\Program Files\\Zephyrion");
    EXPECT_EQ(registry_get_string(product, ""), "default \"quoted\"");
    EXPECT_EQ(registry_get_string(product, "multi"), "line one\nline two\r");
    EXPECT_EQ(registry_get_dword(product, "prefetch_always"), 1u);
    EXPECT_EQ(registry_get_raw(product, "bare")->bytes, "abc");
    EXPECT_EQ(registry_get_raw(product, "short")->type, static_cast<DWORD>(REG_DWORD));
    EXPECT_FALSE(registry_get_dword(product, "short").has_value());
    EXPECT_EQ(registry_get_raw(product, "path")->type, static_cast<DWORD>(REG_EXPAND_SZ));
    EXPECT_EQ(registry_get_string(product, "path"), "%TEMP%");
    EXPECT_EQ(registry_get_raw(product, "empty blob")->bytes, "");
    EXPECT_EQ(registry_get_dword("HKEY_CURRENT_USER\\Software", "x"), 0xFFFFFFFFu);
}

TEST_F(RegistryFile, LongHexDataWrapsAsRegeditWrapsIt) {
    std::string bytes;
    for (int i = 0; i < 50; ++i) bytes += static_cast<char>(i);
    registry_set_raw("SOFTWARE\\B", "blob", REG_BINARY, bytes);
    // 22 bytes after "blob"=hex: fill the first line to 77 columns, then 25 a line.
    std::string expected =
        "REGEDIT4\n\n[HKEY_LOCAL_MACHINE\\SOFTWARE]\n\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\B]\n\"blob\"=hex:";
    for (int i = 0; i < 50; ++i) {
        char hex[4];
        std::snprintf(hex, sizeof hex, "%02x", i);
        expected += hex;
        if (i == 49) break;
        expected += ',';
        if (i == 21 || i == 46) expected += "\\\n  ";
    }
    expected += "\n\n";
    EXPECT_EQ(registry_save_reg(), crlf(expected));

    registry_clear();
    ASSERT_TRUE(registry_load_reg(crlf(expected)).ok);
    EXPECT_EQ(registry_get_raw("SOFTWARE\\B", "blob")->bytes, bytes);
}

TEST_F(RegistryFile, CommentsBlanksAndDeletionsApplyInOrder) {
    registry_set_string("SOFTWARE\\Old\\Deep", "v", "x");
    registry_set_dword("SOFTWARE\\Keep", "gone", 1);
    registry_set_dword("SOFTWARE\\Keep", "stays", 2);
    const RegLoadResult result = registry_load_reg(
        "REGEDIT4\r\n"
        "; a comment\r\n"
        "   \r\n"
        "[-HKEY_LOCAL_MACHINE\\SOFTWARE\\Old]\r\n"
        "[hkey_local_machine\\SOFTWARE\\Keep]\r\n"
        "\"gone\"=-\r\n"
        "\"absent\"=-\r\n"
        "  \"added\" = dword:5   ; trailing comment\r\n"
        "[-HKEY_LOCAL_MACHINE\\SOFTWARE\\NeverThere]\r\n");
    ASSERT_TRUE(result.ok) << result.message;
    EXPECT_FALSE(registry_key_exists("SOFTWARE\\Old"));
    EXPECT_FALSE(registry_get_dword("SOFTWARE\\Keep", "gone").has_value());
    EXPECT_EQ(registry_get_dword("SOFTWARE\\Keep", "stays"), 2u);
    EXPECT_EQ(registry_get_dword("SOFTWARE\\Keep", "added"), 5u);
}

TEST_F(RegistryFile, MalformedTextNamesItsLineAndChangesNothing) {
    struct Case {
        const char* what;
        const char* text;
        int line;
        const char* says;
    };
    const std::vector<Case> cases = {
        {"bad header", "REGEDIT5\n[HKEY_LOCAL_MACHINE\\A]\n", 1, "REGEDIT4"},
        {"empty text", "", 1, "REGEDIT4"},
        {"value before any key", "REGEDIT4\n\n\"a\"=dword:1\n", 3, "before any key"},
        {"unterminated string", "REGEDIT4\n[HKEY_LOCAL_MACHINE\\A]\n\"a\"=\"open\n", 3, "unterminated"},
        {"unterminated name", "REGEDIT4\n[HKEY_LOCAL_MACHINE\\A]\n\"a=\"x\"\n", 3, "expected '='"},
        {"dword too long", "REGEDIT4\n[HKEY_LOCAL_MACHINE\\A]\n\"a\"=dword:123456789\n", 3, "bad dword"},
        {"dword not hex", "REGEDIT4\n[HKEY_LOCAL_MACHINE\\A]\n\"a\"=dword:12g\n", 3, "bad dword"},
        {"dword empty", "REGEDIT4\n[HKEY_LOCAL_MACHINE\\A]\n\"a\"=dword:\n", 3, "bad dword"},
        {"unknown escape", "REGEDIT4\n[HKEY_LOCAL_MACHINE\\A]\n\"a\"=\"C:\\temp\"\n", 3, "unknown escape"},
        {"text after string", "REGEDIT4\n[HKEY_LOCAL_MACHINE\\A]\n\"a\"=\"x\" y\n", 3,
         "after the closing quote"},
        {"unknown data", "REGEDIT4\n[HKEY_LOCAL_MACHINE\\A]\n\"a\"=qword:1\n", 3, "unknown value data"},
        {"unknown root", "REGEDIT4\n[HKEY_NOWHERE\\A]\n", 2, "unknown root"},
        {"empty component", "REGEDIT4\n[HKEY_LOCAL_MACHINE\\A\\\\B]\n", 2, "bad key path"},
        {"unclosed key", "REGEDIT4\n[HKEY_LOCAL_MACHINE\\A\n", 2, "without ']'"},
        {"stray text", "REGEDIT4\n[HKEY_LOCAL_MACHINE\\A]\nhello\n", 3, "unexpected text"},
        {"bad byte on a continued line", "REGEDIT4\n[HKEY_LOCAL_MACHINE\\A]\n\"a\"=hex:01,02,\\\n  03,zz\n",
         4, "bad hex byte"},
        {"byte too wide", "REGEDIT4\n[HKEY_LOCAL_MACHINE\\A]\n\"a\"=hex:100\n", 3, "bad hex byte"},
        {"long digit run", "REGEDIT4\n[HKEY_LOCAL_MACHINE\\A]\n\"a\"=hex:01,dddddddddddddddddd\n", 3,
         "bad hex byte"},
        {"continued past the end", "REGEDIT4\n[HKEY_LOCAL_MACHINE\\A]\n\"a\"=hex:01,\\\n", 3, "end of file"},
        {"bad hex type", "REGEDIT4\n[HKEY_LOCAL_MACHINE\\A]\n\"a\"=hex(x):01\n", 3, "bad value type"},
        {"value of a deleted key", "REGEDIT4\n[-HKEY_LOCAL_MACHINE\\A]\n\"a\"=dword:1\n", 3, "deleted key"},
    };
    registry_set_dword("SOFTWARE\\Seed", "kept", 9);
    const std::string before = registry_save_reg();
    for (const Case& c : cases) {
        // Most cases hold a key line before the bad one that would create a key.
        const RegLoadResult result = registry_load_reg(c.text);
        EXPECT_FALSE(result.ok) << c.what;
        EXPECT_EQ(result.line, c.line) << c.what << ": " << result.message;
        EXPECT_NE(result.message.find("line " + std::to_string(c.line) + ":"), std::string::npos) << c.what;
        EXPECT_NE(result.message.find(c.says), std::string::npos) << c.what << ": " << result.message;
        EXPECT_EQ(registry_save_reg(), before) << c.what << ": registry changed";
    }
}

TEST_F(RegistryFile, AnErrorAfterGoodLinesLeavesTheRegistryAsItWas) {
    registry_set_dword("SOFTWARE\\Quillmark", "x", 1);
    const std::string before = registry_save_reg();
    const RegLoadResult result = registry_load_reg(
        "REGEDIT4\n"
        "[-HKEY_LOCAL_MACHINE\\SOFTWARE\\Quillmark]\n"
        "[HKEY_LOCAL_MACHINE\\SOFTWARE\\New]\n"
        "\"a\"=dword:00000002\n"
        "\"b\"=dword:nope\n");
    EXPECT_FALSE(result.ok);
    EXPECT_EQ(result.line, 5);
    EXPECT_EQ(registry_save_reg(), before);
}

TEST_F(RegistryFile, FilesLoadFromTheHost) {
    const std::string path = ::testing::TempDir() + "registry_file_test.reg";
    {
        std::ofstream out(path, std::ios::binary);
        out << "REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\F]\r\n\"v\"=\"w\"\r\n";
    }
    const RegLoadResult result = registry_load_reg_file(path);
    EXPECT_TRUE(result.ok) << result.message;
    EXPECT_EQ(registry_get_string("SOFTWARE\\F", "v"), "w");
    std::remove(path.c_str());

    const RegLoadResult missing = registry_load_reg_file(path);
    EXPECT_FALSE(missing.ok);
    EXPECT_NE(missing.message.find(path), std::string::npos);
}

}  // namespace
