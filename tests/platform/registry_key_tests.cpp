// kRegKey and the headless advapi32 functions under it.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "platform/headless/registry.h"
#include "platform/zrutil.h"

using namespace zr::headless;

namespace {

constexpr char kSettings[] = "SOFTWARE\\Quillmark\\Zephyrion\\Settings";

class RegistryKey : public ::testing::Test {
protected:
    void SetUp() override { registry_clear(); }
    void TearDown() override { EXPECT_EQ(registry_open_handles(), 0u) << "a handle was left open"; }
};

TEST_F(RegistryKey, KeyNamesMatchWithoutRegardToCaseAndKeepTheirCase) {
    registry_create_key(kSettings);
    registry_set_dword(kSettings, "tcp_type", 1);

    kRegKey key;
    ASSERT_TRUE(key.Open(HKEY_LOCAL_MACHINE, "Software\\QUILLMARK\\zephyrion\\settings", kFullAccess));
    DWORD value = 0;
    EXPECT_TRUE(key.GetDWORD("TCP_TYPE", &value));
    EXPECT_EQ(value, 1u);
    key.Close();

    ASSERT_TRUE(key.Open(HKEY_LOCAL_MACHINE, "software\\quillmark", kFullAccess));
    char name[260];
    ASSERT_TRUE(key.child(0, name, sizeof name));
    EXPECT_STREQ(name, "Zephyrion");
}

TEST_F(RegistryKey, MissingKeyOrValueLeavesTheDefaults) {
    kRegKey key;
    EXPECT_FALSE(key.Open(HKEY_LOCAL_MACHINE, kSettings, kFullAccess));
    DWORD number = 30;
    char text[16] = "default";
    EXPECT_FALSE(key.GetDWORD("prefetch_idle_watch_time", &number));
    EXPECT_FALSE(key.GetString("proxy_path", text, sizeof text));
    EXPECT_FALSE(key.SetDWORD("x", 1));
    EXPECT_EQ(number, 30u);
    EXPECT_STREQ(text, "default");
    EXPECT_FALSE(registry_key_exists(kSettings)) << "opening must never create the key";

    registry_create_key(kSettings);
    ASSERT_TRUE(key.Open(HKEY_LOCAL_MACHINE, kSettings, kFullAccess));
    EXPECT_FALSE(key.GetDWORD("prefetch_idle_watch_time", &number));
    EXPECT_FALSE(key.GetString("proxy_path", text, sizeof text));
    EXPECT_EQ(number, 30u);
    EXPECT_STREQ(text, "default");
}

TEST_F(RegistryKey, GetDwordTakesOnlyFourByteDwords) {
    struct Case {
        const char* what;
        DWORD type;
        std::string bytes;
        bool read;
    };
    const std::vector<Case> cases = {
        {"dword", REG_DWORD, std::string("\x2a\0\0\0", 4), true},
        {"string", REG_SZ, std::string("42\0", 3), false},
        {"short dword", REG_DWORD, std::string("\x2a\0\0", 3), false},
        {"long dword", REG_DWORD, std::string("\x2a\0\0\0\0", 5), false},
        {"binary of four", REG_BINARY, std::string("\x2a\0\0\0", 4), false},
    };
    registry_create_key(kSettings);
    for (const Case& c : cases) {
        registry_set_raw(kSettings, "v", c.type, c.bytes);
        kRegKey key;
        ASSERT_TRUE(key.Open(HKEY_LOCAL_MACHINE, kSettings, kFullAccess));
        DWORD value = 7;
        EXPECT_EQ(key.GetDWORD("v", &value), c.read) << c.what;
        EXPECT_EQ(value, c.read ? 42u : 7u) << c.what;
    }
}

TEST_F(RegistryKey, GetStringCutsToCapacityAndAlwaysTerminates) {
    struct Case {
        const char* what;
        DWORD type;
        std::string stored;
        size_t capacity;
        const char* expected;  // nullptr: not read
    };
    const std::vector<Case> cases = {
        {"fits", REG_SZ, std::string("C:\\Proxy\0", 9), 260, "C:\\Proxy"},
        {"exact fit", REG_SZ, std::string("1234567\0", 8), 8, "1234567"},
        {"one too long", REG_SZ, std::string("12345678\0", 9), 8, "1234567"},
        {"far too long", REG_SZ, std::string(5000, 'x') + '\0', 8, "xxxxxxx"},
        {"capacity one", REG_SZ, std::string("abc\0", 4), 1, ""},
        {"no NUL stored", REG_SZ, "abc", 260, "abc"},
        {"no NUL, cut", REG_SZ, "abcdefghij", 4, "abc"},
        {"stops at first NUL", REG_SZ, std::string("ab\0cd\0", 6), 260, "ab"},
        {"empty, no bytes", REG_SZ, "", 260, ""},
        {"expand string", REG_EXPAND_SZ, std::string("%TEMP%\0", 7), 260, "%TEMP%"},
        {"dword", REG_DWORD, std::string("\1\0\0\0", 4), 260, nullptr},
        {"multi string", REG_MULTI_SZ, std::string("a\0b\0\0", 5), 260, nullptr},
    };
    registry_create_key(kSettings);
    for (const Case& c : cases) {
        registry_set_raw(kSettings, "proxy_path", c.type, c.stored);
        // Exactly `capacity` bytes on the heap, so a write past the end is caught.
        std::unique_ptr<char[]> buffer(new char[c.capacity]);
        std::memset(buffer.get(), '#', c.capacity);
        kRegKey key;
        ASSERT_TRUE(key.Open(HKEY_LOCAL_MACHINE, kSettings, kFullAccess));
        const bool read = key.GetString("proxy_path", buffer.get(), c.capacity);
        EXPECT_EQ(read, c.expected != nullptr) << c.what;
        if (c.expected != nullptr)
            EXPECT_STREQ(buffer.get(), c.expected) << c.what;
        else
            EXPECT_EQ(buffer[0], '#') << c.what << ": buffer touched";
    }
}

TEST_F(RegistryKey, SetStringAndDwordStoreWindowsTypes) {
    registry_create_key(kSettings);
    kRegKey key;
    ASSERT_TRUE(key.Open(HKEY_LOCAL_MACHINE, kSettings, kFullAccess));
    EXPECT_TRUE(key.SetString("MaxMTU", "1500"));
    EXPECT_TRUE(key.SetString("DefaultTTL", ""));
    EXPECT_TRUE(key.SetDWORD("tcp_init", 0xFFFFFFFFu));
    EXPECT_TRUE(key.Close());
    EXPECT_FALSE(key.Close());

    EXPECT_EQ(registry_get_raw(kSettings, "MaxMTU")->bytes, std::string("1500\0", 5));
    EXPECT_EQ(registry_get_raw(kSettings, "MaxMTU")->type, static_cast<DWORD>(REG_SZ));
    EXPECT_EQ(registry_get_string(kSettings, "DefaultTTL"), "");
    EXPECT_EQ(registry_get_dword(kSettings, "tcp_init"), 0xFFFFFFFFu);
}

TEST_F(RegistryKey, QueryValueFollowsTheMoreDataProtocol) {
    registry_set_string(kSettings, "name", "hello");
    HKEY key = nullptr;
    ASSERT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, kSettings, 0, KEY_ALL_ACCESS, &key), ERROR_SUCCESS);

    DWORD type = 0, size = 0;
    EXPECT_EQ(RegQueryValueExA(key, "name", nullptr, &type, nullptr, &size), ERROR_SUCCESS);
    EXPECT_EQ(type, static_cast<DWORD>(REG_SZ));
    EXPECT_EQ(size, 6u) << "a string's size counts its NUL";

    char small[3] = {'#', '#', '#'};
    size = sizeof small;
    EXPECT_EQ(RegQueryValueExA(key, "name", nullptr, &type, reinterpret_cast<LPBYTE>(small), &size),
              ERROR_MORE_DATA);
    EXPECT_EQ(size, 6u);
    EXPECT_EQ(small[0], '#') << "nothing written on ERROR_MORE_DATA";

    char exact[6];
    size = sizeof exact;
    EXPECT_EQ(RegQueryValueExA(key, "name", nullptr, nullptr, reinterpret_cast<LPBYTE>(exact), &size),
              ERROR_SUCCESS);
    EXPECT_STREQ(exact, "hello");

    EXPECT_EQ(RegQueryValueExA(key, "absent", nullptr, &type, nullptr, &size), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RegQueryValueExA(key, "name", nullptr, &type, reinterpret_cast<LPBYTE>(exact), nullptr),
              ERROR_INVALID_PARAMETER);

    // A string stored without its NUL gets one when there is room; the size
    // reported stays the stored one.
    registry_set_raw(kSettings, "bare", REG_SZ, "abc");
    char roomy[8];
    std::memset(roomy, '#', sizeof roomy);
    size = sizeof roomy;
    EXPECT_EQ(RegQueryValueExA(key, "bare", nullptr, nullptr, reinterpret_cast<LPBYTE>(roomy), &size),
              ERROR_SUCCESS);
    EXPECT_EQ(size, 3u);
    EXPECT_STREQ(roomy, "abc");
    EXPECT_EQ(RegCloseKey(key), ERROR_SUCCESS);
}

