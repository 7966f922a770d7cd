// The cryptographic provider's random bytes and new GUIDs, from the
// kernel's random source. Only the default provider of type PROV_RSA_FULL is
// offered; a refusal reports NTE_BAD_KEYSET, as a host without a default
// key container does.
#include <sys/random.h>

#include <cstdio>
#include <set>

#include "winsim.h"
#include "winsim_control.h"

namespace {

std::set<HCRYPTPROV>& openProviders() {
    static std::set<HCRYPTPROV> providers;
    return providers;
}

bool randomBytes(void* buffer, size_t length) {
    auto* bytes = static_cast<unsigned char*>(buffer);
    while (length > 0) {
        ssize_t got = getrandom(bytes, length, 0);
        if (got <= 0) return false;
        bytes += got;
        length -= static_cast<size_t>(got);
    }
    return true;
}

}  // namespace

extern "C" {

BOOL WINAPI CryptAcquireContextA(HCRYPTPROV* provider, LPCSTR container, LPCSTR providerName, DWORD type,
                                 DWORD flags) {
    if (winsim::refuse("CryptAcquireContextA")) {
        SetLastError(NTE_BAD_KEYSET);
        return FALSE;
    }
    if (!provider || container || providerName || type != PROV_RSA_FULL || flags != 0) {
        SetLastError(87);  // ERROR_INVALID_PARAMETER: not what the stand-in offers
        return FALSE;
    }
    static HCRYPTPROV next = 0x00150000;
    *provider = next += 8;
    openProviders().insert(*provider);
    return TRUE;
}

BOOL WINAPI CryptGenRandom(HCRYPTPROV provider, DWORD length, BYTE* buffer) {
    if (winsim::refuse("CryptGenRandom")) return FALSE;
    if (!openProviders().count(provider) || !buffer) return FALSE;
    return randomBytes(buffer, length) ? TRUE : FALSE;
}

BOOL WINAPI CryptReleaseContext(HCRYPTPROV provider, DWORD flags) {
    if (winsim::refuse("CryptReleaseContext")) return FALSE;
    if (flags != 0) return FALSE;
    return openProviders().erase(provider) ? TRUE : FALSE;
}

// A version 4 (random) GUID, as the platform makes them.
HRESULT WINAPI CoCreateGuid(GUID* guid) {
    if (!guid) return E_INVALIDARG;
    if (winsim::refuse("CoCreateGuid")) return E_FAIL;
    if (!randomBytes(guid, sizeof *guid)) return E_FAIL;
    guid->Data3 = static_cast<WORD>((guid->Data3 & 0x0FFF) | 0x4000);
    guid->Data4[0] = static_cast<BYTE>((guid->Data4[0] & 0x3F) | 0x80);
    return S_OK;
}

// The registry form, braces included: 38 characters and the terminator, or
// 0 when the buffer is too small for them.
int WINAPI StringFromGUID2(REFGUID guid, LPOLESTR buffer, int size) {
    if (winsim::refuse("StringFromGUID2")) return 0;
    if (!buffer || size < 39) return 0;
    char text[40];
    std::snprintf(text, sizeof text, "{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}", guid.Data1, guid.Data2,
                  guid.Data3, guid.Data4[0], guid.Data4[1], guid.Data4[2], guid.Data4[3], guid.Data4[4],
                  guid.Data4[5], guid.Data4[6], guid.Data4[7]);
    for (int i = 0; i < 39; ++i) buffer[i] = static_cast<OLECHAR>(text[i]);
    return 39;
}

}  // extern "C"
