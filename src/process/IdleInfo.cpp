// Module IdleInfo: when the user last touched the machine, on the tick
// count's clock, as Doubles so that the unsigned tick never reads negative.
#include "Frame.h"
#include "FunctionsSupport.h"

static const char kModule[] = "IdleInfo";

// Status 1, with the current tick, where the host cannot tell.
CSK_EXPORT HRESULT WINAPI esGetLastInputTime(double* tick) {
    return ValueExport(kModule, "ESGETLASTINPUTTIME", tick, [&] {
        LASTINPUTINFO info = {};
        info.cbSize = sizeof info;
        if (__GETLASTINPUTINFO(&info) && !g_missingEntry) {
            *tick = static_cast<double>(info.dwTime);
            return S_OK;
        }
        *tick = static_cast<double>(GetTickCount());
        return S_FALSE;
    });
}

// A tick count that wrapped since the last input gives 0.0, not a wrong
// large interval.
CSK_EXPORT HRESULT WINAPI esGetIdleTimeInterval(double* interval) {
    return ValueExport(kModule, "ESGETIDLETIMEINTERVAL", interval, [&] {
        double last;
        if (esGetLastInputTime(&last) != S_OK) {
            *interval = 0.0;
            return S_FALSE;
        }
        const double idle = static_cast<double>(GetTickCount()) - last;
        *interval = idle < 0.0 ? 0.0 : idle;
        return S_OK;
    });
}
