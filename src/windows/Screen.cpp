// Module Screen: the primary and the virtual screen in pixels and twips,
// and the factors between pixels, twips and himetric units at the display's
// logical resolution. Everything is asked anew at each call.
#include "Frame.h"
#include "Rounding.h"

static const char kModule[] = "Screen";

namespace {

const int kLogPixelsX = 88, kLogPixelsY = 90;
const int kScreenWidth = 0, kScreenHeight = 1, kVirtualLeft = 76, kVirtualTop = 77, kVirtualWidth = 78,
          kVirtualHeight = 79;

// units per inch / the screen's logical pixels per inch, as a Single.
float UNITSPERPIXEL(double unitsPerInch, int axis) {
    HDC screen = GetDC(nullptr);
    const int pixels = GetDeviceCaps(screen, axis);
    volatile float factor = static_cast<float>(unitsPerInch / pixels);
    ReleaseDC(nullptr, screen);
    return factor;
}

float GETTWIPSPERPIXELX() { return UNITSPERPIXEL(1440.0, kLogPixelsX); }
float GETTWIPSPERPIXELY() { return UNITSPERPIXEL(1440.0, kLogPixelsY); }
float GETHIMETRICPERPIXELX() { return UNITSPERPIXEL(2540.0, kLogPixelsX); }
float GETHIMETRICPERPIXELY() { return UNITSPERPIXEL(2540.0, kLogPixelsY); }

// Pixels made a Single, times the factor, the product a Single again.
float TWIPS(int pixels, float factor) {
    volatile float product = static_cast<float>(pixels) * factor;
    return product;
}

// A virtual-screen size that an older host does not know (0) is the
// primary screen's.
int VIRTUALSIZE(int virtualMetric, int primaryMetric) {
    const int size = GetSystemMetrics(virtualMetric);
    return size != 0 ? size : GetSystemMetrics(primaryMetric);
}

// value / factor in double, to the nearest whole number, ties away from 0.
LONG PIXELS(float value, float factor) {
    return static_cast<LONG>(ROUNDHALFAWAY(static_cast<double>(value) / static_cast<double>(factor)));
}

template <class Answer, class Value>
HRESULT Answered(const char* routine, Answer* answer, Value value) {
    return ValueExport(kModule, routine, answer, [&] {
        *answer = value();
        return S_OK;
    });
}

}  // namespace

CSK_EXPORT HRESULT WINAPI esScreenTwipsPerPixelX(float* factor) {
    return Answered("ESSCREENTWIPSPERPIXELX", factor, [] { return GETTWIPSPERPIXELX(); });
}

CSK_EXPORT HRESULT WINAPI esScreenTwipsPerPixelY(float* factor) {
    return Answered("ESSCREENTWIPSPERPIXELY", factor, [] { return GETTWIPSPERPIXELY(); });
}

CSK_EXPORT HRESULT WINAPI esScreenHimetricPerPixelX(float* factor) {
    return Answered("ESSCREENHIMETRICPERPIXELX", factor, [] { return GETHIMETRICPERPIXELX(); });
}

CSK_EXPORT HRESULT WINAPI esScreenHimetricPerPixelY(float* factor) {
    return Answered("ESSCREENHIMETRICPERPIXELY", factor, [] { return GETHIMETRICPERPIXELY(); });
}

CSK_EXPORT HRESULT WINAPI esScreenWidth(float* twips) {
    return Answered("ESSCREENWIDTH", twips, [] { return TWIPS(GetSystemMetrics(kScreenWidth), GETTWIPSPERPIXELX()); });
}

CSK_EXPORT HRESULT WINAPI esScreenHeight(float* twips) {
    return Answered("ESSCREENHEIGHT", twips, [] { return TWIPS(GetSystemMetrics(kScreenHeight), GETTWIPSPERPIXELY()); });
}

CSK_EXPORT HRESULT WINAPI esScreenWidthPx(LONG* pixels) {
    return Answered("ESSCREENWIDTHPX", pixels, [] { return static_cast<LONG>(GetSystemMetrics(kScreenWidth)); });
}

