// Module FormatFunctions_DateTime: the locale's date and time text.
#include "FormatFunctions_DateTime.h"

#include "Frame.h"

static const char kModule[] = "FormatFunctions_DateTime";

typedef int(WINAPI* PictureFiller)(LCID, DWORD, const SYSTEMTIME*, LPCSTR, LPSTR, int);

// Asks the platform for the size, then fills a buffer with room to spare:
// count + 4 NULs, of which count + 2 are offered. Empty when either call
// fails.
static std::string fillPicture(PictureFiller filler, DWORD flags, const SYSTEMTIME& moment) {
    int count = filler(LOCALE_USER_DEFAULT, flags, &moment, nullptr, nullptr, 0);
    if (count == 0) return std::string();
    std::string buffer(static_cast<size_t>(count) + 4, '\0');
    if (filler(LOCALE_USER_DEFAULT, flags, &moment, nullptr, &buffer[0], count + 2) == 0) return std::string();
    TRIMNULLBUFFER(buffer);
    return buffer;  // moved out, not copied
}

std::string WR_ESFORMATDATE(SYSTEMTIME date, uint8_t longForm, uint8_t noUserOverride) {
    CSK_ROUTINE("WR_ESFORMATDATE");
    DWORD flags = longForm ? DATE_LONGDATE : DATE_SHORTDATE;
    if (noUserOverride) flags |= LOCALE_NOUSEROVERRIDE;
    return fillPicture(GetDateFormatA, flags, date);
}

std::string WR_ESFORMATTIME(SYSTEMTIME time, uint8_t noSeconds, uint8_t noUserOverride) {
    CSK_ROUTINE("WR_ESFORMATTIME");
    DWORD flags = noSeconds ? TIME_NOSECONDS : 0;
    if (noUserOverride) flags |= LOCALE_NOUSEROVERRIDE;
    return fillPicture(GetTimeFormatA, flags, time);
}

// The frame of the record forms: the answer pointer first (status 1), then
// the record (E_INVALIDARG), then the text.
template <class Work>
static HRESULT recordTextExport(const char* routine, const SYSTEMTIME* record, BSTR* result, Work&& work) {
    RoutineScope scope(kModule, routine);
    if (!result) return S_FALSE;
    if (!record) return E_INVALIDARG;
    return Shielded([&] {
        HANDBACK(result, work());
        return S_OK;
    });
}

// An automation date as a record. One that cannot be converted stays all
// zero, and the platform makes of that what it does.
static SYSTEMTIME recordOf(DATE date) {
    SYSTEMTIME record = {0, 0, 0, 0, 0, 0, 0, 0};
    VariantTimeToSystemTime(date, &record);
    return record;
}

CSK_EXPORT HRESULT WINAPI esFormatDate(SYSTEMTIME* date, VARIANT_BOOL longForm, VARIANT_BOOL noUserOverride,
                                       BSTR* result) {
    return recordTextExport("ESFORMATDATE", date, result,
                            [&] { return WR_ESFORMATDATE(*date, FLAG(longForm), FLAG(noUserOverride)); });
}

CSK_EXPORT HRESULT WINAPI esFormatTime(SYSTEMTIME* time, VARIANT_BOOL noSeconds, VARIANT_BOOL noUserOverride,
                                       BSTR* result) {
    return recordTextExport("ESFORMATTIME", time, result,
                            [&] { return WR_ESFORMATTIME(*time, FLAG(noSeconds), FLAG(noUserOverride)); });
}

CSK_EXPORT HRESULT WINAPI esFormatDate2(DATE date, VARIANT_BOOL longForm, VARIANT_BOOL noUserOverride, BSTR* result) {
    return TextExport(kModule, "ESFORMATDATE2", result,
                      [&] { return WR_ESFORMATDATE(recordOf(date), FLAG(longForm), FLAG(noUserOverride)); });
}

CSK_EXPORT HRESULT WINAPI esFormatTime2(DATE time, VARIANT_BOOL noSeconds, VARIANT_BOOL noUserOverride, BSTR* result) {
    return TextExport(kModule, "ESFORMATTIME2", result,
                      [&] { return WR_ESFORMATTIME(recordOf(time), FLAG(noSeconds), FLAG(noUserOverride)); });
}
