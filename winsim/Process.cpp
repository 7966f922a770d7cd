// Process-level pieces: the end of the process and the x87 control word
// that msvcrt's _controlfp sets.
#include <cstdio>
#include <cstdlib>
#include <unistd.h>

#include "winsim.h"

extern "C" {

void WINAPI ExitProcess(UINT exitCode) {
    std::fflush(nullptr);
    _exit(static_cast<int>(exitCode));
}

// Only the precision and rounding fields are modelled; they live in the same
// bits of the x87 control word as in msvcrt's encoding, shifted: precision
// at bits 8-9 (0 single, 2 double, 3 extended), rounding at bits 10-11.
unsigned int _controlfp(unsigned int value, unsigned int mask) {
    unsigned short word;
    __asm__ volatile("fnstcw %0" : "=m"(word));
    if (mask & _MCW_PC) {
        static const unsigned short precision[4] = {3, 2, 0, 3};  // _PC_64, _PC_53, _PC_24
        word = static_cast<unsigned short>((word & ~0x0300) | (precision[(value >> 16) & 3] << 8));
    }
    if (mask & _MCW_RC) {
        // msvcrt: 0 nearest, 0x100 down, 0x200 up, 0x300 chop; x87 the same order.
        word = static_cast<unsigned short>((word & ~0x0C00) | (((value >> 8) & 3) << 10));
    }
    __asm__ volatile("fldcw %0" : : "m"(word));
    unsigned int pc = (word >> 8) & 3;
    unsigned int result = (pc == 3 ? _PC_64 : pc == 2 ? 0x00010000u : 0x00020000u) | (((word >> 10) & 3u) << 8);
    return result;
}

}  // extern "C"
