// Module DateTimeMath: comparing moments, day numbers, UTC and local time.
#include "DateTimeMath.h"

#include <cmath>

#include "Frame.h"

static const char kModule[] = "DateTimeMath";

// 100-nanosecond intervals in a day.
static const double kTicksPerDay = 864000000000.0;

// Status 1 in the day-number family: the date lies before day 1.
static const HRESULT kBeforeDayOne = S_FALSE;

// The platform's count for a record, or 0 when it refuses the record: a
// refused record is the earliest moment of all.
static FILETIME fileTimeOrZero(const SYSTEMTIME* record) {
    FILETIME t = {0, 0};
    SystemTimeToFileTime(record, &t);
    return t;
}

static double ticksAsDouble(const FILETIME& t) {
    return static_cast<double>(static_cast<int64_t>((static_cast<uint64_t>(t.dwHighDateTime) << 32) | t.dwLowDateTime));
}

// 0 equal, 1 the first is later, 2 the second is later.
static LONG comparisonCode(int order) { return order == 0 ? 0 : order > 0 ? 1 : 2; }

static LONG WR_ESCOMPARESYSTEMTIME(const SYSTEMTIME* first, const SYSTEMTIME* second) {
    CSK_ROUTINE("WR_ESCOMPARESYSTEMTIME");
    // In order of significance; wDayOfWeek takes no part.
    const WORD a[7] = {first->wYear,   first->wMonth,  first->wDay,         first->wHour,
                       first->wMinute, first->wSecond, first->wMilliseconds};
    const WORD b[7] = {second->wYear,   second->wMonth,  second->wDay,         second->wHour,
                       second->wMinute, second->wSecond, second->wMilliseconds};
    for (int i = 0; i < 7; ++i)
        if (a[i] != b[i]) return comparisonCode(a[i] > b[i] ? 1 : -1);
    return 0;
}

static LONG WR_ESCOMPARESYSTEMTIMEEX(const SYSTEMTIME* first, const SYSTEMTIME* second) {
    CSK_ROUTINE("WR_ESCOMPARESYSTEMTIMEEX");
    FILETIME a = fileTimeOrZero(first);
    FILETIME b = fileTimeOrZero(second);
    return comparisonCode(CompareFileTime(&a, &b));
}

// The day number of the record's date, its time of day left out; status 1
// with day 0 for a date before 27 July 2000 or one the platform refuses.
static HRESULT WR_ESGETDAYNUMEX(const SYSTEMTIME* date, LONG* dayNumber) {
    CSK_ROUTINE("WR_ESGETDAYNUMEX");
    SYSTEMTIME origin = {2000, 7, 0, 27, 0, 0, 0, 0};
    SYSTEMTIME midnight = {date->wYear, date->wMonth, 0, date->wDay, 0, 0, 0, 0};
    double day = ticksAsDouble(fileTimeOrZero(&midnight));
    double base = ticksAsDouble(fileTimeOrZero(&origin));
    if (base > day) {
        *dayNumber = 0;
        return kBeforeDayOne;
    }
    // Both counts are whole midnights, so the quotient is a whole number.
    *dayNumber = static_cast<LONG>(std::lround(1.0 + (day - base) / kTicksPerDay));
    return S_OK;
}

uint8_t WR_ESSYSTEMTIMETOLOCALSYSTEMTIME(const SYSTEMTIME* in, SYSTEMTIME* out) {
    CSK_ROUTINE("WR_ESSYSTEMTIMETOLOCALSYSTEMTIME");
    FILETIME utc = {0, 0}, local = {0, 0};
    if (!SystemTimeToFileTime(in, &utc)) return 0;
    if (!FileTimeToLocalFileTime(&utc, &local)) return 0;
    return FileTimeToSystemTime(&local, out) ? 1 : 0;
}

uint8_t WR_ESLOCALSYSTEMTIMETOSYSTEMTIME(const SYSTEMTIME* in, SYSTEMTIME* out) {
    CSK_ROUTINE("WR_ESLOCALSYSTEMTIMETOSYSTEMTIME");
    FILETIME local = {0, 0}, utc = {0, 0};
    if (!SystemTimeToFileTime(in, &local)) return 0;
    if (!LocalFileTimeToFileTime(&local, &utc)) return 0;
    return FileTimeToSystemTime(&utc, out) ? 1 : 0;
}

typedef uint8_t (*RecordShift)(const SYSTEMTIME*, SYSTEMTIME*);

// An automation date through one of the record workers. The answer is
// written only when every step succeeded.
static bool shiftDate(DATE date, RecordShift shift, DATE* answer) {
    SYSTEMTIME record = {0, 0, 0, 0, 0, 0, 0, 0};
    DATE shifted = 0.0;
    if (!VariantTimeToSystemTime(date, &record)) return false;
    if (!shift(&record, &record)) return false;
    if (!SystemTimeToVariantTime(&record, &shifted)) return false;
    *answer = shifted;
    return true;
}

