// Module SimpleRegistry: strings, Longs and Booleans in the registry, one
// call per value.
#include "SimpleRegistry.h"

#include <cstring>
#include <vector>

#include "BoolToString.h"
#include "Frame.h"

static const char kModule[] = "SimpleRegistry";

namespace {

bool ISREGSTRING(DWORD type) { return type == REG_SZ || type == REG_EXPAND_SZ; }
bool ISREGLONG(DWORD type) { return type == REG_DWORD || type == REG_DWORD_BIG_ENDIAN; }

// An open key, closed on every exit.
struct OpenKey {
    HKEY handle = nullptr;
    bool opened = false;
    ~OpenKey() {
        if (opened) RegCloseKey(handle);
    }
    bool open(HKEY key, const std::string& subkey, REGSAM access) {
        opened = RegOpenKeyExA(key, TextBuffer::Argument(subkey), 0, access, &handle) == ERROR_SUCCESS;
        return opened;
    }
    bool create(HKEY key, const std::string& subkey) {
        opened = RegCreateKeyExA(key, TextBuffer::Argument(subkey), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_SET_VALUE,
                                 nullptr, &handle, nullptr) == ERROR_SUCCESS;
        return opened;
    }
};

// Type and size of a value, without its data; false when the query fails.
bool queryTypeAndSize(const OpenKey& key, const std::string& name, DWORD& type, DWORD& size) {
    type = 0, size = 0;
    return RegQueryValueExA(key.handle, TextBuffer::Argument(name), nullptr, &type, nullptr, &size) == ERROR_SUCCESS;
}

// The four bytes of a Long, swapped end for end for REG_DWORD_BIG_ENDIAN.
void swapEnds(BYTE (&bytes)[4]) {
    std::swap(bytes[0], bytes[3]);
    std::swap(bytes[1], bytes[2]);
}

LONG WR_ESREADLONGFROMREGISTRY(HKEY key, std::string subkey, std::string name, LONG defaultValue, uint8_t* found) {
    CSK_ROUTINE("WR_ESREADLONGFROMREGISTRY");
    *found = 0;
    OpenKey opened;
    DWORD type, size;
    if (!opened.open(key, subkey, KEY_QUERY_VALUE) || !queryTypeAndSize(opened, name, type, size) || !ISREGLONG(type) ||
        size != 4)
        return defaultValue;
    BYTE bytes[4] = {};
    if (RegQueryValueExA(opened.handle, TextBuffer::Argument(name), nullptr, &type, bytes, &size) != ERROR_SUCCESS)
        return defaultValue;
    if (type == REG_DWORD_BIG_ENDIAN) swapEnds(bytes);
    else if (type != REG_DWORD) return defaultValue;
    *found = 1;
    LONG value;
    std::memcpy(&value, bytes, 4);
    return value;
}

// Text first ("True", " 1 "), then a number, of which only 1 is true.
uint8_t WR_ESREADBOOLFROMREGISTRY(HKEY key, std::string subkey, std::string name, uint8_t defaultValue,
                                  uint8_t* found) {
    CSK_ROUTINE("WR_ESREADBOOLFROMREGISTRY");
    std::string text = WR_ESREADSTRINGFROMREGISTRY(key, subkey, name, WR_ESBOOLTOSTRING(defaultValue), 0, found);
    if (*found == 1) return WR_ESSTRINGTOBOOL(std::move(text));
    return WR_ESREADLONGFROMREGISTRY(key, std::move(subkey), std::move(name), defaultValue ? 1 : 0, found) == 1;
}

void WR_ESWRITELONGTOREGISTRY(HKEY key, std::string subkey, std::string name, LONG value, uint8_t bigEndian,
                              uint8_t* success) {
    CSK_ROUTINE("WR_ESWRITELONGTOREGISTRY");
    *success = 0;
    OpenKey opened;
    if (!opened.create(key, subkey)) return;
    BYTE bytes[4];
    std::memcpy(bytes, &value, 4);
    if (bigEndian) swapEnds(bytes);
    *success = RegSetValueExA(opened.handle, TextBuffer::Argument(name), 0, bigEndian ? REG_DWORD_BIG_ENDIAN : REG_DWORD,
                              bytes, 4) == ERROR_SUCCESS;
}

void WR_ESWRITEBOOLTOREGISTRY(HKEY key, std::string subkey, std::string name, uint8_t value, uint8_t* success) {
    CSK_ROUTINE("WR_ESWRITEBOOLTOREGISTRY");
    WR_ESWRITESTRINGTOREGISTRY(key, std::move(subkey), std::move(name), WR_ESBOOLTOSTRING(value), 0, success);
}

uint8_t WR_ESDELETEVALUEFROMREGISTRY(HKEY key, std::string subkey, std::string name) {
    CSK_ROUTINE("WR_ESDELETEVALUEFROMREGISTRY");
    OpenKey opened;
    return opened.open(key, subkey, KEY_SET_VALUE) &&
           RegDeleteValueA(opened.handle, TextBuffer::Argument(name)) == ERROR_SUCCESS;
}

// Without recursive, a key that has subkeys stays.
uint8_t WR_ESDELETEKEYFROMREGISTRY(HKEY key, std::string subkey, uint8_t recursive) {
    CSK_ROUTINE("WR_ESDELETEKEYFROMREGISTRY");
    const char* path = TextBuffer::Argument(subkey);
    return (recursive ? SHDeleteKeyA(key, path) : SHDeleteEmptyKeyA(key, path)) == ERROR_SUCCESS;
}

// Stores an optional flag.
void setFlag(VARIANT_BOOL* flag, uint8_t value) {
    if (flag) *flag = VBBOOL(value != 0);
}

}  // namespace

