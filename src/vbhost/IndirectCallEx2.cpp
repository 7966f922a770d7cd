// Module IndirectCallEx2: calls a function whose address the caller holds
// in a Long, with up to four 32-bit arguments, under the exports' own
// convention (the callee removes its arguments). Address 0 calls nothing.
// The name tells the shape: one "4" per argument, then "_r4" for a 32-bit
// result or "_r0" for none. The target's faults are the caller's.
#include "Frame.h"

static const char kModule[] = "IndirectCallEx2";

namespace {

template <class... Args>
LONG CALLTARGET(LONG address, Args... args) {
    return HANDLEFROMLONG<LONG(WINAPI*)(Args...)>(address)(args...);
}

template <class... Args>
void CALLTARGETNORESULT(LONG address, Args... args) {
    HANDLEFROMLONG<void(WINAPI*)(Args...)>(address)(args...);
}

}  // namespace

#define CSK_CALL_R4(name, ROUTINE, parameters, arguments) \
    CSK_EXPORT LONG WINAPI name parameters {                \
        RoutineScope scope(kModule, ROUTINE);               \
        return address ? CALLTARGET arguments : 0;          \
    }
#define CSK_CALL_R0(name, ROUTINE, parameters, arguments) \
    CSK_EXPORT void WINAPI name parameters {                \
        RoutineScope scope(kModule, ROUTINE);               \
        if (address) CALLTARGETNORESULT arguments;          \
    }

CSK_CALL_R4(esCallFunctionEx_i_r4, "ESCALLFUNCTIONEX_I_R4", (LONG address), (address))
CSK_CALL_R4(esCallFunctionEx_i4_r4, "ESCALLFUNCTIONEX_I4_R4", (LONG address, LONG a), (address, a))
CSK_CALL_R4(esCallFunctionEx_i44_r4, "ESCALLFUNCTIONEX_I44_R4", (LONG address, LONG a, LONG b), (address, a, b))
CSK_CALL_R4(esCallFunctionEx_i444_r4, "ESCALLFUNCTIONEX_I444_R4", (LONG address, LONG a, LONG b, LONG c),
            (address, a, b, c))
CSK_CALL_R4(esCallFunctionEx_i4444_r4, "ESCALLFUNCTIONEX_I4444_R4", (LONG address, LONG a, LONG b, LONG c, LONG d),
            (address, a, b, c, d))
CSK_CALL_R0(esCallFunctionEx_i_r0, "ESCALLFUNCTIONEX_I_R0", (LONG address), (address))
CSK_CALL_R0(esCallFunctionEx_i4_r0, "ESCALLFUNCTIONEX_I4_R0", (LONG address, LONG a), (address, a))
CSK_CALL_R0(esCallFunctionEx_i44_r0, "ESCALLFUNCTIONEX_I44_R0", (LONG address, LONG a, LONG b), (address, a, b))
CSK_CALL_R0(esCallFunctionEx_i444_r0, "ESCALLFUNCTIONEX_I444_R0", (LONG address, LONG a, LONG b, LONG c),
            (address, a, b, c))
CSK_CALL_R0(esCallFunctionEx_i4444_r0, "ESCALLFUNCTIONEX_I4444_R0", (LONG address, LONG a, LONG b, LONG c, LONG d),
            (address, a, b, c, d))

#undef CSK_CALL_R4
#undef CSK_CALL_R0
