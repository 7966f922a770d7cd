// Colour numbers: packing and unpacking the COLORREF and Direct3D layouts,
// OLE_COLOR translation and the nearest solid colour, through the exports.
#include "Tools.h"
#include "VbDeclares.h"
#ifdef CSK_WINSIM
#include "winsim_control.h"
#endif

namespace {

const LONG kUntouched = 0x5A5A5A5A, kSystem = static_cast<LONG>(0x80000000);

LONG Sys(int index) { return static_cast<LONG>(GetSysColor(index)); }

// A refusal leaves the caller's variable as it was; a null answer pointer is
// status 1 before anything else is looked at.
TEST(Colors, PackUnpackAndTranslate) {
    const struct { HRESULT (*call)(LONG*); HRESULT status; LONG expected; } rows[] = {
        {[](LONG* a) { return vb::esRGB(1, 2, 255, a); }, S_OK, 0xFF0201},
        {[](LONG* a) { return vb::esD3DRGBA(1, 2, 3, 255, a); }, S_OK, static_cast<LONG>(0xFF010203)},
        {[](LONG* a) { return vb::esD3DARGB(4, 1, 2, 3, a); }, S_OK, 0x04010203},
        {[](LONG* a) { return vb::esD3DXRGB(0, 2, 3, a); }, S_OK, static_cast<LONG>(0xFF000203)},
        {[](LONG* a) { return vb::esGetRedD3DRGBA(0x04C80203, a); }, S_OK, 200},
        {[](LONG* a) { return vb::esGetGreenD3DRGBA(0x0401FE03, a); }, S_OK, 254},
        {[](LONG* a) { return vb::esGetBlueD3DRGBA(0x040102FF, a); }, S_OK, 255},
        {[](LONG* a) { return vb::esGetAlphaD3DRGBA(static_cast<LONG>(0xFF000000), a); }, S_OK, 255},
        // Plain byte work: a system colour number is moved like any other.
        {[](LONG* a) { return vb::esRGBtoD3DRGBA(kSystem | 0x0201, a); }, S_OK, static_cast<LONG>(0xFF010200)},
        {[](LONG* a) { return vb::esD3DRGBAtoRGB(0x12345678, a); }, S_OK, 0x785634},
        {[](LONG* a) { return vb::esPaletteRGB(kSystem | 5, a); }, S_OK, static_cast<LONG>(0x82000005)},
        // Translated first: a palette-relative colour is its own, a system
        // colour the platform's, anything else refused.
        {[](LONG* a) { return vb::esGetRedRGB(0x02030201, a); }, S_OK, 1},
        {[](LONG* a) { return vb::esGetGreenRGB(0x02030201, a); }, S_OK, 2},
        {[](LONG* a) { return vb::esGetBlueRGB(0x02030201, a); }, S_OK, 3},
        // COLOR_MENUBAR is the last system colour.
        {[](LONG* a) { return vb::esGetRedRGB(kSystem | COLOR_MENUBAR, a); }, S_OK, Sys(COLOR_MENUBAR) & 0xFF},
        {[](LONG* a) { return vb::esGetBlueRGB(kSystem | (COLOR_MENUBAR + 1), a); }, E_INVALIDARG, kUntouched},
        {[](LONG* a) { return vb::esTranslateColor(kSystem | COLOR_WINDOWTEXT, 0, a); }, S_OK, Sys(COLOR_WINDOWTEXT)},
        // The desktop's context (a true-colour screen here) shows every colour
        // as it is; a context that is none gives CLR_INVALID, stored.
        {[](LONG* a) { return vb::esGetSolidColor(kSystem | COLOR_WINDOW, 0, a); }, S_OK, Sys(COLOR_WINDOW)},
        {[](LONG* a) { return vb::esGetSolidColor(0x030201, 0x1234, a); }, S_OK, static_cast<LONG>(CLR_INVALID)},
        {[](LONG* a) { return vb::esGetSolidColor(0x05000000, 0, a); }, E_INVALIDARG, kUntouched},
    };
    for (const auto& row : rows) {
        LONG answer = kUntouched;
        EXPECT_EQ(row.status, row.call(&answer)) << "row " << &row - rows;
        EXPECT_EQ(row.expected, answer) << "row " << &row - rows;
        EXPECT_EQ(S_FALSE, row.call(nullptr)) << "row " << &row - rows;
    }
}

// One bad component in any place is refused, never clamped or masked.
TEST(Colors, ComponentOutOfRangeIsRefusedUnwritten) {
    for (LONG bad : {-1, 256, INT32_MIN, INT32_MAX})
        for (int place = 0; place < 4; ++place) {
            LONG c[4] = {1, 2, 3, 4}, *t = c + (place == 3), answer = kUntouched;  // t: three that include place
            c[place] = bad;
            EXPECT_EQ(E_INVALIDARG, vb::esRGB(t[0], t[1], t[2], &answer));
            EXPECT_EQ(E_INVALIDARG, vb::esD3DXRGB(t[0], t[1], t[2], &answer));
            EXPECT_EQ(E_INVALIDARG, vb::esD3DRGBA(c[0], c[1], c[2], c[3], &answer));
            EXPECT_EQ(E_INVALIDARG, vb::esD3DARGB(c[0], c[1], c[2], c[3], &answer));
            EXPECT_EQ(kUntouched, answer) << bad << " in place " << place;
        }
}

// The caller's context is used and stays the caller's.
TEST(Colors, SolidColorContexts) {
    LONG answer = kUntouched;
#ifdef CSK_WINSIM  // the stand-in counts the desktop context borrowed and given back, and refuses
    winsim::reset();
    EXPECT_EQ(S_OK, vb::esGetSolidColor(0x030201, 0, &answer));
    EXPECT_EQ(1, winsim::calls("ReleaseDC"));
    winsim::failNext("GetDC");  // no context: GetNearestColor's CLR_INVALID is stored
    EXPECT_EQ(S_OK, vb::esGetSolidColor(0x030201, 0, &answer));
    EXPECT_EQ(static_cast<LONG>(CLR_INVALID), answer);
    // esTranslateColor hands back the platform's own code; the byte exports
    // call any refusal an invalid argument.
    winsim::failNext("OleTranslateColor", 2);
    EXPECT_EQ(E_FAIL, vb::esTranslateColor(0x030201, 0, &answer));
    EXPECT_EQ(E_INVALIDARG, vb::esGetRedRGB(0x030201, &answer));
#endif
    HDC own = GetDC(nullptr);
    EXPECT_EQ(S_OK, vb::esGetSolidColor(0x112233, LONGFROMHANDLE(own), &answer));
    EXPECT_EQ(0x112233, answer);
    EXPECT_EQ(1, ReleaseDC(nullptr, own));
}

}  // namespace
