// Dates and times as KERNEL32 and OLEAUT32 keep them: the FILETIME
// calendar (proleptic Gregorian, 1601 to 30827), local time under one fixed
// zone that a test sets, a clock a test can stop, and the automation date
// with its own range (years 100 to 9999) and its odd encoding of moments
// before 30 December 1899.
#include <cmath>
#include <cstdint>
#include <ctime>

#include "winsim.h"
#include "winsim_control.h"

namespace {

const int64_t kTicksPerSecond = 10000000;
const int64_t kSecondsPerDay = 86400;

int zoneMinutesAhead = 0;
uint64_t frozenClock = 0;

bool isLeap(int64_t year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

int daysInMonth(int64_t year, int month) {
    static const int lengths[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && isLeap(year) ? 29 : lengths[month - 1];
}

// Days from 1 January of year 1 to the first of the given month (year >= 1,
// month 1 to 12).
int64_t daysToMonth(int64_t year, int month) {
    int64_t y = year - 1;
    int64_t days = 365 * y + y / 4 - y / 100 + y / 400;
    for (int m = 1; m < month; ++m) days += daysInMonth(year, m);
    return days;
}

// The calendar date of a count of days from 1 January of year 1 (>= 0).
void civilFromDays(int64_t n, int64_t& year, int& month, int& day, int& dayOfWeek) {
    dayOfWeek = static_cast<int>((n + 1) % 7);  // 1 January 1 was a Monday
    int64_t cycles400 = n / 146097;
    n %= 146097;
    int64_t centuries = n / 36524;
    if (centuries == 4) centuries = 3;  // the last day of a 400-year cycle
    n -= centuries * 36524;
    int64_t cycles4 = n / 1461;
    n %= 1461;
    int64_t years = n / 365;
    if (years == 4) years = 3;  // the last day of a leap cycle
    n -= years * 365;
    year = 1 + 400 * cycles400 + 100 * centuries + 4 * cycles4 + years;
    month = 1;
    while (n >= daysInMonth(year, month)) n -= daysInMonth(year, month++);
    day = static_cast<int>(n) + 1;
}

const int64_t kFileTimeEpoch = daysToMonth(1601, 1);         // 1 January 1601
const int64_t kAutomationEpoch = daysToMonth(1899, 12) + 29;  // 30 December 1899

uint64_t ticksOf(const FILETIME* t) { return (static_cast<uint64_t>(t->dwHighDateTime) << 32) | t->dwLowDateTime; }

void store(LPFILETIME t, uint64_t ticks) {
    t->dwLowDateTime = static_cast<DWORD>(ticks);
    t->dwHighDateTime = static_cast<DWORD>(ticks >> 32);
}

void fillRecord(int64_t days, int64_t secondsOfDay, int milliseconds, LPSYSTEMTIME st) {
    int64_t year;
    int month, day, dayOfWeek;
    civilFromDays(days, year, month, day, dayOfWeek);
    st->wYear = static_cast<WORD>(year);
    st->wMonth = static_cast<WORD>(month);
    st->wDay = static_cast<WORD>(day);
    st->wDayOfWeek = static_cast<WORD>(dayOfWeek);
    st->wHour = static_cast<WORD>(secondsOfDay / 3600);
    st->wMinute = static_cast<WORD>(secondsOfDay / 60 % 60);
    st->wSecond = static_cast<WORD>(secondsOfDay % 60);
    st->wMilliseconds = static_cast<WORD>(milliseconds);
}

uint64_t zoneTicks() { return static_cast<uint64_t>(static_cast<int64_t>(zoneMinutesAhead) * 60 * kTicksPerSecond); }

uint64_t clockNow() {
    if (frozenClock) return frozenClock;
    timespec now;
    clock_gettime(CLOCK_REALTIME, &now);
    const int64_t unixEpochSeconds = 11644473600LL;  // 1601 to 1970
    return static_cast<uint64_t>((now.tv_sec + unixEpochSeconds) * kTicksPerSecond + now.tv_nsec / 100);
}

}  // namespace

namespace winsim {

void setTimeZone(int minutesAheadOfUtc) { zoneMinutesAhead = minutesAheadOfUtc; }
void setClock(unsigned long long fileTime) { frozenClock = fileTime; }

}  // namespace winsim

extern "C" {

BOOL WINAPI SystemTimeToFileTime(const SYSTEMTIME* st, LPFILETIME fileTime) {
    if (winsim::refuse("SystemTimeToFileTime")) return FALSE;
    // The day of the week is not looked at.
    if (st->wYear < 1601 || st->wYear > 30827 || st->wMonth < 1 || st->wMonth > 12 || st->wDay < 1 ||
        st->wDay > daysInMonth(st->wYear, st->wMonth) || st->wHour > 23 || st->wMinute > 59 || st->wSecond > 59 ||
        st->wMilliseconds > 999) {
        SetLastError(87);
        return FALSE;
    }
    int64_t days = daysToMonth(st->wYear, st->wMonth) + st->wDay - 1 - kFileTimeEpoch;
    int64_t seconds = days * kSecondsPerDay + st->wHour * 3600 + st->wMinute * 60 + st->wSecond;
    store(fileTime, static_cast<uint64_t>(seconds * kTicksPerSecond + st->wMilliseconds * 10000LL));
    return TRUE;
}

BOOL WINAPI FileTimeToSystemTime(const FILETIME* fileTime, LPSYSTEMTIME st) {
    if (winsim::refuse("FileTimeToSystemTime")) return FALSE;
    uint64_t ticks = ticksOf(fileTime);
    if (ticks >> 63) {
        SetLastError(87);
        return FALSE;
    }
    int64_t seconds = static_cast<int64_t>(ticks / kTicksPerSecond);
    int milliseconds = static_cast<int>(ticks % kTicksPerSecond / 10000);
    fillRecord(seconds / kSecondsPerDay + kFileTimeEpoch, seconds % kSecondsPerDay, milliseconds, st);
    return TRUE;
}

// The shifts wrap around as the platform's do; FileTimeToSystemTime then
// refuses what went below 1601.
BOOL WINAPI FileTimeToLocalFileTime(const FILETIME* fileTime, LPFILETIME localFileTime) {
    if (winsim::refuse("FileTimeToLocalFileTime")) return FALSE;
    store(localFileTime, ticksOf(fileTime) + zoneTicks());
    return TRUE;
}

BOOL WINAPI LocalFileTimeToFileTime(const FILETIME* localFileTime, LPFILETIME fileTime) {
    if (winsim::refuse("LocalFileTimeToFileTime")) return FALSE;
    store(fileTime, ticksOf(localFileTime) - zoneTicks());
    return TRUE;
}

LONG WINAPI CompareFileTime(const FILETIME* first, const FILETIME* second) {
    uint64_t a = ticksOf(first), b = ticksOf(second);
    return a < b ? -1 : a > b ? 1 : 0;
}

void WINAPI GetSystemTime(LPSYSTEMTIME st) {
    FILETIME now;
    store(&now, clockNow());
    FileTimeToSystemTime(&now, st);
}

void WINAPI GetLocalTime(LPSYSTEMTIME st) {
    FILETIME now;
    store(&now, clockNow() + zoneTicks());
    FileTimeToSystemTime(&now, st);
}

// Month 13, day 32 and years past 9999 are refused; everything else is
// carried over: month 0 is December of the year before, day 0 the last of
// the month before, 31 April the first of May, and the time fields count as
// signed 16-bit numbers. Years 0 to 49 are 2000 to 2049, 50 to 99 are 1950
// to 1999. Milliseconds are not looked at.
INT WINAPI SystemTimeToVariantTime(LPSYSTEMTIME st, DATE* variantTime) {
    if (winsim::refuse("SystemTimeToVariantTime")) return FALSE;
    if (st->wMonth > 12 || st->wDay > 31 || st->wYear > 9999) return FALSE;
    int64_t year = st->wYear;
    if (year < 50) year += 2000;
    else if (year < 100) year += 1900;
    int month = st->wMonth;
    if (month == 0) {
        --year;
        month = 12;
    }
    int64_t days = daysToMonth(year, month) + st->wDay - 1 - kAutomationEpoch;
    int64_t total = days * kSecondsPerDay + static_cast<SHORT>(st->wHour) * 3600 +
                    static_cast<SHORT>(st->wMinute) * 60 + static_cast<SHORT>(st->wSecond);
    int64_t whole = total >= 0 ? total / kSecondsPerDay : -((-total + kSecondsPerDay - 1) / kSecondsPerDay);
    double fraction = static_cast<double>(total - whole * kSecondsPerDay) / kSecondsPerDay;
    // Before the epoch the time of day is counted away from zero: 6:00 on
    // 29 December 1899 is -1.25.
    *variantTime = whole >= 0 ? static_cast<double>(whole) + fraction : static_cast<double>(whole) - fraction;
    return TRUE;
}

// The whole part (towards zero) is the day, the fraction's magnitude the
// time, rounded to the second; a time that rounds up to midnight is the
// next day. Milliseconds are always 0. NaN and dates outside
// (-657435, 2958466) are refused.
INT WINAPI VariantTimeToSystemTime(DATE variantTime, LPSYSTEMTIME st) {
    if (winsim::refuse("VariantTimeToSystemTime")) return FALSE;
    if (std::isnan(variantTime) || variantTime <= -657435.0 || variantTime >= 2958466.0) return FALSE;
    double whole = std::trunc(variantTime);
    int64_t seconds = static_cast<int64_t>(std::floor(std::fabs(variantTime - whole) * kSecondsPerDay + 0.5));
    int64_t days = static_cast<int64_t>(whole) + kAutomationEpoch;
    if (seconds >= kSecondsPerDay) {
        ++days;
        seconds -= kSecondsPerDay;
    }
    fillRecord(days, seconds, 0, st);
    return TRUE;
}

}  // extern "C"
