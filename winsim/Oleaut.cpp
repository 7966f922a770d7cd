// BSTRs as OLEAUT32 lays them out: a 32-bit byte count, the UTF-16 units,
// and a NUL unit. Allocation goes through malloc so that leak checkers see
// every BSTR the library forgets to free.
#include <cstdlib>
#include <cstring>

#include "winsim.h"
#include "winsim_control.h"

namespace {

BSTR allocate(const OLECHAR* text, UINT length) {
    auto* block = static_cast<unsigned char*>(std::malloc(sizeof(uint32_t) + (length + 1) * sizeof(WCHAR)));
    if (!block) return nullptr;
    uint32_t bytes = length * sizeof(WCHAR);
    std::memcpy(block, &bytes, sizeof bytes);
    auto* units = reinterpret_cast<WCHAR*>(block + sizeof(uint32_t));
    if (text) std::memcpy(units, text, bytes);
    else std::memset(units, 0, bytes);
    units[length] = 0;
    return units;
}

UINT unitsUpToNul(const OLECHAR* text) {
    UINT n = 0;
    while (text[n]) ++n;
    return n;
}

}  // namespace

extern "C" {

UINT WINAPI SysStringLen(BSTR bstr) {
    if (!bstr) return 0;
    uint32_t bytes;
    std::memcpy(&bytes, reinterpret_cast<unsigned char*>(bstr) - sizeof(uint32_t), sizeof bytes);
    return bytes / sizeof(WCHAR);
}

BSTR WINAPI SysAllocString(const OLECHAR* text) {
    if (!text) return nullptr;
    if (winsim::refuse("SysAllocString")) return nullptr;
    return allocate(text, unitsUpToNul(text));
}

BSTR WINAPI SysAllocStringLen(const OLECHAR* text, UINT length) {
    if (winsim::refuse("SysAllocStringLen")) return nullptr;
    return allocate(text, length);
}

INT WINAPI SysReAllocString(BSTR* variable, const OLECHAR* text) {
    if (!variable) return FALSE;
    if (winsim::refuse("SysReAllocString")) return FALSE;
    // As on the platform: null text leaves the variable a null BSTR.
    BSTR fresh = text ? allocate(text, unitsUpToNul(text)) : nullptr;
    if (text && !fresh) return FALSE;
    SysFreeString(*variable);
    *variable = fresh;
    return TRUE;
}

void WINAPI SysFreeString(BSTR bstr) {
    if (bstr) std::free(reinterpret_cast<unsigned char*>(bstr) - sizeof(uint32_t));
}

}  // extern "C"
