// Module Hex: a value's bits as fixed-width text, most significant digit
// first, with every leading zero: hexadecimal in upper case ("0x" in lower
// case for the Ex forms) and binary. No sign: the bits are read unsigned.
#include "Frame.h"

static const char kModule[] = "Hex";

// The low `digits` nibbles of value in hexadecimal, behind prefix.
static std::string HEXDIGITS(uint32_t value, int digits, const char* prefix) {
    CSK_ROUTINE("HEXDIGITS");
    static const char kDigits[] = "0123456789ABCDEF";
    std::string text(prefix);
    size_t start = text.size();
    text.resize(start + static_cast<size_t>(digits));
    for (int i = digits - 1; i >= 0; --i, value >>= 4) text[start + static_cast<size_t>(i)] = kDigits[value & 0xF];
    return text;
}

// The low `digits` bits of value as "0" and "1".
static std::string BINARYDIGITS(uint32_t value, int digits) {
    CSK_ROUTINE("BINARYDIGITS");
    std::string text(static_cast<size_t>(digits), '0');
    for (int i = digits - 1; i >= 0; --i, value >>= 1)
        if (value & 1) text[static_cast<size_t>(i)] = '1';
    return text;
}

CSK_EXPORT HRESULT WINAPI esHex1(BYTE value, BSTR* result) {
    return TextExport(kModule, "ESHEX1", result, [&] { return HEXDIGITS(value, 2, ""); });
}

CSK_EXPORT HRESULT WINAPI esHex2(SHORT value, BSTR* result) {
    return TextExport(kModule, "ESHEX2", result, [&] { return HEXDIGITS(static_cast<uint16_t>(value), 4, ""); });
}

CSK_EXPORT HRESULT WINAPI esHex4(LONG value, BSTR* result) {
    return TextExport(kModule, "ESHEX4", result, [&] { return HEXDIGITS(static_cast<uint32_t>(value), 8, ""); });
}

CSK_EXPORT HRESULT WINAPI esHexEx1(BYTE value, BSTR* result) {
    return TextExport(kModule, "ESHEXEX1", result, [&] { return HEXDIGITS(value, 2, "0x"); });
}

CSK_EXPORT HRESULT WINAPI esHexEx2(SHORT value, BSTR* result) {
    return TextExport(kModule, "ESHEXEX2", result,
                      [&] { return HEXDIGITS(static_cast<uint16_t>(value), 4, "0x"); });
}

CSK_EXPORT HRESULT WINAPI esHexEx4(LONG value, BSTR* result) {
    return TextExport(kModule, "ESHEXEX4", result,
                      [&] { return HEXDIGITS(static_cast<uint32_t>(value), 8, "0x"); });
}

CSK_EXPORT HRESULT WINAPI esBin1(BYTE value, BSTR* result) {
    return TextExport(kModule, "ESBIN1", result, [&] { return BINARYDIGITS(value, 8); });
}

CSK_EXPORT HRESULT WINAPI esBin2(SHORT value, BSTR* result) {
    return TextExport(kModule, "ESBIN2", result, [&] { return BINARYDIGITS(static_cast<uint16_t>(value), 16); });
}

CSK_EXPORT HRESULT WINAPI esBin4(LONG value, BSTR* result) {
    return TextExport(kModule, "ESBIN4", result, [&] { return BINARYDIGITS(static_cast<uint32_t>(value), 32); });
}
