// The screen exports at the display's resolution: 96 logical pixels per
// inch in the ordinary run, 120 in the run of scripts/screen-dpi.sh.
#include <tuple>
#include <vector>

#include "VbDeclares.h"
#include "WindowsHarness.h"
#ifdef CSK_WINSIM
#include "winsim_control.h"
#endif

namespace {

// Twips to pixels: quotients of 1.5, 2.5 (ties away from zero, not to
// even) and -2.5, and one inch.
struct Resolution {
    int dpi;
    float twips, himetric, units[4];
    LONG pixels[4];
};

const Resolution kResolutions[] = {
    {96, 15.0f, 26.458334f, {22.5f, 37.5f, -37.5f, 1440.0f}, {2, 3, -3, 96}},
    {120, 12.0f, 21.166666f, {18.0f, 30.0f, -30.0f, 1440.0f}, {2, 3, -3, 120}},
};

const Resolution* Find(int dpi) { return dpi == 96 ? &kResolutions[0] : dpi == 120 ? &kResolutions[1] : nullptr; }

class Screen : public DesktopTest {};

}  // namespace

// Factors and conversions on both axes at the resolution in force.
TEST_F(Screen, FactorsAndConversions) {
    const Resolution* x = Find(LogPixels(LOGPIXELSX));
    const Resolution* y = Find(LogPixels(LOGPIXELSY));
    ASSERT_TRUE(x && y) << LogPixels(LOGPIXELSX) << " x " << LogPixels(LOGPIXELSY);
    std::printf("screen tests at %d x %d logical pixels per inch\n", x->dpi, y->dpi);
    float f[4] = {0, 0, 0, 0};
    EXPECT_EQ(S_OK, vb::esScreenTwipsPerPixelX(&f[0]) | vb::esScreenTwipsPerPixelY(&f[1]) |
                        vb::esScreenHimetricPerPixelX(&f[2]) | vb::esScreenHimetricPerPixelY(&f[3]));
    EXPECT_EQ(std::vector<float>({x->twips, y->twips, x->himetric, y->himetric}), std::vector<float>(f, f + 4));
    for (int i = 0; i < 4; ++i) {
        LONG p[4] = {7, 7, 7, 7};
        EXPECT_EQ(S_OK, vb::esScreenTwipsToPixelsX(x->units[i], &p[0]) | vb::esScreenTwipsToPixelsY(y->units[i], &p[1]));
        EXPECT_EQ(std::make_tuple(x->pixels[i], y->pixels[i]), std::make_tuple(p[0], p[1])) << x->units[i];
    }
    LONG inch[2] = {0, 0}, half[2] = {0, 0};
    EXPECT_EQ(S_OK, vb::esScreenHimetricToPixelsX(2540.0f, &inch[0]) | vb::esScreenHimetricToPixelsY(2540.0f, &inch[1]) |
                        vb::esScreenHimetricToPixelsX(-1270.0f, &half[0]) | vb::esScreenHimetricToPixelsY(1270.0f, &half[1]));
    EXPECT_EQ(std::make_tuple(LONG(x->dpi), LONG(y->dpi), LONG(-x->dpi / 2), LONG(y->dpi / 2)),
              std::make_tuple(inch[0], inch[1], half[0], half[1]));
}

