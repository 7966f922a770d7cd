// Colour numbers: packing and unpacking the COLORREF and Direct3D layouts,
// OLE_COLOR translation and the nearest solid colour, through the exports.
#include "VbDeclares.h"
#include "Tools.h"
#ifdef CSK_WINSIM
#include "winsim_control.h"
#endif

namespace {

const LONG kUntouched = 0x5A5A5A5A;

TEST(Colors, Packers) {
    struct Row {
        const char* what;
        HRESULT status;
        LONG answer;
    } rows[] = {
        {"RGB 1,2,3", 0, 0x030201},
        {"D3DRGBA 1,2,3,4", 0, 0x04010203},
        {"D3DARGB 4,1,2,3", 0, 0x04010203},
        {"D3DXRGB 1,2,3", 0, static_cast<LONG>(0xFF010203)},
        {"RGB 255,0,255", 0, 0xFF00FF},
        {"D3DRGBA all 255", 0, -1},
        {"D3DXRGB 0,0,0", 0, static_cast<LONG>(0xFF000000)},
    };
    LONG got[7];
    HRESULT status[7] = {
        vb::esRGB(1, 2, 3, &got[0]),           vb::esD3DRGBA(1, 2, 3, 4, &got[1]),
        vb::esD3DARGB(4, 1, 2, 3, &got[2]),    vb::esD3DXRGB(1, 2, 3, &got[3]),
        vb::esRGB(255, 0, 255, &got[4]),       vb::esD3DRGBA(255, 255, 255, 255, &got[5]),
        vb::esD3DXRGB(0, 0, 0, &got[6]),
    };
    for (int i = 0; i < 7; ++i) {
        EXPECT_EQ(rows[i].status, status[i]) << rows[i].what;
        EXPECT_EQ(rows[i].answer, got[i]) << rows[i].what;
    }
}

// One bad component in any place is refused; nothing is clamped or masked,
// and the caller's variable keeps what it held.
TEST(Colors, ComponentOutOfRangeIsRefusedUnwritten) {
    const LONG bad[] = {-1, 256, 0x100 | 0x01, static_cast<LONG>(0x80000000), 0x7FFFFFFF};
    for (LONG b : bad) {
        for (int place = 0; place < 4; ++place) {
            LONG c[4] = {1, 2, 3, 4};
            c[place] = b;
            LONG answer = kUntouched;
            if (place < 3) {
                EXPECT_EQ(E_INVALIDARG, vb::esRGB(c[0], c[1], c[2], &answer));
                EXPECT_EQ(E_INVALIDARG, vb::esD3DXRGB(c[0], c[1], c[2], &answer));
            }
            EXPECT_EQ(E_INVALIDARG, vb::esD3DRGBA(c[0], c[1], c[2], c[3], &answer));
            EXPECT_EQ(E_INVALIDARG, vb::esD3DARGB(c[0], c[1], c[2], c[3], &answer));
            EXPECT_EQ(kUntouched, answer) << b << " in place " << place;
        }
    }
}

TEST(Colors, ByteWorkOnPackedColours) {
    struct Row {
        const VbFunction<HRESULT, LONG, LONG*>& f;
        LONG input;
        LONG expected;
    } rows[] = {
        {vb::esGetRedD3DRGBA, 0x04C80203, 200},
        {vb::esGetGreenD3DRGBA, 0x0401FE03, 254},
        {vb::esGetBlueD3DRGBA, 0x040102FF, 255},
        {vb::esGetAlphaD3DRGBA, static_cast<LONG>(0xFF000000), 255},
        {vb::esGetAlphaD3DRGBA, 0x00FFFFFF, 0},
        {vb::esRGBtoD3DRGBA, 0x030201, static_cast<LONG>(0xFF010203)},
        {vb::esRGBtoD3DRGBA, static_cast<LONG>(0x80000005), static_cast<LONG>(0xFF050000)},  // bytes, untranslated
        {vb::esD3DRGBAtoRGB, static_cast<LONG>(0xFF010203), 0x030201},
        {vb::esD3DRGBAtoRGB, 0x12345678, 0x785634},
        {vb::esPaletteRGB, 0x030201, 0x02030201},
        {vb::esPaletteRGB, static_cast<LONG>(0x80000005), static_cast<LONG>(0x82000005)},  // other bits kept
    };
    for (const auto& row : rows) {
        LONG answer = kUntouched;
        EXPECT_EQ(S_OK, row.f(row.input, &answer)) << row.f.name;
        EXPECT_EQ(row.expected, answer) << row.f.name << " of " << std::hex << row.input;
    }
}

TEST(Colors, ComponentsOfTranslatedColours) {
    const DWORD window = GetSysColor(COLOR_WINDOW), highlight = GetSysColor(COLOR_HIGHLIGHT);
    struct Row {
        LONG color;
        HRESULT status;
        DWORD rgb;  // what the three exports read their bytes from
    } rows[] = {
        {0x00030201, S_OK, 0x030201},
        {0x02030201, S_OK, 0x02030201},
        {static_cast<LONG>(0x80000000 | COLOR_WINDOW), S_OK, window},
        {static_cast<LONG>(0x80000000 | COLOR_HIGHLIGHT), S_OK, highlight},
        {static_cast<LONG>(0x8000001F), E_INVALIDARG, 0},  // past the last system colour
        {0x03000000, E_INVALIDARG, 0},
        {static_cast<LONG>(0xFFFFFFFF), E_INVALIDARG, 0},
    };
    const VbFunction<HRESULT, LONG, LONG*>* exports[] = {&vb::esGetRedRGB, &vb::esGetGreenRGB, &vb::esGetBlueRGB};
    for (const auto& row : rows) {
        for (int i = 0; i < 3; ++i) {
            LONG answer = kUntouched;
            EXPECT_EQ(row.status, (*exports[i])(row.color, &answer)) << exports[i]->name << std::hex << row.color;
            LONG expected = row.status == S_OK ? static_cast<LONG>((row.rgb >> (8 * i)) & 0xFF) : kUntouched;
            EXPECT_EQ(expected, answer) << exports[i]->name << " of " << std::hex << row.color;
        }
    }
}

TEST(Colors, TranslateColorGivesThePlatformsAnswer) {
    LONG answer = kUntouched;
    EXPECT_EQ(S_OK, vb::esTranslateColor(static_cast<LONG>(0x80000000 | COLOR_WINDOWTEXT), 0, &answer));
    EXPECT_EQ(static_cast<LONG>(GetSysColor(COLOR_WINDOWTEXT)), answer);
    EXPECT_EQ(S_OK, vb::esTranslateColor(0x030201, 0, &answer));
    EXPECT_EQ(0x030201, answer);
    answer = kUntouched;
    EXPECT_EQ(E_INVALIDARG, vb::esTranslateColor(0x04000000, 0, &answer));
    EXPECT_EQ(kUntouched, answer);
#ifdef CSK_WINSIM  // a stand-in refusal with a code of its own shows it is passed through unchanged
    winsim::failNext("OleTranslateColor", 2);
    EXPECT_EQ(E_FAIL, vb::esTranslateColor(0x030201, 0, &answer));
    EXPECT_EQ(E_INVALIDARG, vb::esGetRedRGB(0x030201, &answer));
    EXPECT_EQ(kUntouched, answer);
#endif
}

TEST(Colors, SolidColor) {
    LONG answer = kUntouched;
#ifdef CSK_WINSIM
    winsim::reset();
#endif
    // The desktop's context (a true-colour screen here) shows the colour as it is.
    EXPECT_EQ(S_OK, vb::esGetSolidColor(0x030201, 0, &answer));
    EXPECT_EQ(0x030201, answer);
    EXPECT_EQ(S_OK, vb::esGetSolidColor(static_cast<LONG>(0x80000000 | COLOR_WINDOW), 0, &answer));
    EXPECT_EQ(static_cast<LONG>(GetSysColor(COLOR_WINDOW)), answer);
    // The caller's own context is used and stays the caller's.
    HDC own = GetDC(nullptr);
    ASSERT_NE(nullptr, own);
    EXPECT_EQ(S_OK, vb::esGetSolidColor(0x112233, LONGFROMHANDLE(own), &answer));
    EXPECT_EQ(0x112233, answer);
    EXPECT_EQ(1, ReleaseDC(nullptr, own));
    // A context that is none: GetNearestColor's CLR_INVALID is stored, status 0.
    EXPECT_EQ(S_OK, vb::esGetSolidColor(0x030201, 0x1234, &answer));
    EXPECT_EQ(static_cast<LONG>(CLR_INVALID), answer);
    // A colour that does not translate is refused before any context is asked for.
    answer = kUntouched;
    EXPECT_EQ(E_INVALIDARG, vb::esGetSolidColor(0x05000000, 0, &answer));
    EXPECT_EQ(kUntouched, answer);
#ifdef CSK_WINSIM  // the stand-in counts the borrowed contexts
    EXPECT_EQ(3, winsim::calls("GetDC"));  // two desktop borrowings and the test's own
    EXPECT_EQ(3, winsim::calls("ReleaseDC"));
    winsim::failNext("GetDC");
    EXPECT_EQ(S_OK, vb::esGetSolidColor(0x030201, 0, &answer));
    EXPECT_EQ(static_cast<LONG>(CLR_INVALID), answer);
    EXPECT_EQ(3, winsim::calls("ReleaseDC")) << "no context, nothing to release";
#endif
}

TEST(Colors, NullAnswerPointerIsStatusOneAndAsksNothing) {
#ifdef CSK_WINSIM
    winsim::reset();
#endif
    for (const auto* f : {&vb::esGetRedRGB, &vb::esGetGreenRGB, &vb::esGetBlueRGB, &vb::esPaletteRGB,
                          &vb::esGetRedD3DRGBA, &vb::esGetGreenD3DRGBA, &vb::esGetBlueD3DRGBA, &vb::esGetAlphaD3DRGBA,
                          &vb::esRGBtoD3DRGBA, &vb::esD3DRGBAtoRGB})
        EXPECT_EQ(S_FALSE, (*f)(static_cast<LONG>(0x80000005), nullptr)) << f->name;
    EXPECT_EQ(S_FALSE, vb::esTranslateColor(0x030201, 0, nullptr));
    EXPECT_EQ(S_FALSE, vb::esGetSolidColor(0x030201, 0, nullptr));
    EXPECT_EQ(S_FALSE, vb::esRGB(1, 2, 999, nullptr));  // the pointer is tested before the range
    EXPECT_EQ(S_FALSE, vb::esD3DRGBA(-1, 2, 3, 4, nullptr));
    EXPECT_EQ(S_FALSE, vb::esD3DARGB(1, 2, 3, 4, nullptr));
    EXPECT_EQ(S_FALSE, vb::esD3DXRGB(1, 2, 3, nullptr));
#ifdef CSK_WINSIM
    EXPECT_EQ(0, winsim::calls("OleTranslateColor"));
    EXPECT_EQ(0, winsim::calls("GetDC"));
#endif
}

}  // namespace
