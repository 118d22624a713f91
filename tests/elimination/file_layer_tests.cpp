// The headless file layer: path mapping, the C runtime's text mode, the
// failure seam, and the crash-safe replacement built on them.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "platform/fileio.h"
#include "platform/headless/files.h"
#include "platform/safe_file.h"

namespace {

namespace fs = std::filesystem;
using zr::headless::FileOp;

class FileLayer : public testing::Test {
protected:
    void SetUp() override {
        char pattern[] = "/tmp/zr-files-XXXXXX";
        ASSERT_NE(mkdtemp(pattern), nullptr);
        root_ = pattern;
        zr::headless::map_drive('d', root_.string());
        zr::headless::clear_file_faults();
    }
    void TearDown() override {
        zr::headless::clear_file_faults();
        fs::remove_all(root_);
    }
    std::string bytes(const char* name) const {
        std::ifstream in(root_ / name, std::ios::binary);
        std::ostringstream all;
        all << in.rdbuf();
        return all.str();
    }
    void put(const char* path, const char* mode, const std::string& text) {
        zr::fs::File* f = zr::fs::open(path, mode);
        ASSERT_NE(f, nullptr);
        EXPECT_EQ(zr::fs::write(f, text.data(), text.size()), text.size());
        zr::fs::close(f);
    }
    fs::path root_;
};

TEST_F(FileLayer, MapsWindowsPaths) {
    EXPECT_EQ(zr::headless::host_path("D:\\a\\b.gui"), root_.string() + "/a/b.gui");
    EXPECT_EQ(zr::headless::host_path("d:\\"), root_.string() + "/");
    EXPECT_EQ(zr::headless::host_path("dir\\name"), "dir/name");
    EXPECT_EQ(zr::headless::host_path("/tmp/x"), "/tmp/x");
    EXPECT_EQ(zr::fs::open("Q:\\nowhere.gui", "w"), nullptr);  // a drive that is not mapped
}

TEST_F(FileLayer, TextModeConvertsLineEndsBothWays) {
    put("D:\\t.txt", "w", "a\nb\r\n");
    EXPECT_EQ(bytes("t.txt"), "a\r\nb\r\r\n");
    put("D:\\b.txt", "wb", "x\r\ny\rz\n");
    zr::fs::File* f = zr::fs::open("D:\\b.txt", "r");
    ASSERT_NE(f, nullptr);
    char line[4];
    ASSERT_NE(zr::fs::gets(f, line, sizeof line), nullptr);
    EXPECT_STREQ(line, "x\n");
    ASSERT_NE(zr::fs::gets(f, line, sizeof line), nullptr);
    EXPECT_STREQ(line, "y\rz");  // cut at capacity - 1
    ASSERT_NE(zr::fs::gets(f, line, sizeof line), nullptr);
    EXPECT_STREQ(line, "\n");
    EXPECT_EQ(zr::fs::gets(f, line, sizeof line), nullptr);
    zr::fs::close(f);
}

TEST_F(FileLayer, SeamFailsTheNthCallOfAnOperation) {
    zr::headless::fail_file_op(FileOp::Write, 2);
    zr::fs::File* f = zr::fs::open("D:\\w.bin", "wb");
    ASSERT_NE(f, nullptr);
    EXPECT_EQ(zr::fs::write(f, "1234", 4), 4u);
    EXPECT_EQ(zr::fs::write(f, "5678", 4), 2u);  // half of it, as on a full disk
    EXPECT_EQ(zr::fs::write(f, "9", 1), 1u);
    zr::fs::close(f);
    EXPECT_EQ(bytes("w.bin"), "1234569");
    EXPECT_EQ(zr::headless::file_op_count(FileOp::Write), 3);
    EXPECT_EQ(zr::headless::file_op_count(FileOp::Create), 1);
    zr::headless::fail_file_op(FileOp::Create, 1);
    EXPECT_EQ(zr::fs::open("D:\\c.bin", "wb"), nullptr);
    zr::fs::File* r = zr::fs::open("D:\\w.bin", "rb");  // reading is no create
    EXPECT_NE(r, nullptr);
    zr::fs::close(r);
}

TEST_F(FileLayer, ReplacementIsWhollyOldOrWhollyNew) {
    const std::string old_text = "old\r\n";
    for (FileOp op : {FileOp::Create, FileOp::Write, FileOp::Flush, FileOp::Sync, FileOp::Rename}) {
        put("D:\\data.gui", "wb", old_text);
        zr::headless::clear_file_faults();
        zr::headless::fail_file_op(op, 1);
        zr::fs::Replacement r;
        bool ok = zr::fs::begin_replace(r, "D:\\data.gui") && zr::fs::write_all(r, "new\r\n", 5) &&
                  zr::fs::commit_replace(r);
        if (!ok) zr::fs::abandon_replace(r);
        EXPECT_FALSE(ok);
        EXPECT_EQ(bytes("data.gui"), old_text);
        EXPECT_FALSE(fs::exists(root_ / "data.gui.new"));
    }
    zr::headless::clear_file_faults();
    zr::fs::Replacement r;
    ASSERT_TRUE(zr::fs::begin_replace(r, "D:\\data.gui"));
    ASSERT_TRUE(zr::fs::write_all(r, "new\r\n", 5));
    ASSERT_TRUE(zr::fs::commit_replace(r));
    EXPECT_EQ(bytes("data.gui"), "new\r\n");
    // A target whose temporary name would not fit is refused.
    std::string long_path = "D:\\" + std::string(1024, 'x');
    EXPECT_FALSE(zr::fs::begin_replace(r, long_path.c_str()));
}

}  // namespace
