// Module Misc: Unicode, the error mode, a locked workstation, the screen
// saver, the program's read-me, and text read as a Long.
#include "Misc.h"

#include <cstring>

#include "Frame.h"
#include "HostIdentification.h"
#include "ThunderRTMainFunctions.h"

static const char kModule[] = "Misc";

namespace {

uint8_t g_unicodeAsked = 0, g_unicode = 0;

// A digit of the base, or -1.
int digitIn(char c, int base) {
    int value = c >= '0' && c <= '9' ? c - '0' : c >= 'a' && c <= 'f' ? c - 'a' + 10 : c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
    return value < base ? value : -1;
}

// The C library's strtoul in base 10 as the Windows run time has it, on a
// 32-bit unsigned long: white space, one sign, digits; a value beyond 32
// bits is 0xFFFFFFFF whatever the sign, a minus sign negates in 32 bits.
uint32_t MYSTRTOUL(const char* text) {
    while (*text == ' ' || (*text >= '\t' && *text <= '\r')) ++text;
    const bool negative = *text == '-';
    if (*text == '-' || *text == '+') ++text;
    uint64_t value = 0;
    bool overflow = false;
    for (; *text >= '0' && *text <= '9'; ++text) {
        value = value * 10 + static_cast<uint64_t>(*text - '0');
        if (value > 0xFFFFFFFFu) overflow = true, value = 0xFFFFFFFFu;
    }
    if (overflow) return 0xFFFFFFFFu;
    return negative ? static_cast<uint32_t>(0u - static_cast<uint32_t>(value)) : static_cast<uint32_t>(value);
}

// Text as Visual Basic's CLng reads it, without rounding or overflow tests:
// "&H", "&O", "&B" and a bare "&" (octal) take digits of their base into
// 32 bits; everything else is read in base 10.
LONG INTERNALCLNG(const std::string& text) {
    size_t at = text.find_first_not_of(' ');
    if (at == std::string::npos) return 0;
    if (text[at] == '&' && text.size() - at >= 2) {
        const char kind = text[at + 1];
        const int base = kind == 'H' || kind == 'h' ? 16 : kind == 'B' || kind == 'b' ? 2 : 8;
        size_t digit = kind == 'H' || kind == 'h' || kind == 'O' || kind == 'o' || kind == 'B' || kind == 'b' ? at + 2 : at + 1;
        uint32_t value = 0;
        for (int d; digit < text.size() && (d = digitIn(text[digit], base)) >= 0; ++digit)
            value = value * static_cast<uint32_t>(base) + static_cast<uint32_t>(d);
        return static_cast<LONG>(value);
    }
    return static_cast<LONG>(MYSTRTOUL(text.c_str() + at));
}

}  // namespace

uint8_t WR_ESISUNICODEAVAILABLE() {
    CSK_ROUTINE("WR_ESISUNICODEAVAILABLE");
    if (!g_unicodeAsked) {
        g_unicode = GetWindowsDirectoryW(nullptr, 0) != 0;
        g_unicodeAsked = 1;
    }
    return g_unicode;
}

CSK_EXPORT HRESULT WINAPI esIsUnicodeAvailable(VARIANT_BOOL* answer) {
    return ValueExport(kModule, "ESISUNICODEAVAILABLE", answer, [&] {
        *answer = VBBOOL(WR_ESISUNICODEAVAILABLE() != 0);
        return S_OK;
    });
}

// Read by setting 0, and put back at once.
CSK_EXPORT HRESULT WINAPI esGetErrorMode(LONG* mode) {
    return ValueExport(kModule, "ESGETERRORMODE", mode, [&] {
        const UINT current = SetErrorMode(0);
        SetErrorMode(current);
        *mode = static_cast<LONG>(current);
        return S_OK;
    });
}

// An input desktop that cannot be opened is a locked one; the 9x family
// has no such lock.
CSK_EXPORT HRESULT WINAPI esIsWorkstationLocked(VARIANT_BOOL* answer) {
    return ValueExport(kModule, "ESISWORKSTATIONLOCKED", answer, [&] {
        *answer = VARIANT_FALSE;
        if (!WR_ESISHOSTWINNT()) return S_OK;
        HDESK input = OpenInputDesktop(0, FALSE, DESKTOP_SWITCHDESKTOP);
        if (!input) {
            *answer = VARIANT_TRUE;
            return S_OK;
        }
        CloseDesktop(input);
        return S_OK;
    });
}

CSK_EXPORT HRESULT WINAPI esIsScreenSaverRunning(VARIANT_BOOL* answer) {
    return ValueExport(kModule, "ESISSCREENSAVERRUNNING", answer, [&] {
        BOOL running = 0;
        SystemParametersInfoA(SPI_GETSCREENSAVERRUNNING, 0, &running, 0);
        *answer = VBBOOL(running != 0);
        return S_OK;
    });
}

// "ReadMe.TXT" beside the program's executable, opened by the shell; when it
// cannot be, a message says so unless the caller asks for silence.
CSK_EXPORT HRESULT WINAPI esOpenReadMeFile(VARIANT_BOOL silent, VARIANT_BOOL* opened) {
    return ValueExport(kModule, "ESOPENREADMEFILE", opened, [&] {
        TextBuffer program;
        GetModuleFileNameA(nullptr, program.bytes, static_cast<DWORD>(kTextLimit));
        const std::string path = program.bytes;
        const size_t slash = path.rfind('\\');
        const std::string file = (slash == std::string::npos ? std::string() : path.substr(0, slash + 1)) + "ReadMe.TXT";
        const intptr_t result =
            reinterpret_cast<intptr_t>(ShellExecuteA(nullptr, "open", file.c_str(), "", "", SW_SHOWDEFAULT));
        if (result > 32) {
            *opened = VARIANT_TRUE;
            return S_OK;
        }
        if (!FLAG(silent)) {
            // "The file cannot be opened.", in code page 1251.
            static const char kCannotOpen[] =
                "\xCD\xE5 \xF3\xE4\xE0\xB8\xF2\xF1\xFF \xEE\xF2\xEA\xF0\xFB\xF2\xFC \xF4\xE0\xE9\xEB.";
            const std::string title = WR_ESGETTHUNDERMAINTITLE();
            MessageBoxA(GetActiveWindow(), (file + "\r\n\r\n" + kCannotOpen).c_str(), TextBuffer::Argument(title),
                        MB_TASKMODAL | MB_ICONHAND);
        }
        *opened = VARIANT_FALSE;
        return S_OK;
    });
}

CSK_EXPORT HRESULT WINAPI esCLng(BSTR text, LONG* answer) {
    return ValueExport(kModule, "ESCLNG", answer, [&] {
        *answer = INTERNALCLNG(BSTRTOSTRING(text));
        return S_OK;
    });
}