TEST_F(RegistryKey, HandlesAreCheckedForValidityAndAccess) {
    registry_create_key(kSettings);
    HKEY key = nullptr;
    ASSERT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, kSettings, 0, KEY_QUERY_VALUE, &key), ERROR_SUCCESS);
    const DWORD one = 1;
    EXPECT_EQ(RegSetValueExA(key, "x", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&one), 4),
              ERROR_ACCESS_DENIED);
    EXPECT_FALSE(registry_get_dword(kSettings, "x").has_value());
    EXPECT_EQ(RegCloseKey(key), ERROR_SUCCESS);
    EXPECT_EQ(RegCloseKey(key), ERROR_INVALID_HANDLE);
    DWORD size = 0;
    EXPECT_EQ(RegQueryValueExA(key, "x", nullptr, nullptr, nullptr, &size), ERROR_INVALID_HANDLE);

    // A key deleted under an open handle.
    ASSERT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, kSettings, 0, KEY_ALL_ACCESS, &key), ERROR_SUCCESS);
    EXPECT_TRUE(registry_delete_tree("SOFTWARE\\Quillmark"));
    EXPECT_EQ(RegSetValueExA(key, "x", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&one), 4),
              ERROR_KEY_DELETED);
    EXPECT_EQ(RegCloseKey(key), ERROR_SUCCESS);

    // Paths: a leading backslash is bad, trailing ones are ignored, a
    // missing key is not found.
    registry_create_key(kSettings);
    EXPECT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, "\\SOFTWARE", 0, KEY_ALL_ACCESS, &key), ERROR_BAD_PATHNAME);
    EXPECT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, "SOFTWARE\\Nobody", 0, KEY_ALL_ACCESS, &key),
              ERROR_FILE_NOT_FOUND);
    ASSERT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, "SOFTWARE\\Quillmark\\\\", 0, KEY_ALL_ACCESS, &key),
              ERROR_SUCCESS);
    EXPECT_EQ(RegCloseKey(key), ERROR_SUCCESS);
    EXPECT_EQ(RegOpenKeyExA(HKEY_LOCAL_MACHINE, kSettings, 0, KEY_ALL_ACCESS, nullptr),
              ERROR_INVALID_PARAMETER);

    // The object closes its key when dropped.
    {
        kRegKey scoped;
        ASSERT_TRUE(scoped.Open(HKEY_LOCAL_MACHINE, kSettings, kFullAccess));
        EXPECT_EQ(registry_open_handles(), 1u);
    }
}

