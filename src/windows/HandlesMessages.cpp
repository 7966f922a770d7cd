// Module HandlesMessages: the number of the message that the shell
// broadcasts when the taskbar is made again, registered once.
#include "Frame.h"

static const char kModule[] = "HandlesMessages";

namespace {

UINT g_taskbarCreated = 0;
uint8_t g_taskbarCreatedKnown = 0;

}  // namespace

CSK_EXPORT HRESULT WINAPI esGet_WM_TASKBAR_CREATED(LONG* message) {
    return ValueExport(kModule, "ESGET_WM_TASKBAR_CREATED", message, [&] {
        if (g_taskbarCreatedKnown != 1) {
            g_taskbarCreated = RegisterWindowMessageA("TaskbarCreated");
            g_taskbarCreatedKnown = 1;
        }
        *message = static_cast<LONG>(g_taskbarCreated);
        return S_OK;
    });
}
