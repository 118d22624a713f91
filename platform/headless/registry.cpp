// The headless registry: the tree, the advapi32 functions page code calls
// and the seeding functions of registry.h.
//
// Handles are numbers (4, 8, 12, ...) that are never handed out twice, so a
// closed handle stays invalid.  A handle keeps its key alive; when the key
// leaves the tree the handle reports ERROR_KEY_DELETED.  Each handle carries
// the access it was opened with, and reads, writes and enumeration check it.
#include "platform/headless/registry.h"

#include <cstring>
#include <map>

#include "platform/headless/registry_tree.h"

namespace zr::headless::reg {

namespace {

struct Roots {
    std::vector<Root> list;
    std::vector<std::shared_ptr<Key>> trees;
};

Roots& root_table() {
    static Roots roots = [] {
        Roots r;
        r.list = {{"HKEY_LOCAL_MACHINE", HKEY_LOCAL_MACHINE},
                  {"HKEY_CURRENT_USER", HKEY_CURRENT_USER},
                  {"HKEY_CLASSES_ROOT", HKEY_CLASSES_ROOT},
                  {"HKEY_USERS", HKEY_USERS}};
        for (const Root& root : r.list) {
            auto tree = std::make_shared<Key>();
            tree->name = root.name;
            r.trees.push_back(tree);
        }
        return r;
    }();
    return roots;
}

char lower(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; }

void mark_deleted(Key& key) {
    key.deleted = true;
    for (auto& sub : key.subkeys) mark_deleted(*sub);
}

// Index of the first subkey not ordered before `name`.
size_t lower_bound(const Key& key, std::string_view name) {
    size_t low = 0, high = key.subkeys.size();
    while (low < high) {
        const size_t mid = (low + high) / 2;
        if (compare_names(key.subkeys[mid]->name, name) < 0)
            low = mid + 1;
        else
            high = mid;
    }
    return low;
}

}  // namespace

const std::vector<Root>& roots() { return root_table().list; }

std::shared_ptr<Key> root_key(HKEY handle) {
    Roots& table = root_table();
    for (size_t i = 0; i < table.list.size(); ++i)
        if (table.list[i].handle == handle) return table.trees[i];
    return nullptr;
}

const Root* find_root(std::string_view name) {
    for (const Root& root : roots())
        if (same_name(root.name, name)) return &root;
    return nullptr;
}

int compare_names(std::string_view a, std::string_view b) {
    const size_t n = a.size() < b.size() ? a.size() : b.size();
    for (size_t i = 0; i < n; ++i) {
        const unsigned char x = static_cast<unsigned char>(lower(a[i]));
        const unsigned char y = static_cast<unsigned char>(lower(b[i]));
        if (x != y) return x < y ? -1 : 1;
    }
    if (a.size() == b.size()) return 0;
    return a.size() < b.size() ? -1 : 1;
}

bool same_name(std::string_view a, std::string_view b) { return compare_names(a, b) == 0; }

bool split_path(std::string_view path, std::vector<std::string_view>& parts) {
    parts.clear();
    while (!path.empty() && path.back() == '\\') path.remove_suffix(1);
    if (path.empty()) return true;
    if (path.front() == '\\') return false;
    size_t start = 0;
    while (start <= path.size()) {
        size_t end = path.find('\\', start);
        if (end == std::string_view::npos) end = path.size();
        if (end == start) return false;
        parts.push_back(path.substr(start, end - start));
        start = end + 1;
    }
    return true;
}

std::shared_ptr<Key> find_subkey(const Key& key, std::string_view name) {
    const size_t at = lower_bound(key, name);
    if (at < key.subkeys.size() && same_name(key.subkeys[at]->name, name)) return key.subkeys[at];
    return nullptr;
}

std::shared_ptr<Key> add_subkey(Key& key, std::string_view name) {
    const size_t at = lower_bound(key, name);
    if (at < key.subkeys.size() && same_name(key.subkeys[at]->name, name)) return key.subkeys[at];
    auto sub = std::make_shared<Key>();
    sub->name = std::string(name);
    key.subkeys.insert(key.subkeys.begin() + static_cast<std::ptrdiff_t>(at), sub);
    return sub;
}

bool remove_subkey(Key& key, std::string_view name) {
    const size_t at = lower_bound(key, name);
    if (at >= key.subkeys.size() || !same_name(key.subkeys[at]->name, name)) return false;
    mark_deleted(*key.subkeys[at]);
    key.subkeys.erase(key.subkeys.begin() + static_cast<std::ptrdiff_t>(at));
    return true;
}

void clear_all() {
    for (auto& tree : root_table().trees) {
        for (auto& sub : tree->subkeys) mark_deleted(*sub);
        tree->subkeys.clear();
        tree->values.clear();
    }
}

Value* find_value(Key& key, std::string_view name) {
    for (Value& value : key.values)
        if (same_name(value.name, name)) return &value;
    return nullptr;
}

void set_value(Key& key, std::string_view name, DWORD type, const BYTE* data, size_t size) {
    Value* value = find_value(key, name);
    if (value == nullptr) {
        key.values.push_back(Value{std::string(name), type, {}});
        value = &key.values.back();
    }
    value->type = type;
    value->data.assign(data, data + size);
}

bool remove_value(Key& key, std::string_view name) {
    for (auto it = key.values.begin(); it != key.values.end(); ++it) {
        if (same_name(it->name, name)) {
            key.values.erase(it);
            return true;
        }
    }
    return false;
}

std::shared_ptr<Key> resolve(std::string_view path, bool create) {
    std::shared_ptr<Key> key = root_key(HKEY_LOCAL_MACHINE);
    const size_t slash = path.find('\\');
    if (const Root* root = find_root(path.substr(0, slash))) {
        key = root_key(root->handle);
        path = slash == std::string_view::npos ? std::string_view() : path.substr(slash + 1);
    }
    std::vector<std::string_view> parts;
    if (!split_path(path, parts)) return nullptr;
    for (std::string_view part : parts) {
        std::shared_ptr<Key> next = create ? add_subkey(*key, part) : find_subkey(*key, part);
        if (next == nullptr) return nullptr;
        key = next;
    }
    return key;
}

}  // namespace zr::headless::reg

