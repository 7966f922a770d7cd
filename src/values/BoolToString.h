// Module BoolToString: the library's one rule for Booleans as text, which
// the registry layer also uses to store and read them.
#pragma once

#include <cstdint>
#include <string>

// 1 if the text, trimmed of spaces, tabs, CRs and LFs at both ends and
// upper-cased, is "TRUE" or "1"; 0 for anything else, the empty text
// included. No number is parsed.
uint8_t WR_ESSTRINGTOBOOL(std::string text);

// "True" for a nonzero flag, "False" for 0.
std::string WR_ESBOOLTOSTRING(uint8_t value);
