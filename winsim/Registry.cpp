// The registry: the four predefined roots, each a tree of keys in memory.
// Keys and values are found without regard to case and keep the case they
// were made with. A value keeps exactly the bytes it was given, whatever its
// type says (a REG_SZ without its terminator, a REG_DWORD of 3 bytes), and
// a reader gets exactly those bytes back, with nothing added.
//
// A handle records the access it was opened with: values are read only
// through KEY_QUERY_VALUE and changed only through KEY_SET_VALUE. Keys are
// opened, made and deleted below any handle, as the platform allows. A key
// deleted while a handle to it is open stays behind that handle, and every
// use of it fails with ERROR_KEY_DELETED.
//
// HKEY_CLASSES_ROOT is a root of its own, not a view of the machine's and
// the user's classes; 32-bit and 64-bit programs see one registry, as on
// 32-bit Windows (KEY_WOW64_* change nothing).
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "winsim.h"
#include "winsim_control.h"

namespace winsim {

unsigned char foldCase(unsigned char c);  // FileSystem.cpp
uintptr_t newHandle();                    // Control.cpp

}  // namespace winsim

namespace {

// Error codes and flags that winsim.h does not name.
const LONG kNoAccess = 998;          // ERROR_NOACCESS: data that is not there
const LONG kBadPathname = 161;       // ERROR_BAD_PATHNAME
const LONG kKeyDeleted = 1018;       // ERROR_KEY_DELETED
const LONG kHasChildren = 1020;      // ERROR_KEY_HAS_CHILDREN
const LONG kMustBeVolatile = 1021;   // ERROR_CHILD_MUST_BE_VOLATILE
const DWORD kCreatedNewKey = 1;      // REG_CREATED_NEW_KEY
const DWORD kOpenedExistingKey = 2;  // REG_OPENED_EXISTING_KEY
const DWORD kVolatile = 1;           // REG_OPTION_VOLATILE

struct NoCase {
    bool operator()(const std::string& a, const std::string& b) const {
        for (size_t i = 0; i < a.size() && i < b.size(); ++i) {
            unsigned char x = winsim::foldCase(static_cast<unsigned char>(a[i]));
            unsigned char y = winsim::foldCase(static_cast<unsigned char>(b[i]));
            if (x != y) return x < y;
        }
        return a.size() < b.size();
    }
};

struct Value {
    DWORD type;
    std::string bytes;
};

struct Key;
typedef std::shared_ptr<Key> KeyPtr;

// A key: its values by name ("" is the default value), the values that
// changeAfterNextQuery holds back, and its subkeys, each by the name it was
// first given. Handles share a key with the tree, so a deleted one lives on
// behind them.
struct Key {
    std::map<std::string, Value, NoCase> values, changes;
    std::map<std::string, KeyPtr, NoCase> subkeys;
    bool isVolatile = false;
    bool deleted = false;
};

struct OpenKey {
    KeyPtr key;
    REGSAM access;
};

struct Registry {
    KeyPtr roots[4];
    std::map<HKEY, OpenKey> handles;
};

Registry makeRegistry() {
    Registry made;
    for (KeyPtr& root : made.roots) root = std::make_shared<Key>();
    return made;
}

Registry& registry() {
    static Registry state = makeRegistry();
    return state;
}

// Which root a predefined handle names (0 to 3), or -1.
int rootIndex(HKEY handle) {
    const HKEY roots[] = {HKEY_CLASSES_ROOT, HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE, HKEY_USERS};
    for (int i = 0; i < 4; ++i)
        if (handle == roots[i]) return i;
    return -1;
}

// The rights a handle gets: the generic ones as the registry maps them
// (read and execute to KEY_READ, write to KEY_WRITE), GENERIC_ALL and
// MAXIMUM_ALLOWED to all.
REGSAM granted(REGSAM access) {
    const REGSAM kRead = 0x20019, kWrite = 0x20006, kAll = 0xF003F;
    REGSAM rights = access;
    if (access & 0xA0000000u) rights |= kRead;
    if (access & 0x40000000u) rights |= kWrite;
    if (access & 0x12000000u) rights |= kAll;
    return rights;
}

// The key behind a handle, if the handle grants what the caller needs. A
// root grants everything.
LONG keyOf(HKEY handle, REGSAM needed, KeyPtr& key) {
    const int root = rootIndex(handle);
    if (root >= 0) {
        key = registry().roots[root];
        return 0;
    }
    auto it = registry().handles.find(handle);
    if (it == registry().handles.end()) return ERROR_INVALID_HANDLE;
    if ((it->second.access & needed) != needed) return ERROR_ACCESS_DENIED;
    key = it->second.key;
    return key->deleted ? kKeyDeleted : 0;
}

// The names in a subkey path (none for null or empty). Doubled separators
// and one at the end count once; one at the start is refused.
LONG namesOf(LPCSTR subkey, std::vector<std::string>& names) {
    if (!subkey) return 0;
    if (*subkey == '\\') return kBadPathname;
    std::string name;
    for (const char* at = subkey;; ++at) {
        if (*at && *at != '\\') {
            name += *at;
            continue;
        }
        if (!name.empty()) names.push_back(name);
        name.clear();
        if (!*at) return 0;
    }
}

// The key that names lead to from another, or null.
KeyPtr find(KeyPtr at, const std::vector<std::string>& names, size_t count) {
    for (size_t i = 0; i < count && at; ++i) {
        auto it = at->subkeys.find(names[i]);
        at = it == at->subkeys.end() ? nullptr : it->second;
    }
    return at;
}

// The key that names lead to, with the keys missing on the way made (with
// the volatility asked for, which a volatile key demands of its subkeys).
LONG makeKeys(KeyPtr at, const std::vector<std::string>& names, bool isVolatile, KeyPtr& key, bool& created) {
    size_t i = 0;
    for (; i < names.size(); ++i) {
        auto it = at->subkeys.find(names[i]);
        if (it == at->subkeys.end()) break;
        at = it->second;
    }
    if (i < names.size() && at->isVolatile && !isVolatile) return kMustBeVolatile;
    created = i < names.size();
    for (; i < names.size(); ++i) {
        KeyPtr made = std::make_shared<Key>();
        made->isVolatile = isVolatile;
        at->subkeys[names[i]] = made;
        at = made;
    }
    key = at;
    return 0;
}

HKEY openHandle(const KeyPtr& key, REGSAM access) {
    HKEY handle = reinterpret_cast<HKEY>(winsim::newHandle());
    registry().handles[handle] = OpenKey{key, granted(access)};
    return handle;
}

// A key and everything under it, gone from the tree; handles keep what they
// hold, marked deleted.
void markDeleted(Key& key) {
    key.deleted = true;
    for (auto& subkey : key.subkeys) markDeleted(*subkey.second);
    key.subkeys.clear();
    key.values.clear();
    key.changes.clear();
}

// Takes a key out of the subkeys of whichever key holds it.
bool detach(Key& from, const Key* key) {
    for (auto it = from.subkeys.begin(); it != from.subkeys.end(); ++it) {
        if (it->second.get() == key) {
            from.subkeys.erase(it);
            return true;
        }
        if (detach(*it->second, key)) return true;
    }
    return false;
}

// For the test controls: the key a root and a subkey path name, made as
// needed when `make` is set; null when it is not there.
KeyPtr controlKey(const char* control, HKEY root, const char* subkey, bool make) {
    std::vector<std::string> names;
    const int index = rootIndex(root);
    KeyPtr key;
    bool created;
    if (index < 0 || namesOf(subkey, names) || (make && makeKeys(registry().roots[index], names, false, key, created)))
        throw std::invalid_argument(std::string("winsim::") + control + ": no root, or a subkey path that the " +
                                    "registry refuses: " + (subkey ? subkey : "(null)"));
    return make ? key : find(registry().roots[index], names, names.size());
}

Value makeValue(const char* control, DWORD type, const void* data, DWORD size) {
    if (!data && size) throw std::invalid_argument(std::string("winsim::") + control + ": no data");
    return Value{type, data ? std::string(static_cast<const char*>(data), size) : std::string()};
}

}  // namespace

