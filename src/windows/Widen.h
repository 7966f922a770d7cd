// Working text widened into a zero-filled buffer of UTF-16 units, by the
// same conversion the hand-back uses, for the platform calls that want a
// wide string built from 8-bit text.
#pragma once

#include <vector>

#include "Tools.h"

// units: the buffer's size; the text is cut to leave at least one NUL.
inline std::vector<WCHAR> WIDENTOBUFFER(const std::string& text, size_t units) {
    std::vector<WCHAR> buffer(units, 0);
    BSTR wide = nullptr;
    HANDBACK(&wide, text);
    const size_t length = wide ? SysStringLen(wide) : 0;
    for (size_t i = 0; i < length && i + 1 < units; ++i) buffer[i] = wide[i];
    SysFreeString(wide);
    return buffer;
}