CSK_EXPORT HRESULT WINAPI esCompareSystemTime(SYSTEMTIME* first, SYSTEMTIME* second, LONG* code) {
    return ValueExport(kModule, "ESCOMPARESYSTEMTIME", code, [&] {
        if (!first || !second) return E_INVALIDARG;
        *code = WR_ESCOMPARESYSTEMTIME(first, second);
        return S_OK;
    });
}

CSK_EXPORT HRESULT WINAPI esCompareSystemTimeEx(SYSTEMTIME* first, SYSTEMTIME* second, LONG* code) {
    return ValueExport(kModule, "ESCOMPARESYSTEMTIMEEX", code, [&] {
        if (!first || !second) return E_INVALIDARG;
        *code = WR_ESCOMPARESYSTEMTIMEEX(first, second);
        return S_OK;
    });
}

CSK_EXPORT HRESULT WINAPI esGetDayNumEx(SYSTEMTIME* date, LONG* dayNumber) {
    return ValueExport(kModule, "ESGETDAYNUMEX", dayNumber, [&] {
        if (!date) return E_INVALIDARG;
        return WR_ESGETDAYNUMEX(date, dayNumber);
    });
}

CSK_EXPORT HRESULT WINAPI esGetDayNumEx2(DATE date, LONG* dayNumber) {
    return ValueExport(kModule, "ESGETDAYNUMEX2", dayNumber, [&] {
        // A date the platform cannot convert leaves the record all zero,
        // which the calendar refuses: day 0, status 1.
        SYSTEMTIME record = {0, 0, 0, 0, 0, 0, 0, 0};
        VariantTimeToSystemTime(date, &record);
        return WR_ESGETDAYNUMEX(&record, dayNumber);
    });
}

CSK_EXPORT HRESULT WINAPI esGetDayNum(LONG* dayNumber) {
    return ValueExport(kModule, "ESGETDAYNUM", dayNumber, [&] {
        SYSTEMTIME today = {0, 0, 0, 0, 0, 0, 0, 0};
        GetLocalTime(&today);
        return WR_ESGETDAYNUMEX(&today, dayNumber);
    });
}

CSK_EXPORT HRESULT WINAPI esSystemTimeToLocalSystemTime(SYSTEMTIME* utc, SYSTEMTIME* local, VARIANT_BOOL* done) {
    return ValueExport(kModule, "ESSYSTEMTIMETOLOCALSYSTEMTIME", done, [&] {
        if (!utc || !local) return E_INVALIDARG;
        *done = VBBOOL(WR_ESSYSTEMTIMETOLOCALSYSTEMTIME(utc, local) != 0);
        return S_OK;
    });
}

CSK_EXPORT HRESULT WINAPI esLocalSystemTimeToSystemTime(SYSTEMTIME* local, SYSTEMTIME* utc, VARIANT_BOOL* done) {
    return ValueExport(kModule, "ESLOCALSYSTEMTIMETOSYSTEMTIME", done, [&] {
        if (!local || !utc) return E_INVALIDARG;
        *done = VBBOOL(WR_ESLOCALSYSTEMTIMETOSYSTEMTIME(local, utc) != 0);
        return S_OK;
    });
}

CSK_EXPORT HRESULT WINAPI esSystemTimeToLocalTime(DATE utc, DATE* local, VARIANT_BOOL* done) {
    return ValueExport(kModule, "ESSYSTEMTIMETOLOCALTIME", done, [&] {
        if (!local) return E_INVALIDARG;
        *done = VBBOOL(shiftDate(utc, WR_ESSYSTEMTIMETOLOCALSYSTEMTIME, local));
        return S_OK;
    });
}

CSK_EXPORT HRESULT WINAPI esLocalTimeToSystemTime(DATE local, DATE* utc, VARIANT_BOOL* done) {
    return ValueExport(kModule, "ESLOCALTIMETOSYSTEMTIME", done, [&] {
        if (!utc) return E_INVALIDARG;
        *done = VBBOOL(shiftDate(local, WR_ESLOCALSYSTEMTIMETOSYSTEMTIME, utc));
        return S_OK;
    });
}

CSK_EXPORT HRESULT WINAPI esSysNow(DATE* now) {
    return ValueExport(kModule, "ESSYSNOW", now, [&] {
        SYSTEMTIME record = {0, 0, 0, 0, 0, 0, 0, 0};
        DATE moment = 0.0;
        GetSystemTime(&record);
        *now = SystemTimeToVariantTime(&record, &moment) ? moment : 0.0;
        return S_OK;
    });
}
