// Module ShellVersion: the version of the system shell, Shell32.DLL, asked
// once in the life of the process.
#include "Frame.h"
#include "FunctionsSupport.h"

static const char kModule[] = "ShellVersion";

namespace {

DLLVERSIONINFO g_dvi;
uint8_t g_dviRead = 0;

// One attempt, whatever its outcome: a shell without DllGetVersion reads as
// version 0.0.0, and one that refuses leaves the record as it left it.
void INITDVI() {
    CSK_ROUTINE("INITDVI");
    if (g_dviRead) return;
    g_dvi.cbSize = sizeof(DLLVERSIONINFO);
    __DLLGETVERSION_SHELL32_DLL(&g_dvi);
    if (g_missingEntry) g_dvi.dwMajorVersion = g_dvi.dwMinorVersion = g_dvi.dwBuildNumber = g_dvi.dwPlatformID = 0;
    g_dviRead = 1;
}

template <class Field>
HRESULT ShellField(const char* routine, LONG* answer, Field field) {
    return ValueExport(kModule, routine, answer, [&] {
        INITDVI();
        *answer = static_cast<LONG>(field());
        return S_OK;
    });
}

}  // namespace

CSK_EXPORT HRESULT WINAPI esShellVersionMajor(LONG* answer) {
    return ShellField("ESSHELLVERSIONMAJOR", answer, [] { return g_dvi.dwMajorVersion; });
}

CSK_EXPORT HRESULT WINAPI esShellVersionMinor(LONG* answer) {
    return ShellField("ESSHELLVERSIONMINOR", answer, [] { return g_dvi.dwMinorVersion; });
}

CSK_EXPORT HRESULT WINAPI esShellVersionRevision(LONG* answer) {
    return ShellField("ESSHELLVERSIONREVISION", answer, [] { return g_dvi.dwBuildNumber; });
}
