// Module FormatFunctions_Roman: Roman numerals.
#include "FormatFunctions_Roman.h"

#include "Frame.h"

static const char kModule[] = "FormatFunctions_Roman";

// Read by position: units use I V X, tens X L C, hundreds C D M.
static const char kLetters[] = "IVXLCDM";

// One decimal digit, its one-letter at kLetters[one], its five-letter and
// ten-letter behind it.
static void appendDigit(std::string& text, unsigned digit, int one) {
    char unit = kLetters[one], five = kLetters[one + 1], ten = kLetters[one + 2];
    if (digit == 9) {
        text += unit;
        text += ten;
    } else if (digit == 4) {
        text += unit;
        text += five;
    } else {
        if (digit >= 5) text += five;
        text.append(digit % 5, unit);
    }
}

std::string FORMATROMAN(LONG number) {
    CSK_ROUTINE("FORMATROMAN");
    if (number == 0) return "0";
    // The magnitude of -2147483648 does not fit a Long.
    uint32_t magnitude = number < 0 ? 0u - static_cast<uint32_t>(number) : static_cast<uint32_t>(number);
    uint32_t thousands = magnitude / 1000;
    // Built from the left in one buffer: sign, thousands, hundreds, tens,
    // units. Up to some two million letters for the extreme Longs.
    std::string text;
    text.reserve(1 + thousands + 12);
    if (number < 0) text += '-';
    text.append(thousands, 'M');
    appendDigit(text, magnitude / 100 % 10, 4);
    appendDigit(text, magnitude / 10 % 10, 2);
    appendDigit(text, magnitude % 10, 0);
    return text;
}

CSK_EXPORT HRESULT WINAPI esFormatRoman(LONG number, BSTR* result) {
    return TextExport(kModule, "ESFORMATROMAN", result, [&] { return FORMATROMAN(number); });
}