CSK_EXPORT HRESULT WINAPI esScreenHeightPx(LONG* pixels) {
    return Answered("ESSCREENHEIGHTPX", pixels, [] { return static_cast<LONG>(GetSystemMetrics(kScreenHeight)); });
}

CSK_EXPORT HRESULT WINAPI esVirtualScreenWidth(float* twips) {
    return Answered("ESVIRTUALSCREENWIDTH", twips,
                   [] { return TWIPS(VIRTUALSIZE(kVirtualWidth, kScreenWidth), GETTWIPSPERPIXELX()); });
}

CSK_EXPORT HRESULT WINAPI esVirtualScreenHeight(float* twips) {
    return Answered("ESVIRTUALSCREENHEIGHT", twips,
                   [] { return TWIPS(VIRTUALSIZE(kVirtualHeight, kScreenHeight), GETTWIPSPERPIXELY()); });
}

CSK_EXPORT HRESULT WINAPI esVirtualScreenWidthPx(LONG* pixels) {
    return Answered("ESVIRTUALSCREENWIDTHPX", pixels,
                   [] { return static_cast<LONG>(VIRTUALSIZE(kVirtualWidth, kScreenWidth)); });
}

CSK_EXPORT HRESULT WINAPI esVirtualScreenHeightPx(LONG* pixels) {
    return Answered("ESVIRTUALSCREENHEIGHTPX", pixels,
                   [] { return static_cast<LONG>(VIRTUALSIZE(kVirtualHeight, kScreenHeight)); });
}

// The edges have no fallback: a host without them answers 0, which is where
// the primary screen begins.
CSK_EXPORT HRESULT WINAPI esVirtualScreenLeft(float* twips) {
    return Answered("ESVIRTUALSCREENLEFT", twips, [] { return TWIPS(GetSystemMetrics(kVirtualLeft), GETTWIPSPERPIXELX()); });
}

CSK_EXPORT HRESULT WINAPI esVirtualScreenTop(float* twips) {
    return Answered("ESVIRTUALSCREENTOP", twips, [] { return TWIPS(GetSystemMetrics(kVirtualTop), GETTWIPSPERPIXELY()); });
}

CSK_EXPORT HRESULT WINAPI esVirtualScreenLeftPx(LONG* pixels) {
    return Answered("ESVIRTUALSCREENLEFTPX", pixels, [] { return static_cast<LONG>(GetSystemMetrics(kVirtualLeft)); });
}

CSK_EXPORT HRESULT WINAPI esVirtualScreenTopPx(LONG* pixels) {
    return Answered("ESVIRTUALSCREENTOPPX", pixels, [] { return static_cast<LONG>(GetSystemMetrics(kVirtualTop)); });
}

CSK_EXPORT HRESULT WINAPI esIsMultiMonitorSupported(VARIANT_BOOL* answer) {
    return Answered("ESISMULTIMONITORSUPPORTED", answer, [] { return VBBOOL(GetSystemMetrics(kVirtualWidth) != 0); });
}

CSK_EXPORT HRESULT WINAPI esScreenHimetricToPixelsX(float value, LONG* pixels) {
    return Answered("ESSCREENHIMETRICTOPIXELSX", pixels, [&] { return PIXELS(value, GETHIMETRICPERPIXELX()); });
}

CSK_EXPORT HRESULT WINAPI esScreenHimetricToPixelsY(float value, LONG* pixels) {
    return Answered("ESSCREENHIMETRICTOPIXELSY", pixels, [&] { return PIXELS(value, GETHIMETRICPERPIXELY()); });
}

CSK_EXPORT HRESULT WINAPI esScreenTwipsToPixelsX(float value, LONG* pixels) {
    return Answered("ESSCREENTWIPSTOPIXELSX", pixels, [&] { return PIXELS(value, GETTWIPSPERPIXELX()); });
}

CSK_EXPORT HRESULT WINAPI esScreenTwipsToPixelsY(float value, LONG* pixels) {
    return Answered("ESSCREENTWIPSTOPIXELSY", pixels, [&] { return PIXELS(value, GETTWIPSPERPIXELY()); });
}