// Sizes and edges in pixels and twips, each against the platform's metric.
TEST_F(Screen, SizesAndEdges) {
    const float tx = 1440.0f / LogPixels(LOGPIXELSX), ty = 1440.0f / LogPixels(LOGPIXELSY);
    LONG px[6] = {0, 0, 0, 0, 0, 0};
    float tw[6] = {0, 0, 0, 0, 0, 0};
    VARIANT_BOOL multi = 7;
    EXPECT_EQ(S_OK, vb::esScreenWidthPx(&px[0]) | vb::esScreenHeightPx(&px[1]) | vb::esVirtualScreenWidthPx(&px[2]) |
                        vb::esVirtualScreenHeightPx(&px[3]) | vb::esVirtualScreenLeftPx(&px[4]) |
                        vb::esVirtualScreenTopPx(&px[5]) | vb::esScreenWidth(&tw[0]) | vb::esScreenHeight(&tw[1]) |
                        vb::esVirtualScreenWidth(&tw[2]) | vb::esVirtualScreenHeight(&tw[3]) |
                        vb::esVirtualScreenLeft(&tw[4]) | vb::esVirtualScreenTop(&tw[5]) |
                        vb::esIsMultiMonitorSupported(&multi));
    const int metrics[6] = {SM_CXSCREEN, SM_CYSCREEN, SM_CXVIRTUALSCREEN, SM_CYVIRTUALSCREEN, SM_XVIRTUALSCREEN,
                            SM_YVIRTUALSCREEN};
    for (int i = 0; i < 6; ++i) {
        int metric = GetSystemMetrics(metrics[i]);
        if (metric == 0 && (i == 2 || i == 3)) metric = GetSystemMetrics(metrics[i - 2]);  // the primary's size
        EXPECT_EQ(std::make_tuple(LONG(metric), float(metric) * (i % 2 ? ty : tx)), std::make_tuple(px[i], tw[i])) << i;
    }
    EXPECT_EQ(VBBOOL(GetSystemMetrics(SM_CXVIRTUALSCREEN) != 0), multi);
    // A null out-pointer, each export called as its caller declares it.
    for (const char* name : {"esScreenTwipsPerPixelX", "esScreenTwipsPerPixelY", "esScreenHimetricPerPixelX",
                             "esScreenHimetricPerPixelY", "esScreenWidth", "esScreenHeight", "esScreenWidthPx",
                             "esScreenHeightPx", "esVirtualScreenWidth", "esVirtualScreenHeight", "esVirtualScreenWidthPx",
                             "esVirtualScreenHeightPx", "esVirtualScreenLeft", "esVirtualScreenTop",
                             "esVirtualScreenLeftPx", "esVirtualScreenTopPx", "esIsMultiMonitorSupported"})
        EXPECT_EQ(S_FALSE, (VbFunction<HRESULT, void*>{name})(nullptr)) << name;
    for (const char* name : {"esScreenHimetricToPixelsX", "esScreenHimetricToPixelsY", "esScreenTwipsToPixelsX",
                             "esScreenTwipsToPixelsY"})
        EXPECT_EQ(S_FALSE, (VbFunction<HRESULT, float, LONG*>{name})(1.0f, nullptr)) << name;
}

#ifdef CSK_WINSIM
// A virtual screen that begins left of and above the primary one; axes of
// different resolution. (The stand-in's own desktop has no virtual-screen
// metrics: SizesAndEdges sees the fallback to the primary screen.)
TEST_F(Screen, VirtualScreenAndAxes) {
    LONG px[3];
    float tw[2];
    VARIANT_BOOL multi = 7;
    winsim::setSystemMetric(SM_XVIRTUALSCREEN, -1280);
    winsim::setSystemMetric(SM_YVIRTUALSCREEN, -200);
    winsim::setSystemMetric(SM_CXVIRTUALSCREEN, 2304);
    winsim::setLogPixels(96, 120);
    EXPECT_EQ(S_OK, vb::esVirtualScreenLeftPx(&px[2]) | vb::esVirtualScreenLeft(&tw[0]) | vb::esVirtualScreenTop(&tw[1]) |
                        vb::esIsMultiMonitorSupported(&multi) | vb::esScreenTwipsToPixelsX(1440.0f, &px[0]) |
                        vb::esScreenTwipsToPixelsY(1440.0f, &px[1]));
    EXPECT_EQ(std::make_tuple(-1280, -19200.0f, -2400.0f, VARIANT_TRUE, 96, 120),
              std::make_tuple(px[2], tw[0], tw[1], multi, px[0], px[1]));
    EXPECT_EQ(winsim::calls("GetDC"), winsim::calls("ReleaseDC"));
}
#endif
