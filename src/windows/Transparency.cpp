// Module Transparency: a whole window made partly transparent as a layered
// window, and made plain again. Hosts before Windows 2000 have no layered
// windows; there both do nothing.
#include "FunctionsSupport.h"
#include "Frame.h"
#include "HostIdentification.h"
#include "Rounding.h"

static const char kModule[] = "Transparency";

namespace {

const int kExtendedStyle = -20;
const LONG kLayered = 0x80000;

}  // namespace

// amount is an opacity: 0 invisible, 255 (or 100 percent) opaque. Neither
// the handle nor the platform's answers are looked at.
CSK_EXPORT HRESULT WINAPI esSetWindowTransparecny(LONG window, LONG amount, VARIANT_BOOL percent) {
    CSK_ROUTINE("ESSETWINDOWTRANSPARECNY");
    if (!WR_ESISHOSTWIN2000_ORHIGHER()) return S_OK;
    const LONG ceiling = FLAG(percent) ? 100 : 255;
    const LONG clamped = amount < 0 ? 0 : amount > ceiling ? ceiling : amount;
    const BYTE alpha = FLAG(percent) ? static_cast<BYTE>(ROUNDHALFEVEN(clamped * 255 / 100.0)) : static_cast<BYTE>(clamped);
    HWND handle = HANDLEFROMLONG<HWND>(window);
    SetWindowLongA(handle, kExtendedStyle, GetWindowLongA(handle, kExtendedStyle) | kLayered);
    __SETLAYEREDWINDOWATTRIBUTES(handle, 0, alpha, 2 /* LWA_ALPHA */);
    return S_OK;
}

CSK_EXPORT HRESULT WINAPI esDisableWindowTransparecny(LONG window) {
    CSK_ROUTINE("ESDISABLEWINDOWTRANSPARECNY");
    if (!WR_ESISHOSTWIN2000_ORHIGHER()) return S_OK;
    HWND handle = HANDLEFROMLONG<HWND>(window);
    SetWindowLongA(handle, kExtendedStyle, GetWindowLongA(handle, kExtendedStyle) & ~kLayered);
    return S_OK;
}
