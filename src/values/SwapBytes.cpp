// Module SwapBytes: byte order reversed within an Integer or a Long.
#include "Frame.h"

static const char kModule[] = "SwapBytes";

CSK_EXPORT HRESULT WINAPI esSwapBytes2(SHORT value, SHORT* answer) {
    return ValueExport(kModule, "ESSWAPBYTES2", answer, [&] {
        uint16_t v = static_cast<uint16_t>(value);
        *answer = static_cast<SHORT>(static_cast<uint16_t>(v << 8 | v >> 8));
        return S_OK;
    });
}

CSK_EXPORT HRESULT WINAPI esSwapBytes4(LONG value, LONG* answer) {
    return ValueExport(kModule, "ESSWAPBYTES4", answer, [&] {
        uint32_t v = static_cast<uint32_t>(value);
        *answer = static_cast<LONG>(v << 24 | (v & 0xFF00) << 8 | (v >> 8 & 0xFF00) | v >> 24);
        return S_OK;
    });
}
