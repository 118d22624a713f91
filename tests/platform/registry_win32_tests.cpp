// kRegKey against the real registry (Windows or Wine): the same contract the
// headless registry is held to, under a scratch key of HKEY_CURRENT_USER.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "platform/zrutil.h"

namespace {

constexpr char kScratch[] = "Software\\ZrRegKeyTest";

class RealRegistryKey : public ::testing::Test {
protected:
    void SetUp() override {
        RegDeleteTreeA(HKEY_CURRENT_USER, kScratch);
        ASSERT_EQ(RegCreateKeyExA(HKEY_CURRENT_USER, kScratch, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key_,
                                  nullptr),
                  ERROR_SUCCESS);
    }
    void TearDown() override {
        RegCloseKey(key_);
        RegDeleteTreeA(HKEY_CURRENT_USER, kScratch);
    }
    void set(const char* name, DWORD type, const std::string& bytes) {
        ASSERT_EQ(RegSetValueExA(key_, name, 0, type, reinterpret_cast<const BYTE*>(bytes.data()),
                                 static_cast<DWORD>(bytes.size())),
                  ERROR_SUCCESS);
    }
    HKEY key_ = nullptr;
};

TEST_F(RealRegistryKey, ReadsFollowTheContract) {
    set("dword", REG_DWORD, std::string("\x2a\0\0\0", 4));
    set("binary", REG_BINARY, std::string("\x2a\0\0\0", 4));
    set("long", REG_SZ, std::string(5000, 'x') + '\0');
    set("bare", REG_SZ, "abc");

    kRegKey key;
    ASSERT_TRUE(key.Open(HKEY_CURRENT_USER, "SOFTWARE\\zrregkeytest", kFullAccess));
    DWORD number = 7;
    EXPECT_TRUE(key.GetDWORD("DWORD", &number));
    EXPECT_EQ(number, 42u);
    number = 7;
    EXPECT_FALSE(key.GetDWORD("binary", &number));
    EXPECT_FALSE(key.GetDWORD("absent", &number));
    EXPECT_EQ(number, 7u);

    std::unique_ptr<char[]> tight(new char[8]);
    EXPECT_TRUE(key.GetString("long", tight.get(), 8));
    EXPECT_STREQ(tight.get(), "xxxxxxx");
    char text[16] = "default";
    EXPECT_FALSE(key.GetString("absent", text, sizeof text));
    EXPECT_FALSE(key.GetString("dword", text, sizeof text));
    EXPECT_STREQ(text, "default");
    EXPECT_TRUE(key.GetString("bare", text, sizeof text));
    EXPECT_STREQ(text, "abc");

    EXPECT_TRUE(key.SetString("written", "1500"));
    EXPECT_TRUE(key.GetString("written", text, sizeof text));
    EXPECT_STREQ(text, "1500");
    EXPECT_TRUE(key.Close());
    EXPECT_FALSE(key.Open(HKEY_CURRENT_USER, "Software\\ZrRegKeyTest\\Missing", kFullAccess));
}

// The headless registry enumerates subkeys sorted case-insensitively with
// letters folded to lower case, as Wine does; the real one must agree.
TEST_F(RealRegistryKey, ChildrenComeInTheOrderTheHeadlessRegistryUses) {
    for (const char* name : {"0002", "b", "0000", "_x", "A", "0001"}) {
        HKEY sub = nullptr;
        ASSERT_EQ(RegCreateKeyExA(key_, name, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &sub, nullptr),
                  ERROR_SUCCESS);
        RegCloseKey(sub);
    }
    kRegKey key;
    ASSERT_TRUE(key.Open(HKEY_CURRENT_USER, kScratch, kFullAccess));
    ASSERT_EQ(key.children(), 6u);
    std::vector<std::string> names;
    char name[260];
    for (DWORD i = 0; i < key.children(); ++i) {
        ASSERT_TRUE(key.child(i, name, sizeof name));
        names.push_back(name);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"0000", "0001", "0002", "_x", "A", "b"}));
    EXPECT_FALSE(key.child(0, name, 4));
    EXPECT_STREQ(name, "");
}

}  // namespace
