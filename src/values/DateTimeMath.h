// Module DateTimeMath: comparing moments, the library's day number (day 1
// is 27 July 2000) and moving a moment between UTC and local time, for
// SYSTEMTIME records and automation dates. Calendar and zone are the
// platform's.
#pragma once

#include <cstdint>

#include "Platform.h"

// UTC record to local record through FILETIME; 1 on success, 0 when a step
// of the chain refuses. out is written only by the last step, and may be in.
uint8_t WR_ESSYSTEMTIMETOLOCALSYSTEMTIME(const SYSTEMTIME* in, SYSTEMTIME* out);

// Local record to UTC record, the same way.
uint8_t WR_ESLOCALSYSTEMTIMETOSYSTEMTIME(const SYSTEMTIME* in, SYSTEMTIME* out);
