// Module Main: the library's entry. Before the entry point runs, character
// handling follows the user's default locale and the x87 unit computes with
// a 64-bit mantissa, rounding to nearest; nothing else is done at load, for
// threads or at unload.
#include <clocale>

#include "Tools.h"

namespace {

struct LoadTimeSetup {
    LoadTimeSetup() {
        std::setlocale(LC_CTYPE, "");
        _controlfp(0, 0x30300);
    }
};

const LoadTimeSetup loadTimeSetup;

}  // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD, LPVOID) { return TRUE; }
