// Module FixUserControlsContainerWindow: a compiled Visual Basic 6 program
// can leave a top-level "static" window that holds UserControl windows in
// sight; this hides every such window of the calling thread. In the
// development environment nothing is touched.
#include <cctype>
#include <cstring>

#include "Frame.h"
#include "ThunderRTMainFunctions.h"

static const char kModule[] = "FixUserControlsContainerWindow";

namespace {

bool classIs(HWND window, const char* lowerCaseName) {
    char name[1026] = {};
    GetClassNameA(window, name, 1024);
    for (char& c : name) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return std::strcmp(name, lowerCaseName) == 0;
}

// A descendant of the version 6 UserControl class marks the container.
BOOL CALLBACK ENUMCHILDPROC(HWND window, LPARAM found) {
    CSK_ROUTINE("ENUMCHILDPROC");
    if (!classIs(window, "thunderrt6usercontroldc")) return TRUE;
    *reinterpret_cast<uint8_t*>(found) = 1;
    return FALSE;
}

// Every container of the thread is hidden, not only the first.
BOOL CALLBACK ENUMTHREADWNDPROC(HWND window, LPARAM hidden) {
    CSK_ROUTINE("ENUMTHREADWNDPROC");
    if (!classIs(window, "static")) return TRUE;
    uint8_t marked = 0;
    EnumChildWindows(window, ENUMCHILDPROC, reinterpret_cast<LPARAM>(&marked));
    if (marked) {
        ShowWindow(window, SW_HIDE);
        *reinterpret_cast<uint8_t*>(hidden) = 1;
    }
    return TRUE;
}

}  // namespace

CSK_EXPORT HRESULT WINAPI esFixUserControlsContainerWindow(VARIANT_BOOL* answer) {
    return ValueExport(kModule, "ESFIXUSERCONTROLSCONTAINERWINDOW", answer, [&] {
        if (WR_ESISINIDE()) {
            *answer = VARIANT_TRUE;
            return S_OK;
        }
        uint8_t hidden = 0;
        EnumThreadWindows(GetCurrentThreadId(), ENUMTHREADWNDPROC, reinterpret_cast<LPARAM>(&hidden));
        *answer = VBBOOL(hidden != 0);
        return S_OK;
    });
}