std::string WR_ESREADSTRINGFROMREGISTRY(HKEY key, std::string subkey, std::string name, std::string defaultValue,
                                        uint8_t expand, uint8_t* found) {
    CSK_ROUTINE("WR_ESREADSTRINGFROMREGISTRY");
    *found = 0;
    OpenKey opened;
    DWORD type, size;
    if (!opened.open(key, subkey, KEY_QUERY_VALUE) || !queryTypeAndSize(opened, name, type, size) || !ISREGSTRING(type))
        return defaultValue;
    if (size == 0) return std::string();
    std::vector<BYTE> buffer(static_cast<size_t>(size) + 1, 0);
    if (RegQueryValueExA(opened.handle, TextBuffer::Argument(name), nullptr, &type, buffer.data(), &size) !=
        ERROR_SUCCESS)
        return defaultValue;
    // A value stored without its terminator still ends.
    CSK_CHECK(size < buffer.size(), kErrorOutOfBounds);
    buffer[size] = 0;
    std::string text(reinterpret_cast<const char*>(buffer.data()));
    if (type == REG_SZ || type == REG_EXPAND_SZ) *found = 1;
    if (type == REG_SZ) return text;
    if (type == REG_EXPAND_SZ) return expand ? EXPANDENVIRON(text) : text;
    return defaultValue;  // the value changed its type between the queries
}

void WR_ESWRITESTRINGTOREGISTRY(HKEY key, std::string subkey, std::string name, std::string value, uint8_t expand,
                                uint8_t* success) {
    CSK_ROUTINE("WR_ESWRITESTRINGTOREGISTRY");
    *success = 0;
    OpenKey opened;
    if (!opened.create(key, subkey)) return;
    // With its terminator: the empty string is stored as one NUL byte.
    *success = RegSetValueExA(opened.handle, TextBuffer::Argument(name), 0, expand ? REG_EXPAND_SZ : REG_SZ,
                              reinterpret_cast<const BYTE*>(value.c_str()), static_cast<DWORD>(value.size() + 1)) ==
               ERROR_SUCCESS;
}

// The key is the caller's Long: a predefined root (HKEY_CURRENT_USER is
// &H80000001) or a key the caller opened.
CSK_EXPORT HRESULT WINAPI esReadStringFromRegistry(LONG key, BSTR subkey, BSTR name, BSTR defaultValue,
                                                   VARIANT_BOOL expand, VARIANT_BOOL* found, BSTR* result) {
    return TextExport(kModule, "ESREADSTRINGFROMREGISTRY", result, [&] {
        uint8_t wasFound;
        std::string text =
            WR_ESREADSTRINGFROMREGISTRY(HANDLEFROMLONG<HKEY>(key), BSTRTOSTRING(subkey), BSTRTOSTRING(name),
                                        BSTRTOSTRING(defaultValue), FLAG(expand), &wasFound);
        setFlag(found, wasFound);
        return text;
    });
}