TEST_F(RegistryKey, ChildrenEnumerateInSortedCaseInsensitiveOrder) {
    constexpr char kNetTrans[] = "System\\CurrentControlSet\\Services\\Class\\NetTrans";
    for (const char* name : {"0002", "b", "0000", "_x", "A", "0001"})
        registry_create_key((std::string(kNetTrans) + "\\" + name).c_str());

    kRegKey key;
    ASSERT_TRUE(key.Open(HKEY_LOCAL_MACHINE, kNetTrans, kFullAccess));
    ASSERT_EQ(key.children(), 6u);
    std::vector<std::string> names;
    char name[260];
    for (DWORD i = 0; i < key.children(); ++i) {
        ASSERT_TRUE(key.child(i, name, sizeof name));
        names.push_back(name);
    }
    // Letters fold to lower case, as under Wine, so '_' (0x5F) sorts before 'a'.
    EXPECT_EQ(names, (std::vector<std::string>{"0000", "0001", "0002", "_x", "A", "b"}));
    EXPECT_FALSE(key.child(6, name, sizeof name));

    char tight[5];
    EXPECT_TRUE(key.child(0, tight, sizeof tight));
    EXPECT_STREQ(tight, "0000");
    EXPECT_FALSE(key.child(0, tight, 4)) << "a name that does not fit with its NUL";
    EXPECT_STREQ(tight, "");

    kRegKey closed;
    EXPECT_EQ(closed.children(), 0u);
    EXPECT_FALSE(closed.child(0, name, sizeof name));
}

