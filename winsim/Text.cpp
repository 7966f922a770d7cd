// The 8-bit side of the stand-in is one code page, Windows-1252, which is
// what an English Windows (and Wine under an English locale) uses as both
// its ANSI code page and the C locale's code page.
//
// WideCharToMultiByte replaces what 1252 lacks by "?", one for each UTF-16
// unit, so a surrogate pair gives "??" as on the platform. The platform
// also has best-fit mappings (U+0100 gives "A"); the stand-in does not, and
// gives "?" for those.
#include <cstring>

#include "winsim.h"
#include "winsim_control.h"

namespace {

// Unicode of the bytes 0x80 to 0x9F; the five bytes that 1252 leaves
// undefined map to the C1 control of the same number, as on the platform.
const WCHAR kHigh[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

WCHAR toUnit(unsigned char byte) { return byte >= 0x80 && byte < 0xA0 ? kHigh[byte - 0x80] : byte; }

// The byte for a unit, or -1 when 1252 has none.
int toByte(WCHAR unit) {
    if (unit < 0x80 || (unit >= 0xA0 && unit <= 0xFF)) return unit;
    for (int i = 0; i < 32; ++i)
        if (kHigh[i] == unit) return 0x80 + i;
    return -1;
}

bool isOurCodePage(UINT codePage) { return codePage == CP_ACP || codePage == 1252; }

}  // namespace

extern "C" {

int WINAPI lstrlenW(LPCWSTR text) {
    if (!text) return 0;
    int n = 0;
    while (text[n]) ++n;
    return n;
}

int WINAPI WideCharToMultiByte(UINT codePage, DWORD, LPCWSTR source, int sourceLength, LPSTR destination,
                               int destinationSize, LPCSTR defaultChar, LPBOOL usedDefaultChar) {
    if (winsim::refuse("WideCharToMultiByte")) return 0;
    if (!isOurCodePage(codePage) || !source || sourceLength == 0 || destinationSize < 0 ||
        (destinationSize > 0 && !destination)) {
        SetLastError(87);
        return 0;
    }
    const char replacement = defaultChar ? *defaultChar : '?';
    int count = sourceLength < 0 ? lstrlenW(source) + 1 : sourceLength;
    bool usedDefault = false;
    if (destinationSize > 0 && count > destinationSize) {
        SetLastError(122);
        return 0;
    }
    for (int i = 0; i < count; ++i) {
        int byte = toByte(source[i]);
        if (byte < 0) usedDefault = true;
        if (destinationSize > 0) destination[i] = byte < 0 ? replacement : static_cast<char>(byte);
    }
    if (usedDefaultChar) *usedDefaultChar = usedDefault;
    return count;
}

int WINAPI MultiByteToWideChar(UINT codePage, DWORD, LPCSTR source, int sourceLength, LPWSTR destination,
                               int destinationSize) {
    if (winsim::refuse("MultiByteToWideChar")) return 0;
    if (!isOurCodePage(codePage) || !source || sourceLength == 0 || destinationSize < 0 ||
        (destinationSize > 0 && !destination)) {
        SetLastError(87);
        return 0;
    }
    int count = sourceLength < 0 ? static_cast<int>(std::strlen(source)) + 1 : sourceLength;
    if (destinationSize > 0 && count > destinationSize) {
        SetLastError(122);
        return 0;
    }
    if (destinationSize > 0)
        for (int i = 0; i < count; ++i) destination[i] = toUnit(static_cast<unsigned char>(source[i]));
    return count;
}

}  // extern "C"

// msvcrt's forms under a 1252 locale: every byte has a unit, so mbstowcs
// never fails; wcstombs answers -1 for a unit the code page lacks.
size_t mbstowcs(WCHAR* destination, const char* source, size_t count) {
    if (winsim::refuse("mbstowcs")) return static_cast<size_t>(-1);
    size_t length = std::strlen(source);
    if (!destination) return length;
    size_t i = 0;
    for (; i < count && i < length; ++i) destination[i] = toUnit(static_cast<unsigned char>(source[i]));
    if (i < count) destination[i] = 0;
    return i;
}

size_t wcstombs(char* destination, const WCHAR* source, size_t count) {
    if (winsim::refuse("wcstombs")) return static_cast<size_t>(-1);
    size_t length = static_cast<size_t>(lstrlenW(source));
    for (size_t i = 0; i < length; ++i)
        if (toByte(source[i]) < 0) return static_cast<size_t>(-1);
    if (!destination) return length;
    size_t i = 0;
    for (; i < count && i < length; ++i) destination[i] = static_cast<char>(toByte(source[i]));
    if (i < count) destination[i] = 0;
    return i;
}
