// Colours: OLE_COLOR translation, the system colour table, and the screen's
// device context as a true-colour display has it, where every colour is
// shown as it is asked for.
#include <set>

#include "winsim.h"
#include "winsim_control.h"

namespace {

// The system colours of the stand-in's desktop theme, COLOR_SCROLLBAR (0)
// to COLOR_MENUBAR (30).
const DWORD kSystemColors[COLOR_MENUBAR + 1] = {
    0x00C8C8C8, 0x00A56E3A, 0x00D1B499, 0x00808080, 0x00F0F0F0, 0x00FFFFFF, 0x00646464, 0x00000000,
    0x00000000, 0x00000000, 0x00B4B4B4, 0x00FCF7F4, 0x00ABABAB, 0x00D77800, 0x00FFFFFF, 0x00F0F0F0,
    0x00A0A0A0, 0x006D6D6D, 0x00000000, 0x00000000, 0x00FFFFFF, 0x00696969, 0x00E3E3E3, 0x00000000,
    0x00E1FFFF, 0x00000000, 0x00CC6600, 0x00EAD1B9, 0x00F2E4D7, 0x00FF9933, 0x00F0F0F0,
};

HWND const kDesktop = reinterpret_cast<HWND>(0x00010020);

// Device contexts handed out by GetDC and not yet released.
std::set<HDC>& liveContexts() {
    static std::set<HDC> contexts;
    return contexts;
}

}  // namespace

extern "C" {

DWORD WINAPI GetSysColor(int index) {
    if (index < 0 || index > COLOR_MENUBAR) return 0;
    return kSystemColors[index];
}

// High byte 0x00: an RGB colour (made palette-relative when a palette is
// given); 0x01: a palette index, which needs a palette the stand-in does not
// model, so it is taken as it is only without one; 0x02: palette-relative,
// as it is; 0x80: a system colour by the index in its low byte.
HRESULT WINAPI OleTranslateColor(OLE_COLOR color, HPALETTE palette, COLORREF* result) {
    if (winsim::refuse("OleTranslateColor")) return E_FAIL;
    COLORREF translated;
    switch (color >> 24) {
        case 0x00:
            translated = palette ? (color | 0x02000000u) : color;
            break;
        case 0x01:
            if (palette) return E_INVALIDARG;
            translated = color;
            break;
        case 0x02:
            translated = color;
            break;
        case 0x80:
            if ((color & 0xFF) > COLOR_MENUBAR) return E_INVALIDARG;
            translated = GetSysColor(static_cast<int>(color & 0xFF));
            break;
        default:
            return E_INVALIDARG;
    }
    if (result) *result = translated;
    return S_OK;
}

HWND WINAPI GetDesktopWindow(void) { return kDesktop; }

// The desktop (or null, the screen) has a context; other windows do not
// exist in the stand-in.
HDC WINAPI GetDC(HWND window) {
    if (winsim::refuse("GetDC")) return nullptr;
    if (window && window != kDesktop) return nullptr;
    static uintptr_t next = 0x07010040;
    HDC dc = reinterpret_cast<HDC>(next += 4);
    liveContexts().insert(dc);
    return dc;
}

int WINAPI ReleaseDC(HWND, HDC dc) {
    winsim::refuse("ReleaseDC");
    return liveContexts().erase(dc) ? 1 : 0;
}

COLORREF WINAPI GetNearestColor(HDC dc, COLORREF color) {
    if (winsim::refuse("GetNearestColor")) return CLR_INVALID;
    if (!liveContexts().count(dc)) return CLR_INVALID;
    return color;
}

}  // extern "C"
