// Module FormatFunctions_Roman: a Long in Roman numerals, with no upper
// limit: the thousands are a run of "M".
#pragma once

#include <string>

#include "Platform.h"

// "0" for zero; a negative number gets a leading "-".
std::string FORMATROMAN(LONG number);