TEST_F(RegistryKey, CreateKeyMakesTheWholePathAndDeleteValueRemovesOne) {
    HKEY key = nullptr;
    DWORD disposition = 0;
    ASSERT_EQ(RegCreateKeyExA(HKEY_LOCAL_MACHINE, "SOFTWARE\\A\\B", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                              &key, &disposition),
              ERROR_SUCCESS);
    EXPECT_EQ(disposition, static_cast<DWORD>(REG_CREATED_NEW_KEY));
    const DWORD one = 1;
    EXPECT_EQ(RegSetValueExA(key, "v", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&one), 4), ERROR_SUCCESS);
    EXPECT_EQ(RegDeleteValueA(key, "V"), ERROR_SUCCESS);
    EXPECT_EQ(RegDeleteValueA(key, "v"), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RegCloseKey(key), ERROR_SUCCESS);

    ASSERT_EQ(RegCreateKeyExA(HKEY_LOCAL_MACHINE, "software\\a", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key,
                              &disposition),
              ERROR_SUCCESS);
    EXPECT_EQ(disposition, static_cast<DWORD>(REG_OPENED_EXISTING_KEY));
    EXPECT_EQ(RegCloseKey(key), ERROR_SUCCESS);
    EXPECT_TRUE(registry_key_exists("SOFTWARE\\A\\B"));
}

TEST_F(RegistryKey, SeedingFunctionsCreateInspectAndDelete) {
    registry_set_string(kSettings, "proxy_path", "C:\\Proxy");
    EXPECT_TRUE(registry_key_exists("HKEY_LOCAL_MACHINE\\software\\quillmark"));
    EXPECT_EQ(registry_get_string("SOFTWARE\\Quillmark\\Zephyrion\\SETTINGS", "PROXY_PATH"), "C:\\Proxy");
    EXPECT_FALSE(registry_get_dword(kSettings, "proxy_path").has_value());
    EXPECT_TRUE(registry_delete_value(kSettings, "proxy_path"));
    EXPECT_FALSE(registry_get_string(kSettings, "proxy_path").has_value());

    EXPECT_FALSE(registry_create_key("SOFTWARE\\\\Bad"));
    EXPECT_FALSE(registry_delete_tree("SOFTWARE\\Nobody"));
    EXPECT_TRUE(registry_delete_tree("SOFTWARE\\Quillmark\\Zephyrion"));
    EXPECT_TRUE(registry_key_exists("SOFTWARE\\Quillmark"));
    EXPECT_FALSE(registry_key_exists("SOFTWARE\\Quillmark\\Zephyrion"));

    registry_clear();
    EXPECT_FALSE(registry_key_exists("SOFTWARE"));
}

}  // namespace
