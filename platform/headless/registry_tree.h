// The headless registry's tree, shared by the advapi32 functions, the
// seeding functions and the REGEDIT4 reader and writer.  Not for page code.
//
// Keys hold their name with the case it was created with; names compare
// without regard to ASCII case.  Subkeys are kept sorted the way Wine
// enumerates them: by name, compared case-insensitively with letters folded
// to lower case (Windows NT folds to upper case; the two orders differ only
// where one of [ \ ] ^ _ ` meets a letter).  Values keep the order in which
// they were first set.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/win.h"

namespace zr::headless::reg {

struct Value {
    std::string name;  // "" is the key's default value
    DWORD type = REG_NONE;
    std::vector<BYTE> data;
};

struct Key {
    std::string name;
    std::vector<Value> values;
    std::vector<std::shared_ptr<Key>> subkeys;
    bool deleted = false;  // set when the key leaves the tree; open handles see it
};

// A predefined root: its name in a REGEDIT4 file and its handle.
struct Root {
    const char* name;
    HKEY handle;
};
// HKEY_LOCAL_MACHINE first, then the other roots the headless registry knows.
const std::vector<Root>& roots();
// The tree of a predefined handle; null for any other handle.
std::shared_ptr<Key> root_key(HKEY handle);
// The root whose name matches `name` (case-insensitive); null when none.
const Root* find_root(std::string_view name);

// <0, 0, >0 as Windows orders key names.
int compare_names(std::string_view a, std::string_view b);
bool same_name(std::string_view a, std::string_view b);

// Splits a relative key path at backslashes.  Trailing backslashes are
// ignored; a leading one or an empty component in the middle makes the path
// bad (false).  An empty path gives no components.
bool split_path(std::string_view path, std::vector<std::string_view>& parts);

std::shared_ptr<Key> find_subkey(const Key& key, std::string_view name);
// The existing subkey of that name, or a new one in its sorted place.
std::shared_ptr<Key> add_subkey(Key& key, std::string_view name);
// Removes the subkey and marks it and everything below it deleted.
bool remove_subkey(Key& key, std::string_view name);
// Empties every root, marking all keys deleted.
void clear_all();

Value* find_value(Key& key, std::string_view name);
void set_value(Key& key, std::string_view name, DWORD type, const BYTE* data, size_t size);
bool remove_value(Key& key, std::string_view name);

// Resolves a seeding path: "HKEY_LOCAL_MACHINE\A\B" or, without a known
// root name in front, "A\B" under HKEY_LOCAL_MACHINE.  Null when the path is
// bad or (with create false) a key on the way is missing.
std::shared_ptr<Key> resolve(std::string_view path, bool create);

}  // namespace zr::headless::reg
