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
