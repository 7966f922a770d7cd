// Module WindowManipulation: a window brought to the foreground across
// threads, restored from its icon, or asked to close.
#include "Frame.h"

static const char kModule[] = "WindowManipulation";

// The calling thread borrows the input state of the foreground window's
// thread and of the target's, so that the platform lets it hand over the
// foreground; both attachments come off in the order they went on.
CSK_EXPORT HRESULT WINAPI esSetForegroundWindowEx(LONG window, VARIANT_BOOL* done) {
    return ValueExport(kModule, "ESSETFOREGROUNDWINDOWEX", done, [&] {
        HWND target = HANDLEFROMLONG<HWND>(window);
        if (!IsWindow(target)) {
            *done = VARIANT_FALSE;
            return S_OK;
        }
        const DWORD self = GetCurrentThreadId();
        const DWORD foreground = GetWindowThreadProcessId(GetForegroundWindow(), nullptr);
        if (foreground != self) AttachThreadInput(self, foreground, TRUE);
        const DWORD owner = GetWindowThreadProcessId(target, nullptr);
        if (owner != self) AttachThreadInput(self, owner, TRUE);
        const BOOL result = SetForegroundWindow(target);
        if (foreground != self) AttachThreadInput(self, foreground, FALSE);
        if (owner != self) AttachThreadInput(self, owner, FALSE);
        *done = VBBOOL(result != 0);
        return S_OK;
    });
}

CSK_EXPORT HRESULT WINAPI esRestoreWindow(LONG window) {
    CSK_ROUTINE("ESRESTOREWINDOW");
    HWND target = HANDLEFROMLONG<HWND>(window);
    if (!IsWindow(target)) return S_FALSE;
    VARIANT_BOOL done;
    esSetForegroundWindowEx(window, &done);
    OpenIcon(target);
    return S_OK;
}

// Posted, not sent: the form closes when its thread next reads its queue.
CSK_EXPORT HRESULT WINAPI esUnloadForm(LONG window) {
    CSK_ROUTINE("ESUNLOADFORM");
    HWND target = HANDLEFROMLONG<HWND>(window);
    if (!IsWindow(target)) return S_FALSE;
    PostMessageA(target, 0x10 /* WM_CLOSE */, 0, 0);
    return S_OK;
}