// ---------------------------------------------------------------------------
// advapi32

namespace {

using zr::headless::reg::Key;
using zr::headless::reg::Value;

// Access rights of registry keys.
constexpr REGSAM kQueryValue = 0x0001;
constexpr REGSAM kSetValue = 0x0002;
constexpr REGSAM kCreateSubKey = 0x0004;
constexpr REGSAM kEnumerateSubKeys = 0x0008;
constexpr REGSAM kAllKeyRights = 0xF003F;

// Generic rights and MAXIMUM_ALLOWED mapped onto key rights.
REGSAM map_access(REGSAM access) {
    REGSAM mapped = access & kAllKeyRights;
    if (access & 0x80000000u) mapped |= 0x20019;        // GENERIC_READ -> KEY_READ
    if (access & 0x40000000u) mapped |= 0x20006;        // GENERIC_WRITE -> KEY_WRITE
    if (access & 0x20000000u) mapped |= 0x20019;        // GENERIC_EXECUTE -> KEY_EXECUTE
    if (access & 0x10000000u) mapped |= kAllKeyRights;  // GENERIC_ALL
    if (access & 0x02000000u) mapped |= kAllKeyRights;  // MAXIMUM_ALLOWED
    return mapped;
}

struct OpenKey {
    std::shared_ptr<Key> key;
    REGSAM access;
};

struct HandleTable {
    std::map<uintptr_t, OpenKey> open;
    uintptr_t next = 4;
};

HandleTable& handles() {
    static HandleTable table;
    return table;
}

// The key behind `handle` and the access it allows; status on failure.
LONG lookup(HKEY handle, std::shared_ptr<Key>& key, REGSAM& access) {
    if (auto root = zr::headless::reg::root_key(handle)) {
        key = root;
        access = kAllKeyRights;
        return ERROR_SUCCESS;
    }
    auto it = handles().open.find(reinterpret_cast<uintptr_t>(handle));
    if (it == handles().open.end()) return ERROR_INVALID_HANDLE;
    if (it->second.key->deleted) return ERROR_KEY_DELETED;
    key = it->second.key;
    access = it->second.access;
    return ERROR_SUCCESS;
}

HKEY new_handle(const std::shared_ptr<Key>& key, REGSAM access) {
    HandleTable& table = handles();
    const uintptr_t value = table.next;
    table.next += 4;
    table.open[value] = OpenKey{key, map_access(access)};
    return reinterpret_cast<HKEY>(value);
}

LONG lookup_for(HKEY handle, REGSAM needed, std::shared_ptr<Key>& key) {
    REGSAM access = 0;
    const LONG status = lookup(handle, key, access);
    if (status != ERROR_SUCCESS) return status;
    return (access & needed) == needed ? ERROR_SUCCESS : ERROR_ACCESS_DENIED;
}

bool is_string_type(DWORD type) { return type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ; }

}  // namespace

