// The script reader: styles as the resource compiler stores them, and a
// loud, located refusal of everything it does not understand.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "rc_script.h"

namespace {

using zr::rc::parse_script;
using zr::rc::ScriptError;

zr::rc::Script parse(const std::string& text) { return parse_script(text, "test.rc", ""); }

const char* kOneDialog =
    "#define IDD_X 100\n"
    "#define BOX (BS_AUTOCHECKBOX | WS_TABSTOP)\n"
    "IDD_X DIALOGEX 0, 0, 200, 100\n"
    "CAPTION \"Title\"\n"
    "STYLE WS_CHILD | WS_DISABLED\n"
    "FONT 8, \"MS Shell Dlg\", 0, 0, 0x1\n"
    "BEGIN\n"
    "    CONTROL \"&Box\", 300, \"BUTTON\", BOX, 1, 2, 3, 4\n"
    "    CONTROL \"\", 301, \"msctls_updown32\", UDS_SETBUDDYINT | NOT WS_VISIBLE, 5, 6, 7, 8,\n"
    "            WS_EX_CLIENTEDGE\n"
    "    CONTROL \"label\", IDC_STATIC, \"static\", SS_LEFT | NOT WS_VISIBLE | WS_VISIBLE, 0, 0, 9, 9\n"
    "END\n"
    "STRINGTABLE\n"
    "BEGIN\n"
    "    6006, \"Reset Cache?\"\n"
    "    6005 \"Say \"\"yes\"\"\\nor no\" // comment\n"
    "END\n"
    "5001 ICON \"site.ico\"\n";

TEST(RcScript, StoresStylesAsTheResourceCompilerDoes) {
    auto s = parse(kOneDialog);
    ASSERT_EQ(s.dialogs.size(), 1u);
    const auto& d = s.dialogs[0];
    EXPECT_EQ(d.id, 100);
    // CAPTION adds WS_CAPTION and FONT adds DS_SETFONT, whatever their order.
    EXPECT_EQ(d.style, 0x40000000u | 0x08000000u | 0x00C00000u | 0x40u);
    EXPECT_EQ(d.caption, "Title");
    EXPECT_EQ(d.font, "MS Shell Dlg");
    EXPECT_EQ(d.font_size, 8);
    ASSERT_EQ(d.controls.size(), 3u);
    // WS_CHILD | WS_VISIBLE are added to every control; NOT takes bits away.
    EXPECT_EQ(d.controls[0].style, 0x50010003u);
    EXPECT_EQ(d.controls[0].cls, "Button");
    EXPECT_EQ(d.controls[0].cy, 4);
    EXPECT_EQ(d.controls[1].style, 0x40000002u);
    EXPECT_EQ(d.controls[1].ex_style, 0x200u);
    EXPECT_EQ(d.controls[1].cls, "msctls_updown32");
    EXPECT_EQ(d.controls[2].style, 0x50000000u);
    EXPECT_EQ(d.controls[2].id, -1);
    EXPECT_EQ(d.controls[2].cls, "Static");
    ASSERT_EQ(s.strings.size(), 2u);
    EXPECT_EQ(s.strings[0].text, "Reset Cache?");
    EXPECT_EQ(s.strings[1].text, "Say \"yes\"\nor no");
    ASSERT_EQ(s.icons.size(), 1u);
    EXPECT_EQ(s.icons[0].id, 5001);
}

TEST(RcScript, RefusesWhatItDoesNotUnderstandWithTheLine) {
    const std::string dlg = "1 DIALOGEX 0, 0, 10, 10\nSTYLE WS_CHILD\nBEGIN\n";
    struct Case {
        std::string text;
        int line;
        const char* says;
    } cases[] = {
        {dlg + "CONTROL \"a\", 5, \"Button\", BS_BOGUS, 0, 0, 1, 1\nEND\n", 4, "unknown name BS_BOGUS"},
        {dlg + "CONTROL \"a\", 5, \"Gadget\", 0, 0, 0, 1, 1\nEND\n", 4, "unknown window class"},
        {dlg + "CONTROL \"a\", 5, \"Button\" 0, 0, 0, 1, 1\nEND\n", 4, "expected ','"},
        {dlg + "LTEXT \"a\", 5, 0, 0, 1, 1\nEND\n", 4, "write controls as CONTROL"},
        {dlg +
             "CONTROL \"a\", 5, \"Edit\", 0, 0, 0, 1, 1\n\nCONTROL \"b\", 5, \"Edit\", 0, 0, 0, 1, 1\nEND\n",
         6, "used twice"},
        {dlg + "CONTROL \"a\", 70000, \"Edit\", 0, 0, 0, 1, 1\nEND\n", 4, "out of range"},
        {dlg + "CONTROL \"a\", 010, \"Edit\", 0, 0, 0, 1, 1\nEND\n", 4, "leading zero"},
        {dlg + "CONTROL \"caf\xe9\", 5, \"Edit\", 0, 0, 0, 1, 1\nEND\n", 4, "printable ASCII"},
        {dlg + "CONTROL \"a\", 5, \"Edit\", 0, 0, 0, 1\nEND\n", 5, "expected ','"},
        {dlg + "CONTROL \"a\", 5, \"Edit\", 0, 0, 0, 1, 1\n", 4, "missing END"},
        {"1 DIALOGEX 0, 0, 10, 10\nBEGIN\nEND\n", 1, "has no STYLE"},
        {"\n1 DIALOG 0, 0, 10, 10\nSTYLE 0\nBEGIN\nEND\n", 2, "DIALOGEX"},
        {"1 MENU\nBEGIN\nEND\n", 1, "unsupported resource type MENU"},
        {"STRINGTABLE\nBEGIN\n1 \"a\"\n1 \"b\"\nEND\n", 4, "defined twice"},
        {"STRINGTABLE\nBEGIN\n1 \"a\\q\"\nEND\n", 3, "unsupported escape"},
        {"STRINGTABLE\nBEGIN\n1 \"open\nEND\n", 3, "unterminated string"},
        {"#ifdef X\n", 1, "unsupported preprocessor line #ifdef"},
        {"\n#define A WS_CHILD | NOT WS_VISIBLE\n", 2, "NOT is only allowed in a style"},
        {"#define A 1\n#define A 2\n", 2, "defined twice"},
        {"#include \"zrres_ids.h\"\n", 1, "cannot include"},
        {"1 ICON site\n", 1, "expected a file name"},
        {"/* open\n1 ICON \"a.ico\"\n", 2, "unterminated comment"},
    };
    for (const auto& c : cases) {
        try {
            parse(c.text);
            ADD_FAILURE() << "accepted: " << c.text;
        } catch (const ScriptError& e) {
            EXPECT_EQ(e.line, c.line) << e.what();
            EXPECT_EQ(e.file, "test.rc") << e.what();
            EXPECT_NE(e.message.find(c.says), std::string::npos) << e.what();
            EXPECT_EQ(std::string(e.what()).rfind("test.rc:" + std::to_string(c.line) + ": ", 0), 0u)
                << e.what();
        }
    }
}

TEST(RcScript, ReadsIncludedHeadersAndNamesTheirLines) {
    namespace fs = std::filesystem;
    fs::path dir = fs::temp_directory_path() /
                   ("zr_rc_test_" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()));
    fs::create_directories(dir);
    {
        std::ofstream(dir / "ids.h") << "#pragma once\n#define IDS_HELLO 6000\n#define IDD_PAGE 2000\n";
        std::ofstream(dir / "bad.h") << "#define GOOD 1\n#define BAD WS_NOSUCH\n";
        std::ofstream(dir / "ok.rc") << "#include <windows.h>\n#include \"ids.h\"\n"
                                        "STRINGTABLE\nBEGIN\nIDS_HELLO \"hi\"\nEND\n";
        std::ofstream(dir / "bad.rc") << "#include \"bad.h\"\n";
    }
    auto s = zr::rc::parse_script_file((dir / "ok.rc").string());
    ASSERT_EQ(s.strings.size(), 1u);
    EXPECT_EQ(s.strings[0].id, 6000);
    try {
        zr::rc::parse_script_file((dir / "bad.rc").string());
        ADD_FAILURE() << "accepted an unknown name in a header";
    } catch (const ScriptError& e) {
        EXPECT_EQ(e.file, "bad.h");
        EXPECT_EQ(e.line, 2);
    }
    EXPECT_THROW(zr::rc::parse_script_file((dir / "missing.rc").string()), ScriptError);
    fs::remove_all(dir);
}

TEST(RcScript, KnowsTheWindowClassesInAnyCase) {
    EXPECT_EQ(zr::rc::canonical_class("LISTBOX"), "ListBox");
    EXPECT_EQ(zr::rc::canonical_class("SysListView32"), "SysListView32");
    EXPECT_EQ(zr::rc::canonical_class("MSCTLS_TRACKBAR32"), "msctls_trackbar32");
    EXPECT_EQ(zr::rc::canonical_class("ListBoxes"), "");
}

}  // namespace
