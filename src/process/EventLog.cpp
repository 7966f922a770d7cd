// Module EventLog: one line of the application's text in the event log, as
// an information, warning or error event, behind a fixed header that tells
// which program, process and thread wrote it.
#include <cstdio>
#include <cwchar>
#include <new>

#include "Frame.h"
#include "HostIdentification.h"
#include "ThunderRTMainFunctions.h"
#include "UserSID.h"

static const char kModule[] = "EventLog";

namespace {

// The event source: opened at the first event of the process, also when the
// opening failed, and never closed.
uint8_t g_sourceOpened = 0;
HANDLE g_source = nullptr;

// The only message of the library's table that events refer to: "%1\r\n".
const DWORD kEventId = 1;
const size_t kFixedRoom = 440;  // the header's pieces and the terminator, with room to spare
const DWORD kPathLimit = 0x105;

// A zero-filled UTF-16 buffer for one call.
struct WideBuffer {
    WCHAR* units = nullptr;
    explicit WideBuffer(size_t count) : units(new (std::nothrow) WCHAR[count]()) {}
    ~WideBuffer() { delete[] units; }
    WideBuffer(const WideBuffer&) = delete;
    WideBuffer& operator=(const WideBuffer&) = delete;
};

// Appends ASCII text as UTF-16 units at *at.
void appendAscii(WCHAR*& at, const char* text) {
    while (*text) *at++ = static_cast<WCHAR>(static_cast<unsigned char>(*text++));
}

void appendWide(WCHAR*& at, const WCHAR* text) {
    while (*text) *at++ = *text++;
}

HANDLE GETEVENTLOGHANDLE() {
    CSK_ROUTINE("GETEVENTLOGHANDLE");
    if (g_sourceOpened) return g_source;
    std::string name = WR_ESGETTHUNDERMAINTITLE();
    if (name.empty()) name = "Corvane application";
    BSTR wide = nullptr;
    HANDBACK(&wide, name);
    g_sourceOpened = 1;
    g_source = RegisterEventSourceW(nullptr, wide);
    SysFreeString(wide);
    return g_source;
}

uint8_t LOGEVENT(WORD type, const WCHAR* message) {
    CSK_ROUTINE("LOGEVENT");
    if (!WR_ESISHOSTWINNT()) return 0;
    HANDLE source = GETEVENTLOGHANDLE();
    ByteArray sid;
    const bool withSid = WR_GETUSERSID(sid) != 0;
    WCHAR path[kPathLimit + 1] = {};
    GetModuleFileNameW(nullptr, path, kPathLimit);
    size_t length = 0;
    if (message)
        while (message[length]) ++length;
    WideBuffer text(length + kFixedRoom);
    if (!text.units) return 0;
    char ids[64];
    std::snprintf(ids, sizeof ids, "Process ID: 0x%08lX\r\nThread ID: 0x%08lX\r\n\r\n",
                  static_cast<unsigned long>(GetCurrentProcessId()), static_cast<unsigned long>(GetCurrentThreadId()));
    WCHAR* at = text.units;
    appendAscii(at, "Module: ");
    appendWide(at, path);
    appendAscii(at, "\r\n");
    appendAscii(at, ids);
    if (message) appendWide(at, message);
    LPCWSTR strings[1] = {text.units};
    return ReportEventW(source, type, 0, kEventId, withSid ? sid.data() : nullptr, 1, 0, strings, nullptr) != 0;
}

HRESULT logExport(const char* routine, WORD type, BSTR message, VARIANT_BOOL* result) {
    return ValueExport(kModule, routine, result, [&] {
        *result = VBBOOL(LOGEVENT(type, message) != 0);
        return S_OK;
    });
}

}  // namespace

CSK_EXPORT HRESULT WINAPI esLogInfo(BSTR message, VARIANT_BOOL* result) {
    return logExport("ESLOGINFO", EVENTLOG_INFORMATION_TYPE, message, result);
}

CSK_EXPORT HRESULT WINAPI esLogWarning(BSTR message, VARIANT_BOOL* result) {
    return logExport("ESLOGWARNING", EVENTLOG_WARNING_TYPE, message, result);
}

CSK_EXPORT HRESULT WINAPI esLogError(BSTR message, VARIANT_BOOL* result) {
    return logExport("ESLOGERROR", EVENTLOG_ERROR_TYPE, message, result);
}
