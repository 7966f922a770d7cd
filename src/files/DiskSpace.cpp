// Module DiskSpace: the size, free and available space of a disk, in bytes,
// as Doubles; -1.0 when the platform cannot say.
#include "Frame.h"
#include "FunctionsSupport.h"

static const char kModule[] = "DiskSpace";

namespace {

// GetDiskFreeSpaceExA where the host has it and it answers; else the
// figures of GetDiskFreeSpaceA, 32-bit products as Windows 95 computed them,
// with available equal to free. On failure all three are 0.0.
uint8_t GETDISKSPACEEX(const std::string& path, double* total, double* free, double* available) {
    CSK_ROUTINE("GETDISKSPACEEX");
    const char* root = TextBuffer::Argument(path);
    ULARGE_INTEGER availableBytes = {}, totalBytes = {}, freeBytes = {};
    if (__GETDISKFREESPACEEXA(root, &availableBytes, &totalBytes, &freeBytes) && !g_missingEntry) {
        *total = static_cast<double>(totalBytes.QuadPart);
        *free = static_cast<double>(freeBytes.QuadPart);
        *available = static_cast<double>(availableBytes.QuadPart);
        return 1;
    }
    DWORD sectorsPerCluster = 0, bytesPerSector = 0, freeClusters = 0, totalClusters = 0;
    if (!GetDiskFreeSpaceA(root, &sectorsPerCluster, &bytesPerSector, &freeClusters, &totalClusters)) {
        *total = *free = *available = 0.0;
        return 0;
    }
    const uint32_t cluster = static_cast<uint32_t>(bytesPerSector) * static_cast<uint32_t>(sectorsPerCluster);
    *total = static_cast<double>(cluster * static_cast<uint32_t>(totalClusters));
    *free = *available = static_cast<double>(cluster * static_cast<uint32_t>(freeClusters));
    return 1;
}

// One figure: 0 total, 1 free, 2 available.
HRESULT DiskFigure(const char* routine, BSTR path, double* answer, int which) {
    return ValueExport(kModule, routine, answer, [&] {
        double figures[3];
        *answer = GETDISKSPACEEX(BSTRTOSTRING(path), &figures[0], &figures[1], &figures[2]) ? figures[which] : -1.0;
        return S_OK;
    });
}

}  // namespace

CSK_EXPORT HRESULT WINAPI esGetDiskSpaceTotal(BSTR path, double* answer) {
    return DiskFigure("ESGETDISKSPACETOTAL", path, answer, 0);
}

CSK_EXPORT HRESULT WINAPI esGetDiskSpaceFree(BSTR path, double* answer) {
    return DiskFigure("ESGETDISKSPACEFREE", path, answer, 1);
}

CSK_EXPORT HRESULT WINAPI esGetDiskSpaceAvailable(BSTR path, double* answer) {
    return DiskFigure("ESGETDISKSPACEAVAILABLE", path, answer, 2);
}

// Each of the three figures may be left out; whether the query worked is
// the answer.
CSK_EXPORT HRESULT WINAPI esGetDiskSpace(BSTR path, double* total, double* free, double* available,
                                         VARIANT_BOOL* answer) {
    return ValueExport(kModule, "ESGETDISKSPACE", answer, [&] {
        double figures[3];
        const uint8_t ok = GETDISKSPACEEX(BSTRTOSTRING(path), &figures[0], &figures[1], &figures[2]);
        if (total) *total = ok ? figures[0] : -1.0;
        if (free) *free = ok ? figures[1] : -1.0;
        if (available) *available = ok ? figures[2] : -1.0;
        *answer = VBBOOL(ok);
        return S_OK;
    });
}
