// Module Colors: building, taking apart and converting colour numbers in the
// three layouts a Visual Basic program meets: the Windows COLORREF (0BGR),
// the OLE_COLOR that may name a system colour, and Direct3D's packed ARGB.
// Components are whole numbers 0 to 255; out of range is refused, never
// clamped or masked.
#include "Frame.h"

static const char kModule[] = "Colors";

static bool isComponent(LONG value) { return value >= 0 && value <= 255; }

static LONG packARGB(LONG alpha, LONG red, LONG green, LONG blue) {
    return static_cast<LONG>(static_cast<uint32_t>(alpha) << 24 | static_cast<uint32_t>(red) << 16 |
                             static_cast<uint32_t>(green) << 8 | static_cast<uint32_t>(blue));
}

// The OLE_COLOR as a COLORREF, without a palette; false if the platform
// refuses it.
static bool translate(LONG color, COLORREF& translated) {
    return OleTranslateColor(static_cast<OLE_COLOR>(color), nullptr, &translated) == S_OK;
}

// One byte of the translated colour; a colour the platform refuses is an
// invalid argument and leaves the answer as it was.
static HRESULT translatedByte(LONG color, int shift, LONG* answer) {
    COLORREF translated;
    if (!translate(color, translated)) return E_INVALIDARG;
    *answer = static_cast<LONG>((translated >> shift) & 0xFF);
    return S_OK;
}

static HRESULT packedByte(LONG color, int shift, LONG* answer) {
    *answer = static_cast<LONG>((static_cast<uint32_t>(color) >> shift) & 0xFF);
    return S_OK;
}

CSK_EXPORT HRESULT WINAPI esGetRedRGB(LONG color, LONG* answer) {
    return ValueExport(kModule, "ESGETREDRGB", answer, [&] { return translatedByte(color, 0, answer); });
}

CSK_EXPORT HRESULT WINAPI esGetGreenRGB(LONG color, LONG* answer) {
    return ValueExport(kModule, "ESGETGREENRGB", answer, [&] { return translatedByte(color, 8, answer); });
}

CSK_EXPORT HRESULT WINAPI esGetBlueRGB(LONG color, LONG* answer) {
    return ValueExport(kModule, "ESGETBLUERGB", answer, [&] { return translatedByte(color, 16, answer); });
}

CSK_EXPORT HRESULT WINAPI esPaletteRGB(LONG color, LONG* answer) {
    return ValueExport(kModule, "ESPALETTERGB", answer, [&] {
        *answer = color | 0x02000000;
        return S_OK;
    });
}

// The caller chooses the palette and gets the platform's own status; the
// answer is written only when the translation succeeded.
CSK_EXPORT HRESULT WINAPI esTranslateColor(LONG color, LONG palette, LONG* answer) {
    return ValueExport(kModule, "ESTRANSLATECOLOR", answer, [&] {
        COLORREF translated;
        HPALETTE handle = HANDLEFROMLONG<HPALETTE>(palette);
        HRESULT status = OleTranslateColor(static_cast<OLE_COLOR>(color), handle, &translated);
        if (status == S_OK) *answer = static_cast<LONG>(translated);
        return status;
    });
}

// The nearest colour the device can show; with context 0, that of the
// desktop, which is borrowed for the call and given back. Whatever
// GetNearestColor answers is stored, CLR_INVALID included.
CSK_EXPORT HRESULT WINAPI esGetSolidColor(LONG color, LONG deviceContext, LONG* answer) {
    return ValueExport(kModule, "ESGETSOLIDCOLOR", answer, [&] {
        COLORREF translated;
        if (!translate(color, translated)) return E_INVALIDARG;
        if (deviceContext != 0) {
            HDC dc = HANDLEFROMLONG<HDC>(deviceContext);
            *answer = static_cast<LONG>(GetNearestColor(dc, translated));
            return S_OK;
        }
        HWND desktop = GetDesktopWindow();
        HDC dc = GetDC(desktop);
        *answer = static_cast<LONG>(GetNearestColor(dc, translated));
        if (dc) ReleaseDC(desktop, dc);
        return S_OK;
    });
}

CSK_EXPORT HRESULT WINAPI esRGB(LONG red, LONG green, LONG blue, LONG* answer) {
    return ValueExport(kModule, "ESRGB", answer, [&] {
        if (!isComponent(red) || !isComponent(green) || !isComponent(blue)) return E_INVALIDARG;
        *answer = packARGB(0, blue, green, red);
        return S_OK;
    });
}

CSK_EXPORT HRESULT WINAPI esD3DRGBA(LONG red, LONG green, LONG blue, LONG alpha, LONG* answer) {
    return ValueExport(kModule, "ESD3DRGBA", answer, [&] {
        if (!isComponent(red) || !isComponent(green) || !isComponent(blue) || !isComponent(alpha))
            return E_INVALIDARG;
        *answer = packARGB(alpha, red, green, blue);
        return S_OK;
    });
}

CSK_EXPORT HRESULT WINAPI esD3DARGB(LONG alpha, LONG red, LONG green, LONG blue, LONG* answer) {
    return ValueExport(kModule, "ESD3DARGB", answer, [&] {
        if (!isComponent(alpha) || !isComponent(red) || !isComponent(green) || !isComponent(blue))
            return E_INVALIDARG;
        *answer = packARGB(alpha, red, green, blue);
        return S_OK;
    });
}

CSK_EXPORT HRESULT WINAPI esD3DXRGB(LONG red, LONG green, LONG blue, LONG* answer) {
    return ValueExport(kModule, "ESD3DXRGB", answer, [&] {
        if (!isComponent(red) || !isComponent(green) || !isComponent(blue)) return E_INVALIDARG;
        *answer = packARGB(255, red, green, blue);
        return S_OK;
    });
}

CSK_EXPORT HRESULT WINAPI esGetRedD3DRGBA(LONG color, LONG* answer) {
    return ValueExport(kModule, "ESGETREDD3DRGBA", answer, [&] { return packedByte(color, 16, answer); });
}

CSK_EXPORT HRESULT WINAPI esGetGreenD3DRGBA(LONG color, LONG* answer) {
    return ValueExport(kModule, "ESGETGREEND3DRGBA", answer, [&] { return packedByte(color, 8, answer); });
}

CSK_EXPORT HRESULT WINAPI esGetBlueD3DRGBA(LONG color, LONG* answer) {
    return ValueExport(kModule, "ESGETBLUED3DRGBA", answer, [&] { return packedByte(color, 0, answer); });
}

CSK_EXPORT HRESULT WINAPI esGetAlphaD3DRGBA(LONG color, LONG* answer) {
    return ValueExport(kModule, "ESGETALPHAD3DRGBA", answer, [&] { return packedByte(color, 24, answer); });
}

// Plain byte work, no translation: a system colour number is moved like
// any other.
CSK_EXPORT HRESULT WINAPI esRGBtoD3DRGBA(LONG color, LONG* answer) {
    return ValueExport(kModule, "ESRGBTOD3DRGBA", answer, [&] {
        uint32_t c = static_cast<uint32_t>(color);
        *answer = packARGB(255, c & 0xFF, (c >> 8) & 0xFF, (c >> 16) & 0xFF);
        return S_OK;
    });
}

CSK_EXPORT HRESULT WINAPI esD3DRGBAtoRGB(LONG color, LONG* answer) {
    return ValueExport(kModule, "ESD3DRGBATORGB", answer, [&] {
        uint32_t c = static_cast<uint32_t>(color);
        *answer = packARGB(0, c & 0xFF, (c >> 8) & 0xFF, (c >> 16) & 0xFF);
        return S_OK;
    });
}
