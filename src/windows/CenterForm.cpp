// Module CenterForm: a form centred on the desktop window or on the work
// area of its monitor, through its placement record, so that its size and
// its shown or hidden state are kept.
#include "FunctionsSupport.h"
#include "Frame.h"
#include "Rects.h"
#include "Rounding.h"

static const char kModule[] = "CenterForm";

namespace {

uint8_t INTERNALCENTERFORM(HWND window, RECT* area, uint8_t show) {
    CSK_ROUTINE("INTERNALCENTERFORM");
    if (IsRectEmpty(area)) return 0;
    WINDOWPLACEMENT placement{};
    placement.length = 44;
    if (!GetWindowPlacement(window, &placement)) return 0;
    WR_ESNORMALIZERECT(area);
    WR_ESNORMALIZERECT(&placement.rcNormalPosition);
    NewRect a, w;
    WR_ESRECTTONEWRECT(area, &a);
    WR_ESRECTTONEWRECT(&placement.rcNormalPosition, &w);
    // Halving an odd difference leaves .5, which goes to the even neighbour.
    const double left = a.left + (static_cast<double>(a.width) - w.width) / 2.0;
    const double top = a.top + (static_cast<double>(a.height) - w.height) / 2.0;
    w.left = static_cast<LONG>(ROUNDHALFEVEN(left));
    w.top = static_cast<LONG>(ROUNDHALFEVEN(top));
    WR_ESNEWRECTTORECT(&w, &placement.rcNormalPosition);
    // A hidden form stays hidden unless the caller asks to show it.
    if (!IsWindowVisible(window) && !show) placement.showCmd = SW_HIDE;
    return SetWindowPlacement(window, &placement) ? 1 : 0;
}

// The monitor is that of the window below the form in Z order (the form's
// own without one); without the monitor calls, the work area of the primary
// screen; without that, the desktop window.
uint8_t INTERNALCENTERFORMEX(HWND window, uint8_t show) {
    CSK_ROUTINE("INTERNALCENTERFORMEX");
    HWND guide = GetWindow(window, 2 /* GW_HWNDNEXT */);
    if (!guide) guide = window;
    HMONITOR monitor = __MONITORFROMWINDOW(guide, 1 /* MONITOR_DEFAULTTOPRIMARY */);
    if (!g_missingEntry) {
        MONITORINFOEXA info{};
        info.cbSize = 72;
        const BOOL found = __GETMONITORINFOA(monitor, reinterpret_cast<MONITORINFO*>(&info));
        if (!g_missingEntry && found) return INTERNALCENTERFORM(window, &info.rcWork, show);
    }
    RECT area{};
    if (SystemParametersInfoA(48 /* SPI_GETWORKAREA */, 0, &area, 0)) return INTERNALCENTERFORM(window, &area, show);
    if (GetWindowRect(GetDesktopWindow(), &area)) return INTERNALCENTERFORM(window, &area, show);
    return 0;
}

}  // namespace

CSK_EXPORT HRESULT WINAPI esCenterForm(LONG window, VARIANT_BOOL show, VARIANT_BOOL* centred) {
    return ValueExport(kModule, "ESCENTERFORM", centred, [&] {
        RECT area{};
        *centred = VARIANT_FALSE;
        if (GetWindowRect(GetDesktopWindow(), &area))
            *centred = VBBOOL(INTERNALCENTERFORM(HANDLEFROMLONG<HWND>(window), &area, FLAG(show)) != 0);
        return S_OK;
    });
}

CSK_EXPORT HRESULT WINAPI esCenterFormEx(LONG window, VARIANT_BOOL show, VARIANT_BOOL* centred) {
    return ValueExport(kModule, "ESCENTERFORMEX", centred, [&] {
        *centred = VBBOOL(INTERNALCENTERFORMEX(HANDLEFROMLONG<HWND>(window), FLAG(show)) != 0);
        return S_OK;
    });
}