CSK_EXPORT HRESULT WINAPI esReadLongFromRegistry(LONG key, BSTR subkey, BSTR name, LONG defaultValue,
                                                 VARIANT_BOOL* found, LONG* result) {
    return ValueExport(kModule, "ESREADLONGFROMREGISTRY", result, [&] {
        uint8_t wasFound;
        *result = WR_ESREADLONGFROMREGISTRY(HANDLEFROMLONG<HKEY>(key), BSTRTOSTRING(subkey), BSTRTOSTRING(name),
                                            defaultValue, &wasFound);
        setFlag(found, wasFound);
        return S_OK;
    });
}

CSK_EXPORT HRESULT WINAPI esReadBoolFromRegistry(LONG key, BSTR subkey, BSTR name, VARIANT_BOOL defaultValue,
                                                 VARIANT_BOOL* found, VARIANT_BOOL* result) {
    return ValueExport(kModule, "ESREADBOOLFROMREGISTRY", result, [&] {
        uint8_t wasFound;
        *result = VBBOOL(WR_ESREADBOOLFROMREGISTRY(HANDLEFROMLONG<HKEY>(key), BSTRTOSTRING(subkey), BSTRTOSTRING(name),
                                                   FLAG(defaultValue), &wasFound) != 0);
        setFlag(found, wasFound);
        return S_OK;
    });
}

// The writes have no required out-pointer: their status is always 0.
CSK_EXPORT HRESULT WINAPI esWriteStringToRegistry(LONG key, BSTR subkey, BSTR name, BSTR value, VARIANT_BOOL expand,
                                                  VARIANT_BOOL* success) {
    RoutineScope scope(kModule, "ESWRITESTRINGTOREGISTRY");
    return Shielded([&] {
        uint8_t done;
        WR_ESWRITESTRINGTOREGISTRY(HANDLEFROMLONG<HKEY>(key), BSTRTOSTRING(subkey), BSTRTOSTRING(name),
                                   BSTRTOSTRING(value), FLAG(expand), &done);
        setFlag(success, done);
        return S_OK;
    });
}

CSK_EXPORT HRESULT WINAPI esWriteLongToRegistry(LONG key, BSTR subkey, BSTR name, LONG value, VARIANT_BOOL bigEndian,
                                                VARIANT_BOOL* success) {
    RoutineScope scope(kModule, "ESWRITELONGTOREGISTRY");
    return Shielded([&] {
        uint8_t done;
        WR_ESWRITELONGTOREGISTRY(HANDLEFROMLONG<HKEY>(key), BSTRTOSTRING(subkey), BSTRTOSTRING(name), value,
                                 FLAG(bigEndian), &done);
        setFlag(success, done);
        return S_OK;
    });
}

CSK_EXPORT HRESULT WINAPI esWriteBoolToRegistry(LONG key, BSTR subkey, BSTR name, VARIANT_BOOL value,
                                                VARIANT_BOOL* success) {
    RoutineScope scope(kModule, "ESWRITEBOOLTOREGISTRY");
    return Shielded([&] {
        uint8_t done;
        WR_ESWRITEBOOLTOREGISTRY(HANDLEFROMLONG<HKEY>(key), BSTRTOSTRING(subkey), BSTRTOSTRING(name), FLAG(value),
                                 &done);
        setFlag(success, done);
        return S_OK;
    });
}

CSK_EXPORT HRESULT WINAPI esDeleteValueFromRegistry(LONG key, BSTR subkey, BSTR name, VARIANT_BOOL* success) {
    return ValueExport(kModule, "ESDELETEVALUEFROMREGISTRY", success, [&] {
        *success = VBBOOL(
            WR_ESDELETEVALUEFROMREGISTRY(HANDLEFROMLONG<HKEY>(key), BSTRTOSTRING(subkey), BSTRTOSTRING(name)) != 0);
        return S_OK;
    });
}

CSK_EXPORT HRESULT WINAPI esDeleteKeyFromRegistry(LONG key, BSTR subkey, VARIANT_BOOL recursive,
                                                  VARIANT_BOOL* success) {
    return ValueExport(kModule, "ESDELETEKEYFROMREGISTRY", success, [&] {
        *success = VBBOOL(
            WR_ESDELETEKEYFROMREGISTRY(HANDLEFROMLONG<HKEY>(key), BSTRTOSTRING(subkey), FLAG(recursive)) != 0);
        return S_OK;
    });
}