namespace winsim {

void resetRegistry() { registry() = makeRegistry(); }

int openKeys() { return static_cast<int>(registry().handles.size()); }

void setRegistryValue(HKEY root, const char* subkey, const char* name, DWORD type, const void* data, DWORD size) {
    Value value = makeValue("setRegistryValue", type, data, size);
    controlKey("setRegistryValue", root, subkey, true)->values[name ? name : ""] = value;
}

bool registryValue(HKEY root, const char* subkey, const char* name, DWORD* type, std::string* bytes) {
    KeyPtr key = controlKey("registryValue", root, subkey, false);
    if (!key) return false;
    auto it = key->values.find(name ? name : "");
    if (it == key->values.end()) return false;
    if (type) *type = it->second.type;
    if (bytes) *bytes = it->second.bytes;
    return true;
}

bool registryKeyExists(HKEY root, const char* subkey) {
    return controlKey("registryKeyExists", root, subkey, false) != nullptr;
}

void changeAfterNextQuery(HKEY root, const char* subkey, const char* name, DWORD type, const void* data, DWORD size) {
    Value value = makeValue("changeAfterNextQuery", type, data, size);
    controlKey("changeAfterNextQuery", root, subkey, true)->changes[name ? name : ""] = value;
}

}  // namespace winsim

