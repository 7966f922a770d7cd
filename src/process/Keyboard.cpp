// Module Keyboard: whether a key is down now, or toggled in the calling
// thread's message state.
#include "Frame.h"

static const char kModule[] = "Keyboard";

CSK_EXPORT HRESULT WINAPI esIsKeyPressed(LONG key, VARIANT_BOOL* answer) {
    return ValueExport(kModule, "ESISKEYPRESSED", answer, [&] {
        *answer = VBBOOL((GetAsyncKeyState(static_cast<int>(key)) & 0x8000) != 0);
        return S_OK;
    });
}

CSK_EXPORT HRESULT WINAPI esIsKeyToggled(LONG key, VARIANT_BOOL* answer) {
    return ValueExport(kModule, "ESISKEYTOGGLED", answer, [&] {
        *answer = VBBOOL((GetKeyState(static_cast<int>(key)) & 1) != 0);
        return S_OK;
    });
}
