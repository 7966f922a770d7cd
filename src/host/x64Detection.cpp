// Module x64Detection: whether another process runs as 64-bit code. A 32-bit
// library sees this only indirectly: a process is 64-bit when the system is
// (this process runs under WOW64) and the process itself does not.
#include "Frame.h"
#include "FunctionsSupport.h"

static const char kModule[] = "x64Detection";

namespace {

enum : LONG { kUnknown = 0, k32Bit = 1, k64Bit = 2 };

// True when the call worked, the entry point was there and the answer is
// WOW64.
bool underWow64(HANDLE process, bool& worked) {
    BOOL wow64 = FALSE;
    worked = __ISWOW64PROCESS(process, &wow64) != 0 && !g_missingEntry;
    return worked && wow64 != 0;
}

}  // namespace

// 0 when the process cannot be opened (gone, or no rights), 1 for 32-bit,
// 2 for 64-bit. A process that opens but cannot be asked counts as 32-bit.
CSK_EXPORT HRESULT WINAPI esIsProcessWin64Ex(LONG processId, LONG* answer) {
    return ValueExport(kModule, "ESISPROCESSWIN64EX", answer, [&] {
        *answer = kUnknown;
        bool worked;
        const bool systemIs64Bit = underWow64(GetCurrentProcess(), worked);
        HANDLE process = OpenProcess(PROCESS_QUERY_INFORMATION, FALSE, static_cast<DWORD>(processId));
        if (!process) return S_OK;
        const bool targetUnderWow64 = underWow64(process, worked);
        *answer = worked && !targetUnderWow64 && systemIs64Bit ? k64Bit : k32Bit;
        CloseHandle(process);
        return S_OK;
    });
}

CSK_EXPORT HRESULT WINAPI esIsProcessWin64(LONG processId, VARIANT_BOOL* answer) {
    return ValueExport(kModule, "ESISPROCESSWIN64", answer, [&] {
        LONG bitness = kUnknown;
        HRESULT status = esIsProcessWin64Ex(processId, &bitness);
        *answer = VBBOOL(bitness == k64Bit);
        return status;
    });
}
