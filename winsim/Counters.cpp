// The performance counter (100 ns units, as most Windows hosts report) and
// the millisecond tick count, both from the monotonic clock.
#include <ctime>

#include "winsim.h"
#include "winsim_control.h"

namespace {

uint64_t monotonicNanoseconds() {
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<uint64_t>(now.tv_sec) * 1000000000u + static_cast<uint64_t>(now.tv_nsec);
}

// A tick count stopped by a test (0: running), and the last input.
DWORD g_frozenTick = 0, g_lastInput = 0;

}  // namespace

namespace winsim {

void setTicks(DWORD tick, DWORD lastInput) { g_frozenTick = tick, g_lastInput = lastInput; }
void resetTicks() { g_frozenTick = g_lastInput = 0; }
DWORD lastInputTick() { return g_lastInput; }

}  // namespace winsim

extern "C" {

BOOL WINAPI QueryPerformanceCounter(LARGE_INTEGER* counter) {
    if (!counter || winsim::refuse("QueryPerformanceCounter")) return FALSE;
    counter->QuadPart = static_cast<LONGLONG>(monotonicNanoseconds() / 100);
    return TRUE;
}

BOOL WINAPI QueryPerformanceFrequency(LARGE_INTEGER* frequency) {
    if (!frequency || winsim::refuse("QueryPerformanceFrequency")) return FALSE;
    frequency->QuadPart = 10000000;
    return TRUE;
}

DWORD WINAPI GetTickCount(void) {
    winsim::refuse("GetTickCount");
    return g_frozenTick ? g_frozenTick : static_cast<DWORD>(monotonicNanoseconds() / 1000000u);
}

}  // extern "C"
