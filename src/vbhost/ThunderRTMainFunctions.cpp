// Module ThunderRTMainFunctions: the Thunder main windows of the program.
#include "ThunderRTMainFunctions.h"

#include <cstring>

#include "Frame.h"

static const char kModule[] = "ThunderRTMainFunctions";

namespace {

// The four main-window classes, by slot: the development environment, then
// the runtimes of versions 4, 5 and 6. A record of four 32-bit handles, as
// the caller of esGetThunderMainHandles lays it out.
const char* const kClasses[4] = {"ThunderMain", "ThunderRTMain", "ThunderRT5Main", "ThunderRT6Main"};

struct TMFI {
    LONG handles[4];
};

// Filled by the first query of the process, on that caller's thread, and
// kept whatever it found.
TMFI g_tmfi;
uint8_t g_tmfiFilled = 0;

// Each top-level window of the thread: a window of a Thunder class takes
// its slot, so the last one enumerated is kept.
BOOL CALLBACK FILLTMFIENUMTHREADWNDPROC(HWND window, LPARAM record) {
    CSK_ROUTINE("FILLTMFIENUMTHREADWNDPROC");
    char name[1025] = {};
    GetClassNameA(window, name, 1024);
    for (int slot = 0; slot < 4; ++slot)
        if (std::strcmp(name, kClasses[slot]) == 0) {
            reinterpret_cast<TMFI*>(record)->handles[slot] = LONGFROMHANDLE(window);
            break;
        }
    return TRUE;
}

__attribute__((noinline)) void ENUMERATETMFI(TMFI* record) {
    CSK_ROUTINE("FILLTMFI");
    std::memset(record, 0, sizeof *record);
    EnumThreadWindows(GetCurrentThreadId(), FILLTMFIENUMTHREADWNDPROC, reinterpret_cast<LPARAM>(record));
    g_tmfi = *record;
    g_tmfiFilled = 1;
}

// After the first query a copy of 16 bytes.
inline void FILLTMFI(TMFI* record) {
    if (g_tmfiFilled) *record = g_tmfi;
    else ENUMERATETMFI(record);
}

}  // namespace

CSK_EXPORT HRESULT WINAPI esGetThunderMainHandle(LONG* handle);

uint8_t WR_ESISINIDE() {
    CSK_ROUTINE("WR_ESISINIDE");
    TMFI record;
    FILLTMFI(&record);
    return record.handles[0] != 0;
}

std::string WR_ESGETTHUNDERMAINTITLE() {
    CSK_ROUTINE("WR_ESGETTHUNDERMAINTITLE");
    LONG handle = 0;
    esGetThunderMainHandle(&handle);
    HWND window = HANDLEFROMLONG<HWND>(handle);
    const int length = GetWindowTextLengthA(window);
    std::string title(static_cast<size_t>(length > 0 ? length : 0) + 20, '\0');
    // Wine's GetWindowTextA fills the buffer with whatever its heap held for
    // a null handle; Windows leaves it empty, as skipping the call does.
    if (window) GetWindowTextA(window, &title[0], (length > 0 ? length : 0) + 10);
    return TRIMNULLBUFFER(title);
}

// 4, 5 or 6 by the runtime's window; an older runtime wins over a newer
// one, and the development environment's window counts for none.
CSK_EXPORT HRESULT WINAPI esGetVBVersion(LONG* version) {
    return ValueExport(kModule, "ESGETVBVERSION", version, [&] {
        TMFI record;
        FILLTMFI(&record);
        *version = record.handles[1] ? 4 : record.handles[2] ? 5 : record.handles[3] ? 6 : 0;
        return S_OK;
    });
}

CSK_EXPORT HRESULT WINAPI esIsInIDE(VARIANT_BOOL* answer) {
    return ValueExport(kModule, "ESISINIDE", answer, [&] {
        *answer = VBBOOL(WR_ESISINIDE() != 0);
        return S_OK;
    });
}

// The first window in slot order; with none the caller's variable keeps
// its value.
CSK_EXPORT HRESULT WINAPI esGetThunderMainHandle(LONG* handle) {
    return ValueExport(kModule, "ESGETTHUNDERMAINHANDLE", handle, [&] {
        TMFI record;
        FILLTMFI(&record);
        for (LONG found : record.handles)
            if (found) {
                *handle = found;
                break;
            }
        return S_OK;
    });
}

// The caller's record of four handles; a null one is a bad argument.
CSK_EXPORT HRESULT WINAPI esGetThunderMainHandles(TMFI* record) {
    RoutineScope scope(kModule, "ESGETTHUNDERMAINHANDLES");
    if (!record) return E_INVALIDARG;
    FILLTMFI(record);
    return S_OK;
}

CSK_EXPORT HRESULT WINAPI esGetThunderMainTitle(BSTR* result) {
    return TextExport(kModule, "ESGETTHUNDERMAINTITLE", result, [] { return WR_ESGETTHUNDERMAINTITLE(); });
}