LONG RegOpenKeyExA(HKEY hKey, LPCSTR lpSubKey, DWORD, REGSAM samDesired, PHKEY phkResult) {
    if (phkResult == nullptr) return ERROR_INVALID_PARAMETER;
    std::shared_ptr<Key> key;
    REGSAM parent_access = 0;
    const LONG status = lookup(hKey, key, parent_access);
    if (status != ERROR_SUCCESS) return status;
    *phkResult = nullptr;
    std::vector<std::string_view> parts;
    if (!zr::headless::reg::split_path(lpSubKey != nullptr ? lpSubKey : "", parts)) return ERROR_BAD_PATHNAME;
    for (std::string_view part : parts) {
        key = zr::headless::reg::find_subkey(*key, part);
        if (key == nullptr) return ERROR_FILE_NOT_FOUND;
    }
    *phkResult = new_handle(key, samDesired);
    return ERROR_SUCCESS;
}

LONG RegCloseKey(HKEY hKey) {
    if (zr::headless::reg::root_key(hKey) != nullptr) return ERROR_SUCCESS;
    return handles().open.erase(reinterpret_cast<uintptr_t>(hKey)) == 1 ? ERROR_SUCCESS
                                                                        : ERROR_INVALID_HANDLE;
}

// As on Windows: with no data buffer only the type and size are reported;
// a buffer smaller than the value gives ERROR_MORE_DATA with the size needed
// in *lpcbData and the buffer left alone; a string stored without its NUL
// gets one appended when the buffer has room for it (not counted).
LONG RegQueryValueExA(HKEY hKey, LPCSTR lpValueName, LPDWORD lpReserved, LPDWORD lpType, LPBYTE lpData,
                      LPDWORD lpcbData) {
    if (lpReserved != nullptr || (lpData != nullptr && lpcbData == nullptr)) return ERROR_INVALID_PARAMETER;
    std::shared_ptr<Key> key;
    const LONG status = lookup_for(hKey, kQueryValue, key);
    if (status != ERROR_SUCCESS) return status;
    const Value* value = zr::headless::reg::find_value(*key, lpValueName != nullptr ? lpValueName : "");
    if (value == nullptr) return ERROR_FILE_NOT_FOUND;
    const DWORD size = static_cast<DWORD>(value->data.size());
    if (lpType != nullptr) *lpType = value->type;
    if (lpData == nullptr) {
        if (lpcbData != nullptr) *lpcbData = size;
        return ERROR_SUCCESS;
    }
    const DWORD room = *lpcbData;
    *lpcbData = size;
    if (room < size) return ERROR_MORE_DATA;
    if (size > 0) std::memcpy(lpData, value->data.data(), size);
    if (is_string_type(value->type) && size > 0 && size < room && value->data[size - 1] != 0)
        lpData[size] = 0;
    return ERROR_SUCCESS;
}

// The bytes are stored as given: a string's size should count its NUL.
LONG RegSetValueExA(HKEY hKey, LPCSTR lpValueName, DWORD Reserved, DWORD dwType, const BYTE* lpData,
                    DWORD cbData) {
    if (Reserved != 0 || (lpData == nullptr && cbData != 0)) return ERROR_INVALID_PARAMETER;
    std::shared_ptr<Key> key;
    const LONG status = lookup_for(hKey, kSetValue, key);
    if (status != ERROR_SUCCESS) return status;
    zr::headless::reg::set_value(*key, lpValueName != nullptr ? lpValueName : "", dwType, lpData, cbData);
    return ERROR_SUCCESS;
}

