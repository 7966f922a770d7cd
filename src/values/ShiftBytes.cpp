// Module ShiftBytes: logical shifts of a Byte, an Integer or a Long. The
// value is taken as an unsigned number of its width and zeros come in from
// either side, so a right shift never fills with the sign. The count must
// lie in 1 to 31 for every width: any other count is refused with status 1,
// and the caller finds its value unchanged in the answer.
#include "Frame.h"

static const char kModule[] = "ShiftBytes";

// The low `width` bits of value shifted by count; false, and value's low
// bits as they are, for a count outside 1 to 31. A count at or beyond a
// narrow width is valid and shifts every bit out.
static bool SHIFTBITS(uint32_t value, LONG count, bool left, int width, uint32_t& result) {
    const uint32_t mask = width == 32 ? 0xFFFFFFFFu : (1u << width) - 1;
    value &= mask;
    if (count < 1 || count > 31) {
        result = value;
        return false;
    }
    result = (left ? value << count : value >> count) & mask;
    return true;
}

template <class Answer>
static HRESULT shiftInto(uint32_t value, LONG count, bool left, Answer* answer) {
    uint32_t result;
    bool done = SHIFTBITS(value, count, left, 8 * sizeof(Answer), result);
    *answer = static_cast<Answer>(result);
    return done ? S_OK : S_FALSE;
}

CSK_EXPORT HRESULT WINAPI esShiftLeft1(BYTE value, LONG count, BYTE* answer) {
    return ValueExport(kModule, "ESSHIFTLEFT1", answer, [&] { return shiftInto(value, count, true, answer); });
}

CSK_EXPORT HRESULT WINAPI esShiftLeft2(SHORT value, LONG count, SHORT* answer) {
    return ValueExport(kModule, "ESSHIFTLEFT2", answer,
                       [&] { return shiftInto(static_cast<uint16_t>(value), count, true, answer); });
}

CSK_EXPORT HRESULT WINAPI esShiftLeft4(LONG value, LONG count, LONG* answer) {
    return ValueExport(kModule, "ESSHIFTLEFT4", answer,
                       [&] { return shiftInto(static_cast<uint32_t>(value), count, true, answer); });
}

CSK_EXPORT HRESULT WINAPI esShiftRight1(BYTE value, LONG count, BYTE* answer) {
    return ValueExport(kModule, "ESSHIFTRIGHT1", answer, [&] { return shiftInto(value, count, false, answer); });
}

CSK_EXPORT HRESULT WINAPI esShiftRight2(SHORT value, LONG count, SHORT* answer) {
    return ValueExport(kModule, "ESSHIFTRIGHT2", answer,
                       [&] { return shiftInto(static_cast<uint16_t>(value), count, false, answer); });
}

CSK_EXPORT HRESULT WINAPI esShiftRight4(LONG value, LONG count, LONG* answer) {
    return ValueExport(kModule, "ESSHIFTRIGHT4", answer,
                       [&] { return shiftInto(static_cast<uint32_t>(value), count, false, answer); });
}
