// Module FormatFunctions_DateTime: a moment as the user's locale writes its
// date or its time. Every picture, name and separator is the platform's.
#pragma once

#include <cstdint>
#include <string>

#include "Platform.h"

// The date in the short or the long form; empty when the platform declines.
std::string WR_ESFORMATDATE(SYSTEMTIME date, uint8_t longForm, uint8_t noUserOverride);

// The time of day, with or without seconds; empty when the platform declines.
std::string WR_ESFORMATTIME(SYSTEMTIME time, uint8_t noSeconds, uint8_t noUserOverride);
