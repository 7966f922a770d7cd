// Test-only controls of the stand-in: make a platform function refuse, and
// count how often the library called one. Tests that use these only build
// natively; the real platform offers no such switch.
#pragma once

namespace winsim {

// The next `times` calls of the stand-in named `function` fail the way the
// platform function reports failure (0, FALSE, an error HRESULT, ...).
void failNext(const char* function, int times = 1);

// Calls of the stand-in named `function` since the last reset().
int calls(const char* function);

// Clears every pending failure and every count.
void reset();

// Used by the stand-ins themselves: counts the call and tells whether it
// should fail.
bool refuse(const char* function);

}  // namespace winsim

namespace winsim {

// The zone that local time follows: minutes that local time is ahead of
// UTC (330 for UTC+5:30), without daylight saving. 0 until set.
void setTimeZone(int minutesAheadOfUtc);

// Stops the clock at a FILETIME count (UTC); 0 lets it run again.
void setClock(unsigned long long fileTime);

}  // namespace winsim