LONG RegQueryInfoKeyA(HKEY hKey, LPSTR lpClass, LPDWORD lpcchClass, LPDWORD lpReserved, LPDWORD lpcSubKeys,
                      LPDWORD lpcbMaxSubKeyLen, LPDWORD lpcbMaxClassLen, LPDWORD lpcValues,
                      LPDWORD lpcbMaxValueNameLen, LPDWORD lpcbMaxValueLen, LPDWORD lpcbSecurityDescriptor,
                      PFILETIME lpftLastWriteTime) {
    if (lpReserved != nullptr || (lpClass != nullptr && lpcchClass == nullptr))
        return ERROR_INVALID_PARAMETER;
    std::shared_ptr<Key> key;
    const LONG status = lookup_for(hKey, kQueryValue, key);
    if (status != ERROR_SUCCESS) return status;
    if (lpClass != nullptr && *lpcchClass > 0) lpClass[0] = '\0';
    if (lpcchClass != nullptr) *lpcchClass = 0;
    DWORD max_subkey = 0, max_name = 0, max_data = 0;
    for (const auto& sub : key->subkeys)
        if (sub->name.size() > max_subkey) max_subkey = static_cast<DWORD>(sub->name.size());
    for (const Value& value : key->values) {
        if (value.name.size() > max_name) max_name = static_cast<DWORD>(value.name.size());
        if (value.data.size() > max_data) max_data = static_cast<DWORD>(value.data.size());
    }
    if (lpcSubKeys != nullptr) *lpcSubKeys = static_cast<DWORD>(key->subkeys.size());
    if (lpcbMaxSubKeyLen != nullptr) *lpcbMaxSubKeyLen = max_subkey;
    if (lpcbMaxClassLen != nullptr) *lpcbMaxClassLen = 0;
    if (lpcValues != nullptr) *lpcValues = static_cast<DWORD>(key->values.size());
    if (lpcbMaxValueNameLen != nullptr) *lpcbMaxValueNameLen = max_name;
    if (lpcbMaxValueLen != nullptr) *lpcbMaxValueLen = max_data;
    if (lpcbSecurityDescriptor != nullptr) *lpcbSecurityDescriptor = 0;
    if (lpftLastWriteTime != nullptr) *lpftLastWriteTime = FILETIME{};
    return ERROR_SUCCESS;
}

// *lpcchName: the buffer's size in, the name's length without NUL out.  A
// name that does not fit gives ERROR_MORE_DATA and leaves both alone.
LONG RegEnumKeyExA(HKEY hKey, DWORD dwIndex, LPSTR lpName, LPDWORD lpcchName, LPDWORD lpReserved,
                   LPSTR lpClass, LPDWORD lpcchClass, PFILETIME lpftLastWriteTime) {
    if (lpName == nullptr || lpcchName == nullptr || lpReserved != nullptr) return ERROR_INVALID_PARAMETER;
    std::shared_ptr<Key> key;
    const LONG status = lookup_for(hKey, kEnumerateSubKeys, key);
    if (status != ERROR_SUCCESS) return status;
    if (dwIndex >= key->subkeys.size()) return ERROR_NO_MORE_ITEMS;
    const std::string& name = key->subkeys[dwIndex]->name;
    if (name.size() >= *lpcchName) return ERROR_MORE_DATA;
    std::memcpy(lpName, name.c_str(), name.size() + 1);
    *lpcchName = static_cast<DWORD>(name.size());
    if (lpClass != nullptr && lpcchClass != nullptr && *lpcchClass > 0) lpClass[0] = '\0';
    if (lpcchClass != nullptr) *lpcchClass = 0;
    if (lpftLastWriteTime != nullptr) *lpftLastWriteTime = FILETIME{};
    return ERROR_SUCCESS;
}

LONG RegDeleteValueA(HKEY hKey, LPCSTR lpValueName) {
    std::shared_ptr<Key> key;
    const LONG status = lookup_for(hKey, kSetValue, key);
    if (status != ERROR_SUCCESS) return status;
    return zr::headless::reg::remove_value(*key, lpValueName != nullptr ? lpValueName : "")
               ? ERROR_SUCCESS
               : ERROR_FILE_NOT_FOUND;
}

