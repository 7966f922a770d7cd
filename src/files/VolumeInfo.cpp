// Module VolumeInfo: facts of a volume, one GetVolumeInformationA each. The
// root goes to the platform as given: what it refuses is refused here.
#include "Frame.h"

static const char kModule[] = "VolumeInfo";

namespace {

// The label or the file system's name. A refusal leaves an empty, non-null
// BSTR; an empty answer (a volume without a label) a null one.
HRESULT VolumeText(const char* routine, BSTR root, BSTR* result, bool label) {
    RoutineScope scope(kModule, routine);
    if (!result) return S_FALSE;
    return Shielded([&] {
        const std::string path = BSTRTOSTRING(root);
        std::string buffer(1028, '\0');
        const BOOL ok = label ? GetVolumeInformationA(TextBuffer::Argument(path), &buffer[0], 1024, nullptr, nullptr,
                                                      nullptr, nullptr, 0)
                              : GetVolumeInformationA(TextBuffer::Argument(path), nullptr, 0, nullptr, nullptr, nullptr,
                                                      &buffer[0], 1024);
        if (!ok) HANDBACKEMPTY(result);
        else HANDBACK(result, TRIMNULLBUFFER(buffer));
        return S_OK;
    });
}

// A number: status 1 and 0 when the platform refuses.
HRESULT VolumeNumber(const char* routine, BSTR root, LONG* answer, int which) {
    return ValueExport(kModule, routine, answer, [&] {
        const std::string path = BSTRTOSTRING(root);
        DWORD number = 0;
        const BOOL ok = GetVolumeInformationA(TextBuffer::Argument(path), nullptr, 0, which == 0 ? &number : nullptr,
                                              which == 1 ? &number : nullptr, which == 2 ? &number : nullptr, nullptr, 0);
        *answer = ok ? static_cast<LONG>(number) : 0;
        return ok ? S_OK : S_FALSE;
    });
}

}  // namespace

CSK_EXPORT HRESULT WINAPI esGetVolumeName(BSTR root, BSTR* result) {
    return VolumeText("ESGETVOLUMENAME", root, result, true);
}

CSK_EXPORT HRESULT WINAPI esGetVolumeFileSystemName(BSTR root, BSTR* result) {
    return VolumeText("ESGETVOLUMEFILESYSTEMNAME", root, result, false);
}

CSK_EXPORT HRESULT WINAPI esGetVolumeSerialNumber(BSTR root, LONG* answer) {
    return VolumeNumber("ESGETVOLUMESERIALNUMBER", root, answer, 0);
}

CSK_EXPORT HRESULT WINAPI esGetVolumeMaximumComponentLength(BSTR root, LONG* answer) {
    return VolumeNumber("ESGETVOLUMEMAXIMUMCOMPONENTLENGTH", root, answer, 1);
}

CSK_EXPORT HRESULT WINAPI esGetVolumeFileSystemFlags(BSTR root, LONG* answer) {
    return VolumeNumber("ESGETVOLUMEFILESYSTEMFLAGS", root, answer, 2);
}

// "0A2B-03C4": the two halves as four upper-case hexadecimal digits each,
// read as unsigned.
CSK_EXPORT HRESULT WINAPI esFormatVolumeSerialNumber(LONG serial, BSTR* result) {
    return TextExport(kModule, "ESFORMATVOLUMESERIALNUMBER", result, [&] {
        static const char kDigits[] = "0123456789ABCDEF";
        const uint32_t number = static_cast<uint32_t>(serial);
        std::string text(9, '-');
        for (int i = 0; i < 4; ++i) {
            text[3 - i] = kDigits[(number >> (16 + 4 * i)) & 0xF];
            text[8 - i] = kDigits[(number >> (4 * i)) & 0xF];
        }
        return text;
    });
}
