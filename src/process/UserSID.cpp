// Module UserSID: the user's SID from the process token, kept after the
// first success, and the "S-1-..." text form of any SID.
#include "UserSID.h"

#include <cstdio>

#include "Frame.h"
#include "HostIdentification.h"
#include "SafeArrayWorks.h"

static const char kModule[] = "UserSID";

namespace {

uint8_t g_sidCached = 0;
ByteArray g_cachedSid;

// The process token, closed on every exit.
struct ProcessToken {
    HANDLE handle = nullptr;
    bool opened = false;
    explicit ProcessToken(DWORD access) { opened = OpenProcessToken(GetCurrentProcess(), access, &handle) != 0; }
    ~ProcessToken() {
        if (opened) CloseHandle(handle);
    }
    ProcessToken(const ProcessToken&) = delete;
    ProcessToken& operator=(const ProcessToken&) = delete;
};

std::string WR_SIDTOSTRINGSID(PSID sid) {
    CSK_ROUTINE("WR_SIDTOSTRINGSID");
    if (!WR_ESISHOSTWINNT() || !sid || !IsValidSid(sid)) return std::string();
    const unsigned count = *GetSidSubAuthorityCount(sid);
    const BYTE* b = GetSidIdentifierAuthority(sid)->Value;
    char number[32];
    std::string text = "S-1-";
    if (b[0] != 0 || b[1] != 0) {
        std::snprintf(number, sizeof number, "0x%02x%02x%02x%02x%02x%02x", b[0], b[1], b[2], b[3], b[4], b[5]);
    } else {
        const unsigned long value = (unsigned long)b[2] << 24 | (unsigned long)b[3] << 16 | (unsigned long)b[4] << 8 | b[5];
        std::snprintf(number, sizeof number, "%lu", value);
    }
    text += number;
    for (unsigned i = 0; i < count; ++i) {
        std::snprintf(number, sizeof number, "-%lu", static_cast<unsigned long>(*GetSidSubAuthority(sid, i)));
        text += number;
    }
    return text;
}

}  // namespace

uint8_t WR_GETUSERSID(ByteArray& destination) {
    CSK_ROUTINE("WR_GETUSERSID");
    if (!WR_ESISHOSTWINNT()) return 0;
    if (g_sidCached) {
        COPYBYTEBUFFER(destination, g_cachedSid);
        return 1;
    }
    ProcessToken token(TOKEN_QUERY);
    if (!token.opened) return 0;
    DWORD size = 0;
    GetTokenInformation(token.handle, TokenUser, nullptr, 0, &size);
    if (size == 0) return 0;
    ByteArray information(size, 0);
    if (!GetTokenInformation(token.handle, TokenUser, information.data(), size, &size) || size == 0) return 0;
    PSID sid = reinterpret_cast<const TOKEN_USER*>(information.data())->User.Sid;
    const DWORD length = GetLengthSid(sid);
    if (length == 0) return 0;
    const BYTE* first = static_cast<const BYTE*>(sid);
    ByteArray bytes(first, first + length);
    g_sidCached = 1;
    COPYBYTEBUFFER(g_cachedSid, bytes);
    COPYBYTEBUFFER(destination, bytes);
    return 1;
}

CSK_EXPORT HRESULT WINAPI esGetUserSID(SAFEARRAY** sid, VARIANT_BOOL* result) {
    return ValueExport(kModule, "ESGETUSERSID", result, [&]() -> HRESULT {
        if (!sid) return E_INVALIDARG;
        ByteArray bytes;
        if (WR_GETUSERSID(bytes)) return ARRAYTOSAFEARRAY_BYTE_RV(bytes, sid, result);
        *result = VARIANT_FALSE;
        return S_OK;
    });
}

// The SID is the caller's address of a SID in its own memory.
CSK_EXPORT HRESULT WINAPI esSIDtoStringSID(PSID sid, BSTR* result) {
    return TextExport(kModule, "ESSIDTOSTRINGSID", result, [&] { return WR_SIDTOSTRINGSID(sid); });
}

CSK_EXPORT HRESULT WINAPI esSIDtoStringSID2(SAFEARRAY** sid, BSTR* result) {
    RoutineScope scope(kModule, "ESSIDTOSTRINGSID2");
    if (!result) return S_FALSE;
    return Shielded([&] {
        ByteArray bytes;
        HRESULT status = SAFEARRAYTOARRAY_BYTE(sid, bytes);
        if (status != S_OK) return status;
        // Zeros behind a short array keep the platform's readers inside it;
        // a whole SID reads as it is.
        if (bytes.size() < SECURITY_MAX_SID_SIZE) bytes.resize(SECURITY_MAX_SID_SIZE, 0);
        HANDBACK(result, WR_SIDTOSTRINGSID(bytes.data()));
        return S_OK;
    });
}
