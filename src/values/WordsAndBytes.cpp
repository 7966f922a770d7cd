// Module WordsAndBytes: packing two bytes into an Integer and two Integers
// into a Long, and taking them apart again. Low part first, as MAKEWORD and
// MAKELONG have it; nothing is sign-extended. Each answer is written in
// exactly its width, and only the low 8 or 16 bits of a narrow argument are
// read.
#include "Frame.h"

static const char kModule[] = "WordsAndBytes";

CSK_EXPORT HRESULT WINAPI esMakeWord(BYTE low, BYTE high, SHORT* answer) {
    return ValueExport(kModule, "ESMAKEWORD", answer, [&] {
        *answer = static_cast<SHORT>(static_cast<uint16_t>(high << 8 | low));
        return S_OK;
    });
}

CSK_EXPORT HRESULT WINAPI esMakeLong(SHORT low, SHORT high, LONG* answer) {
    return ValueExport(kModule, "ESMAKELONG", answer, [&] {
        *answer = static_cast<LONG>(static_cast<uint32_t>(static_cast<uint16_t>(high)) << 16 |
                                    static_cast<uint16_t>(low));
        return S_OK;
    });
}

CSK_EXPORT HRESULT WINAPI esHiWord(LONG value, SHORT* answer) {
    return ValueExport(kModule, "ESHIWORD", answer, [&] {
        *answer = static_cast<SHORT>(static_cast<uint16_t>(static_cast<uint32_t>(value) >> 16));
        return S_OK;
    });
}

CSK_EXPORT HRESULT WINAPI esLoWord(LONG value, SHORT* answer) {
    return ValueExport(kModule, "ESLOWORD", answer, [&] {
        *answer = static_cast<SHORT>(static_cast<uint16_t>(value));
        return S_OK;
    });
}

CSK_EXPORT HRESULT WINAPI esHiByte(SHORT value, BYTE* answer) {
    return ValueExport(kModule, "ESHIBYTE", answer, [&] {
        *answer = static_cast<BYTE>(static_cast<uint16_t>(value) >> 8);
        return S_OK;
    });
}

CSK_EXPORT HRESULT WINAPI esLoByte(SHORT value, BYTE* answer) {
    return ValueExport(kModule, "ESLOBYTE", answer, [&] {
        *answer = static_cast<BYTE>(value);
        return S_OK;
    });
}
