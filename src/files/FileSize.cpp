// Module FileSize: the size of a file from its directory entry, so that a
// file held open by others is measured too.
#include "Frame.h"
#include "IsExist.h"
#include "PathAndFileNameParse.h"

static const char kModule[] = "FileSize";

namespace {

// False for a wildcard, a missing item or a drive root (which the search
// refuses); a folder answers what its directory entry holds.
uint8_t MYGETFILESIZE(std::string path, ULARGE_INTEGER* size) {
    CSK_ROUTINE("MYGETFILESIZE");
    size->QuadPart = 0;
    if (path.find_first_of("*?") != std::string::npos) return 0;
    path = WR_ESREMOVEBACKSLASH(std::move(path));
    SetLastError(0);
    FindSearch search(path);
    if (!search.found()) return 0;
    size->u.LowPart = search.record.nFileSizeLow;
    size->u.HighPart = search.record.nFileSizeHigh;
    return 1;
}

}  // namespace

// A Long cannot hold 2 GiB or more: those sizes give 0x7FFFFFFF.
CSK_EXPORT HRESULT WINAPI esGetFileSize(BSTR path, LONG* answer) {
    return ValueExport(kModule, "ESGETFILESIZE", answer, [&] {
        ULARGE_INTEGER size;
        if (!MYGETFILESIZE(BSTRTOSTRING(path), &size)) *answer = 0;
        else if (size.u.HighPart != 0 || size.u.LowPart > 0x7FFFFFFFu) *answer = 0x7FFFFFFF;
        else *answer = static_cast<LONG>(size.u.LowPart);
        return S_OK;
    });
}

CSK_EXPORT HRESULT WINAPI esGetFileSizeEx(BSTR path, double* answer) {
    return ValueExport(kModule, "ESGETFILESIZEEX", answer, [&] {
        ULARGE_INTEGER size;
        *answer = MYGETFILESIZE(BSTRTOSTRING(path), &size) ? static_cast<double>(static_cast<LONGLONG>(size.QuadPart))
                                                           : 0.0;
        return S_OK;
    });
}