// Opens the key, creating it and every missing key on the way.  The module
// never calls it; the Win32 test world and tools do.
LONG RegCreateKeyExA(HKEY hKey, LPCSTR lpSubKey, DWORD Reserved, LPSTR, DWORD, REGSAM samDesired,
                     LPSECURITY_ATTRIBUTES, PHKEY phkResult, LPDWORD lpdwDisposition) {
    if (phkResult == nullptr || Reserved != 0) return ERROR_INVALID_PARAMETER;
    std::shared_ptr<Key> key;
    const LONG status = lookup_for(hKey, kCreateSubKey, key);
    if (status != ERROR_SUCCESS) return status;
    std::vector<std::string_view> parts;
    if (!zr::headless::reg::split_path(lpSubKey != nullptr ? lpSubKey : "", parts)) return ERROR_BAD_PATHNAME;
    DWORD disposition = REG_OPENED_EXISTING_KEY;
    for (std::string_view part : parts) {
        std::shared_ptr<Key> next = zr::headless::reg::find_subkey(*key, part);
        if (next == nullptr) {
            next = zr::headless::reg::add_subkey(*key, part);
            disposition = REG_CREATED_NEW_KEY;
        }
        key = next;
    }
    *phkResult = new_handle(key, samDesired);
    if (lpdwDisposition != nullptr) *lpdwDisposition = disposition;
    return ERROR_SUCCESS;
}

// ---------------------------------------------------------------------------
// Seeding

namespace zr::headless {

namespace {

std::shared_ptr<reg::Key> key_at(const char* path, bool create) {
    return reg::resolve(path != nullptr ? path : "", create);
}

void set_bytes(const char* path, const char* name, DWORD type, const void* data, size_t size) {
    if (auto key = key_at(path, true))
        reg::set_value(*key, name != nullptr ? name : "", type, static_cast<const BYTE*>(data), size);
}

}  // namespace

void registry_clear() { reg::clear_all(); }

bool registry_create_key(const char* path) { return key_at(path, true) != nullptr; }

bool registry_delete_tree(const char* path) {
    std::string_view full = path != nullptr ? path : "";
    while (!full.empty() && full.back() == '\\') full.remove_suffix(1);
    const size_t slash = full.rfind('\\');
    const std::string parent_path(slash == std::string_view::npos ? std::string_view()
                                                                  : full.substr(0, slash));
    const std::string_view leaf = slash == std::string_view::npos ? full : full.substr(slash + 1);
    if (leaf.empty() || (slash == std::string_view::npos && reg::find_root(leaf) != nullptr)) return false;
    auto parent = reg::resolve(parent_path, false);
    return parent != nullptr && reg::remove_subkey(*parent, leaf);
}

bool registry_key_exists(const char* path) { return key_at(path, false) != nullptr; }

void registry_set_dword(const char* key, const char* name, DWORD value) {
    set_bytes(key, name, REG_DWORD, &value, sizeof value);
}

void registry_set_string(const char* key, const char* name, const char* value) {
    if (value == nullptr) value = "";
    set_bytes(key, name, REG_SZ, value, std::strlen(value) + 1);
}

void registry_set_raw(const char* key, const char* name, DWORD type, std::string_view bytes) {
    set_bytes(key, name, type, bytes.data(), bytes.size());
}

bool registry_delete_value(const char* key, const char* name) {
    auto found = key_at(key, false);
    return found != nullptr && reg::remove_value(*found, name != nullptr ? name : "");
}

std::optional<DWORD> registry_get_dword(const char* key, const char* name) {
    auto raw = registry_get_raw(key, name);
    if (!raw || raw->type != REG_DWORD || raw->bytes.size() != sizeof(DWORD)) return std::nullopt;
    DWORD value = 0;
    std::memcpy(&value, raw->bytes.data(), sizeof value);
    return value;
}

std::optional<std::string> registry_get_string(const char* key, const char* name) {
    auto raw = registry_get_raw(key, name);
    if (!raw || (raw->type != REG_SZ && raw->type != REG_EXPAND_SZ)) return std::nullopt;
    const size_t nul = raw->bytes.find('\0');
    if (nul != std::string::npos) raw->bytes.resize(nul);
    return raw->bytes;
}

std::optional<RegRawValue> registry_get_raw(const char* key, const char* name) {
    auto found = key_at(key, false);
    if (found == nullptr) return std::nullopt;
    const reg::Value* value = reg::find_value(*found, name != nullptr ? name : "");
    if (value == nullptr) return std::nullopt;
    return RegRawValue{value->type, std::string(value->data.begin(), value->data.end())};
}

size_t registry_open_handles() { return handles().open.size(); }

}  // namespace zr::headless