extern "C" {

// A null or empty subkey below a root gives the root's own handle back, as
// the platform does; below any other handle, a new handle to its key.
LONG WINAPI RegOpenKeyExA(HKEY key, LPCSTR subkey, DWORD, REGSAM access, PHKEY result) {
    if (winsim::refuse("RegOpenKeyExA")) return ERROR_ACCESS_DENIED;
    if (!result) return ERROR_INVALID_PARAMETER;
    *result = nullptr;
    KeyPtr from;
    std::vector<std::string> names;
    LONG error = keyOf(key, 0, from);
    if (!error) error = namesOf(subkey, names);
    if (error) return error;
    if (names.empty() && rootIndex(key) >= 0) {
        *result = key;
        return ERROR_SUCCESS;
    }
    KeyPtr found = find(from, names, names.size());
    if (!found) return ERROR_FILE_NOT_FOUND;
    *result = openHandle(found, access);
    return ERROR_SUCCESS;
}

// A null or empty subkey gives a new handle to the key itself, a root's
// too. Of the options only REG_OPTION_VOLATILE is modelled; the class and
// the security are not kept.
LONG WINAPI RegCreateKeyExA(HKEY key, LPCSTR subkey, DWORD reserved, LPSTR, DWORD options, REGSAM access,
                            SECURITY_ATTRIBUTES*, PHKEY result, LPDWORD disposition) {
    if (winsim::refuse("RegCreateKeyExA")) return ERROR_ACCESS_DENIED;
    if (!result) return ERROR_INVALID_PARAMETER;
    *result = nullptr;
    if (reserved || (options & ~kVolatile)) return ERROR_INVALID_PARAMETER;
    KeyPtr from, made;
    std::vector<std::string> names;
    bool created = false;
    LONG error = keyOf(key, 0, from);
    if (!error) error = namesOf(subkey, names);
    if (!error) error = makeKeys(from, names, (options & kVolatile) != 0, made, created);
    if (error) return error;
    *result = openHandle(made, access);
    if (disposition) *disposition = created ? kCreatedNewKey : kOpenedExistingKey;
    return ERROR_SUCCESS;
}

// Without a data buffer: the type and size. With one too small:
// ERROR_MORE_DATA, the size needed and the type, the buffer untouched.
LONG WINAPI RegQueryValueExA(HKEY key, LPCSTR name, LPDWORD reserved, LPDWORD type, LPBYTE data, LPDWORD size) {
    if (winsim::refuse("RegQueryValueExA")) return ERROR_ACCESS_DENIED;
    if (reserved || (data && !size)) return ERROR_INVALID_PARAMETER;
    KeyPtr at;
    if (LONG error = keyOf(key, KEY_QUERY_VALUE, at)) return error;
    const std::string valueName = name ? name : "";
    LONG answer = ERROR_FILE_NOT_FOUND;
    auto it = at->values.find(valueName);
    if (it != at->values.end()) {
        const std::string& bytes = it->second.bytes;
        answer = data && *size < bytes.size() ? ERROR_MORE_DATA : ERROR_SUCCESS;
        if (data && answer == ERROR_SUCCESS) bytes.copy(reinterpret_cast<char*>(data), bytes.size());
        if (type) *type = it->second.type;
        if (size) *size = static_cast<DWORD>(bytes.size());
    }
    auto change = at->changes.find(valueName);
    if (!data && change != at->changes.end()) {
        at->values[change->first] = change->second;
        at->changes.erase(change);
    }
    return answer;
}

LONG WINAPI RegSetValueExA(HKEY key, LPCSTR name, DWORD, DWORD type, const BYTE* data, DWORD size) {
    if (winsim::refuse("RegSetValueExA")) return ERROR_ACCESS_DENIED;
    if (!data && size) return kNoAccess;
    KeyPtr at;
    if (LONG error = keyOf(key, KEY_SET_VALUE, at)) return error;
    at->values[name ? name : ""] = Value{type, data ? std::string(reinterpret_cast<const char*>(data), size) : ""};
    return ERROR_SUCCESS;
}

LONG WINAPI RegDeleteValueA(HKEY key, LPCSTR name) {
    if (winsim::refuse("RegDeleteValueA")) return ERROR_ACCESS_DENIED;
    KeyPtr at;
    if (LONG error = keyOf(key, KEY_SET_VALUE, at)) return error;
    return at->values.erase(name ? name : "") ? ERROR_SUCCESS : ERROR_FILE_NOT_FOUND;
}

// Closing a predefined handle (HKEY_CLASSES_ROOT to HKEY_DYN_DATA) does
// nothing and succeeds.
LONG WINAPI RegCloseKey(HKEY key) {
    if (winsim::refuse("RegCloseKey")) return ERROR_ACCESS_DENIED;
    const intptr_t value = reinterpret_cast<intptr_t>(key);
    if (value >= static_cast<LONG>(0x80000000u) && value <= static_cast<LONG>(0x80000006u)) return ERROR_SUCCESS;
    return registry().handles.erase(key) ? ERROR_SUCCESS : ERROR_INVALID_HANDLE;
}

// A null or empty subkey empties the handle's own key of its subkeys and
// values and leaves the key, as the platform does; a root is never emptied.
DWORD WINAPI SHDeleteKeyA(HKEY key, LPCSTR subkey) {
    if (winsim::refuse("SHDeleteKeyA")) return ERROR_ACCESS_DENIED;
    KeyPtr from;
    std::vector<std::string> names;
    LONG error = keyOf(key, 0, from);
    if (!error) error = namesOf(subkey, names);
    if (error) return static_cast<DWORD>(error);
    if (names.empty()) {
        if (rootIndex(key) >= 0) return ERROR_ACCESS_DENIED;
        for (auto& each : from->subkeys) markDeleted(*each.second);
        from->subkeys.clear();
        from->values.clear();
        from->changes.clear();
        return ERROR_SUCCESS;
    }
    KeyPtr parent = find(from, names, names.size() - 1);
    if (!parent || !parent->subkeys.count(names.back())) return ERROR_FILE_NOT_FOUND;
    auto it = parent->subkeys.find(names.back());
    markDeleted(*it->second);
    parent->subkeys.erase(it);
    return ERROR_SUCCESS;
}

// A key with subkeys stays (ERROR_KEY_HAS_CHILDREN); values do not keep
// it. An empty subkey deletes the handle's own key, a null one is refused
// (ERROR_INVALID_PARAMETER) once the key is found empty, as the platform
// does; a root is never deleted.
DWORD WINAPI SHDeleteEmptyKeyA(HKEY key, LPCSTR subkey) {
    if (winsim::refuse("SHDeleteEmptyKeyA")) return ERROR_ACCESS_DENIED;
    KeyPtr from;
    std::vector<std::string> names;
    LONG error = keyOf(key, 0, from);
    if (!error) error = namesOf(subkey, names);
    if (error) return static_cast<DWORD>(error);
    KeyPtr target = find(from, names, names.size());
    if (!target) return ERROR_FILE_NOT_FOUND;
    if (!target->subkeys.empty()) return kHasChildren;
    if (!subkey) return ERROR_INVALID_PARAMETER;
    if (names.empty() && rootIndex(key) >= 0) return ERROR_ACCESS_DENIED;
    for (KeyPtr& root : registry().roots)
        if (detach(*root, target.get())) break;
    markDeleted(*target);
    return ERROR_SUCCESS;
}

}  // extern "C"
