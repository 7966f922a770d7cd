// Module Priority: the process's priority class. The platform's refusals
// are not reported.
#include "Frame.h"

static const char kModule[] = "Priority";

// Below normal where the host knows that class, else idle.
CSK_EXPORT HRESULT WINAPI esSetBackgroundProcessPriority() {
    CSK_ROUTINE("ESSETBACKGROUNDPROCESSPRIORITY");
    if (!SetPriorityClass(GetCurrentProcess(), BELOW_NORMAL_PRIORITY_CLASS))
        SetPriorityClass(GetCurrentProcess(), IDLE_PRIORITY_CLASS);
    return S_OK;
}

CSK_EXPORT HRESULT WINAPI esSetIdleProcessPriority() {
    CSK_ROUTINE("ESSETIDLEPROCESSPRIORITY");
    SetPriorityClass(GetCurrentProcess(), IDLE_PRIORITY_CLASS);
    return S_OK;
}

// The normal class, not a raised one.
CSK_EXPORT HRESULT WINAPI esSetForegroundProcessPriority() {
    CSK_ROUTINE("ESSETFOREGROUNDPROCESSPRIORITY");
    SetPriorityClass(GetCurrentProcess(), NORMAL_PRIORITY_CLASS);
    return S_OK;
}
