// Module VBStringFunctions: REPLACE and SPLIT on working strings.
#include "VBStringFunctions.h"

#include "Tools.h"

static const char kModule[] = "VBStringFunctions";

std::string REPLACE(std::string text, const std::string& find, const std::string& replacement, long start,
                    long count, uint8_t binary) {
    CSK_ROUTINE("REPLACE");
    if (count == 0) return text;
    if (start > 1) text = Mid(text, start);
    // Without the binary flag both sides are compared in upper case; the
    // upper-case copy of the text is kept in step with each replacement.
    const std::string upperFind = binary ? std::string() : UCase(find);
    const std::string upperReplacement = binary ? std::string() : UCase(replacement);
    std::string upperText = binary ? std::string() : UCase(text);
    long position = 1;
    while (true) {
        long p = binary ? Instr(position, text, find) : Instr(position, upperText, upperFind);
        if (p == 0) return text;
        text.replace(static_cast<size_t>(p - 1), find.size(), replacement);
        if (!binary) upperText.replace(static_cast<size_t>(p - 1), find.size(), upperReplacement);
        position = p + static_cast<long>(replacement.size());
        if (count > 0 && --count == 0) return text;
    }
}

void SPLIT(const std::string& text, const std::string& delimiter, StringArray& result) {
    CSK_ROUTINE("SPLIT");
    result.clear();
    if (text.empty() || delimiter.empty() || Instr(1, text, delimiter) == 0) {
        result.push_back(text);
        return;
    }
    long start = 1;
    long p;
    do {
        p = Instr(start, text, delimiter);
        result.push_back(p == 0 ? Mid(text, start, -1) : Mid(text, start, p - start));
        start = p + static_cast<long>(delimiter.size());
    } while (p > 0);
}
