// Comparing moments, day numbers, and UTC against local time, through the
// exports. Expected dates come from the small calendar below, which walks
// day by day and shares nothing with the library or the stand-in.
#include <cmath>
#include <cstdlib>
#include <cstring>

#include "VbDeclares.h"

#ifdef CSK_WINSIM
#include "winsim_control.h"
#endif

namespace {

SYSTEMTIME St(int y, int m, int d, int h = 0, int mi = 0, int s = 0, int ms = 0, int dow = 0) {
    SYSTEMTIME t;
    t.wYear = static_cast<WORD>(y), t.wMonth = static_cast<WORD>(m), t.wDayOfWeek = static_cast<WORD>(dow);
    t.wDay = static_cast<WORD>(d), t.wHour = static_cast<WORD>(h), t.wMinute = static_cast<WORD>(mi);
    t.wSecond = static_cast<WORD>(s), t.wMilliseconds = static_cast<WORD>(ms);
    return t;
}

SYSTEMTIME Garbage() {
    SYSTEMTIME t;
    std::memset(&t, 0x55, sizeof t);
    return t;
}

bool Same(const SYSTEMTIME& a, const SYSTEMTIME& b) { return std::memcmp(&a, &b, sizeof a) == 0; }

std::string Show(const SYSTEMTIME& t) {
    char text[80];
    std::snprintf(text, sizeof text, "%d-%d-%d %d:%d:%d.%d (dow %d)", t.wYear, t.wMonth, t.wDay, t.wHour, t.wMinute,
                  t.wSecond, t.wMilliseconds, t.wDayOfWeek);
    return text;
}

// ---- The test's own calendar: a walk from 1 January 1601 (a Monday).
bool IsLeap(int y) { return y % 400 == 0 || (y % 100 != 0 && y % 4 == 0); }

int MonthLength(int y, int m) {
    if (m == 2) return IsLeap(y) ? 29 : 28;
    return m == 4 || m == 6 || m == 9 || m == 11 ? 30 : 31;
}

struct Walk {
    int y = 1601, m = 1, d = 1;
    long index = 0;  // days since 1 January 1601
    void Next() {
        ++index;
        if (++d > MonthLength(y, m)) {
            d = 1;
            if (++m > 12) m = 1, ++y;
        }
    }
};

long IndexOf(int y, int m, int d) {
    long n = 0;
    for (int k = 1601; k < y; ++k) n += IsLeap(k) ? 366 : 365;
    for (int k = 1; k < m; ++k) n += MonthLength(y, k);
    return n + d - 1;
}

SYSTEMTIME FromIndex(long long index, int minuteOfDay, int second, int ms) {
    int y = 1601, m = 1;
    while (index >= (IsLeap(y) ? 366 : 365)) index -= IsLeap(y) ? 366 : 365, ++y;
    while (index >= MonthLength(y, m)) index -= MonthLength(y, m), ++m;
    return St(y, m, static_cast<int>(index) + 1, minuteOfDay / 60, minuteOfDay % 60, second, ms,
              static_cast<int>((IndexOf(y, m, 1) + index + 1) % 7));
}

// The record moved by a number of minutes, with its true day of week.
SYSTEMTIME Shifted(const SYSTEMTIME& t, int minutes) {
    long long total = IndexOf(t.wYear, t.wMonth, t.wDay) * 1440LL + t.wHour * 60 + t.wMinute + minutes;
    return FromIndex(total / 1440, static_cast<int>(total % 1440), t.wSecond, t.wMilliseconds);
}

const long kDayOne = IndexOf(2000, 7, 27);
const long kDateEpoch = IndexOf(1899, 12, 30);  // automation date 0

// An automation date from a count of seconds since 30 December 1899 (the
// platform's encoding: before the epoch the time of day counts away from 0).
double AutomationDate(long long seconds) {
    long long day = seconds >= 0 ? seconds / 86400 : -((-seconds + 86399) / 86400);
    double fraction = static_cast<double>(seconds - day * 86400) / 86400.0;
    return day >= 0 ? static_cast<double>(day) + fraction : static_cast<double>(day) - fraction;
}

// ---- The zone this run's local time follows, when the tests know it.
#ifdef CSK_WINSIM
const int kSimulatedZone = 330;  // UTC+5:30: the half hour shows too
#endif

bool KnownZone(int& minutesAhead) {
#ifdef CSK_WINSIM
    minutesAhead = kSimulatedZone;
    return true;
#else
    // The Win32 test entries that run under a fixed TZ (Wine follows it).
    const char* tz = std::getenv("TZ");
    std::string zone = tz ? tz : "";
    if (zone == "Asia/Kolkata") minutesAhead = 330;
    else if (zone == "Asia/Tokyo") minutesAhead = 540;
    else return false;
    return true;
#endif
}

class DateTimeZone : public ::testing::Test {
  protected:
    void SetUp() override {
#ifdef CSK_WINSIM
        winsim::setTimeZone(kSimulatedZone);
#endif
        if (!KnownZone(zone_)) GTEST_SKIP() << "this run's time zone is the host's; the TZ entries cover it";
    }
    void TearDown() override {
#ifdef CSK_WINSIM
        winsim::setTimeZone(0);
        winsim::setClock(0);
#endif
    }
    int zone_ = 0;
};

// ---- Comparison

TEST(DateTimeCompare, FieldByField) {
    struct Row {
        SYSTEMTIME a, b;
        LONG expected;
    } rows[] = {
        {St(2024, 10, 14, 15, 7, 9, 500), St(2024, 10, 14, 15, 7, 9, 500), 0},
        {St(2024, 10, 14, 15, 7, 9, 501), St(2024, 10, 14, 15, 7, 9, 500), 1},
        {St(2024, 10, 14, 15, 7, 9, 500), St(2024, 10, 14, 15, 7, 9, 501), 2},
        {St(2025, 1, 1), St(2024, 12, 31, 23, 59, 59, 999), 1},
        {St(2024, 9, 30, 23), St(2024, 10, 1), 2},
        {St(2024, 10, 14, 15, 8), St(2024, 10, 14, 15, 7, 59, 999), 1},
        // The day of the week takes no part.
        {St(2024, 10, 14, 0, 0, 0, 0, 1), St(2024, 10, 14, 0, 0, 0, 0, 6), 0},
        // No field is checked: month 13 is later than month 12.
        {St(2024, 13, 1), St(2024, 12, 31), 1},
        {St(2024, 12, 31), St(2024, 13, 1), 2},
        // Fields compare as unsigned 16-bit numbers.
        {St(0x8000, 1, 1), St(0x7FFF, 1, 1), 1},
        {St(0, 0, 0), St(0, 0, 0), 0},
    };
    for (auto& row : rows) {
        LONG code = -7;
        EXPECT_EQ(S_OK, vb::esCompareSystemTime(&row.a, &row.b, &code));
        EXPECT_EQ(row.expected, code) << Show(row.a) << " vs " << Show(row.b);
    }
}

TEST(DateTimeCompare, ThroughTheCalendar) {
    struct Row {
        SYSTEMTIME a, b;
        LONG expected;
    } rows[] = {
        {St(2024, 10, 14, 15, 7, 9, 501), St(2024, 10, 14, 15, 7, 9, 500), 1},
        {St(1601, 1, 1), St(30827, 12, 31, 23, 59, 59, 999), 2},
        {St(2024, 10, 14, 0, 0, 0, 0, 1), St(2024, 10, 14, 0, 0, 0, 0, 6), 0},
        // A refused record is the earliest moment; two refused ones are equal,
        // and equal to the first moment of 1601.
        {St(2024, 13, 1), St(1601, 1, 1, 0, 0, 0, 1), 2},
        {St(2024, 13, 1), St(1601, 1, 1), 0},
        {St(1601, 1, 1, 0, 0, 0, 1), St(2000, 4, 31), 1},
        {St(2024, 13, 1), St(1600, 12, 31), 0},
        {St(2024, 1, 1, 24), St(0, 0, 0), 0},
    };
    for (auto& row : rows) {
        LONG code = -7;
        EXPECT_EQ(S_OK, vb::esCompareSystemTimeEx(&row.a, &row.b, &code));
        EXPECT_EQ(row.expected, code) << Show(row.a) << " vs " << Show(row.b);
    }
}

// Every combination of null pointers in the three-pointer exports: the last
// pointer is tested first, and nothing is written unless all are there.
TEST(DateTimeCompare, NullPointersInEveryPosition) {
    typedef HRESULT (*Three)(SYSTEMTIME*, SYSTEMTIME*, void*);
    const Three exports[] = {
        [](SYSTEMTIME* a, SYSTEMTIME* b, void* c) { return vb::esCompareSystemTime(a, b, static_cast<LONG*>(c)); },
        [](SYSTEMTIME* a, SYSTEMTIME* b, void* c) { return vb::esCompareSystemTimeEx(a, b, static_cast<LONG*>(c)); },
        [](SYSTEMTIME* a, SYSTEMTIME* b, void* c) {
            return vb::esSystemTimeToLocalSystemTime(a, b, static_cast<VARIANT_BOOL*>(c));
        },
        [](SYSTEMTIME* a, SYSTEMTIME* b, void* c) {
            return vb::esLocalSystemTimeToSystemTime(a, b, static_cast<VARIANT_BOOL*>(c));
        },
    };
    for (Three call : exports) {
        for (int mask = 0; mask < 8; ++mask) {
            SYSTEMTIME a = St(2024, 10, 14), b = St(2024, 10, 15), bBefore = b;
            LONG answer = 0x12345678;
            HRESULT expected = !(mask & 4) ? S_FALSE : (!(mask & 1) || !(mask & 2)) ? E_INVALIDARG : S_OK;
            HRESULT status = call(mask & 1 ? &a : nullptr, mask & 2 ? &b : nullptr, mask & 4 ? &answer : nullptr);
            EXPECT_EQ(expected, status) << "mask " << mask;
            if (expected != S_OK) {
                EXPECT_EQ(0x12345678, answer) << "mask " << mask;
                EXPECT_TRUE(Same(bBefore, b)) << "mask " << mask;
            }
        }
    }
}

// ---- Day numbers

TEST(DayNumber, Landmarks) {
    struct Row {
        SYSTEMTIME date;
        HRESULT status;
        LONG day;
    } rows[] = {
        {St(2000, 7, 27, 23, 59, 59, 999), S_OK, 1},
        {St(2000, 7, 26, 23, 59, 59, 999), S_FALSE, 0},
        {St(2024, 2, 29), S_OK, 8618},
        {St(2024, 10, 14, 15, 7, 9), S_OK, 8846},
        {St(30827, 12, 31), S_OK, static_cast<LONG>(IndexOf(30827, 12, 31) - kDayOne + 1)},
        // The time of day is never looked at, even when it is no time.
        {St(2000, 7, 27, 99, 99, 99, 9999), S_OK, 1},
        // Dates the calendar refuses: day 0 with status 1.
        {St(2024, 13, 1), S_FALSE, 0},
        {St(2023, 4, 31), S_FALSE, 0},
        {St(1600, 12, 31), S_FALSE, 0},
    };
    for (auto& row : rows) {
        LONG day = -7;
        EXPECT_EQ(row.status, vb::esGetDayNumEx(&row.date, &day)) << Show(row.date);
        EXPECT_EQ(row.day, day) << Show(row.date);
    }
}

// Thousands of dates from 1601 to 2400, on both sides of day 1 and across
// every kind of leap year, against the calendar walk: every 11th day, every
// end of month, and every day of the three years around the origin.
TEST(DayNumber, AgreesWithACalendarWalk) {
    int checked = 0, failures = 0;
    for (Walk w; w.y <= 2400; w.Next()) {
        bool nearOrigin = w.y >= 1999 && w.y <= 2001;
        if (!(w.index % 11 == 0 || w.d >= 28 || w.d == 1 || nearOrigin)) continue;
        SYSTEMTIME date = St(w.y, w.m, w.d, static_cast<int>(w.index % 24), 30);
        LONG day = -7;
        HRESULT status = vb::esGetDayNumEx(&date, &day);
        bool before = w.index < kDayOne;
        LONG expected = before ? 0 : static_cast<LONG>(w.index - kDayOne + 1);
        ++checked;
        if ((status != (before ? S_FALSE : S_OK) || day != expected) && ++failures <= 5)
            ADD_FAILURE() << Show(date) << ": status " << status << ", day " << day << ", expected " << expected;
    }
    EXPECT_GT(checked, 50000);
    EXPECT_EQ(0, failures);
}

// The same walk through automation dates, up to the last one, in 9999.
TEST(DayNumber, AutomationDatesAgreeWithTheWalk) {
    int failures = 0;
    for (Walk w; w.y <= 9999; w.Next()) {
        if (w.index % 97 != 0 && !(w.y == 2000 && w.m == 7)) continue;
        double date = static_cast<double>(w.index - kDateEpoch) + 0.75;  // 18:00
        LONG day = -7;
        HRESULT status = vb::esGetDayNumEx2(date, &day);
        bool before = w.index < kDayOne;
        LONG expected = before ? 0 : static_cast<LONG>(w.index - kDayOne + 1);
        if ((status != (before ? S_FALSE : S_OK) || day != expected) && ++failures <= 5)
            ADD_FAILURE() << "date " << date << ": status " << status << ", day " << day << ", expected " << expected;
    }
    EXPECT_EQ(0, failures);
}

TEST(DayNumber, AutomationDateEdges) {
    const double origin = static_cast<double>(kDayOne - kDateEpoch);  // 36734
    struct Row {
        double date;
        HRESULT status;
        LONG day;
    } rows[] = {
        {origin, S_OK, 1},
        {origin + 0.999, S_OK, 1},
        // A time that rounds up to the next midnight is the next day.
        {origin + 0.999999, S_OK, 2},
        {origin - 0.001, S_FALSE, 0},
        {2958465.0, S_OK, static_cast<LONG>(2958465.0 - origin + 1)},
        // Outside the automation range, and before the calendar's 1601.
        {2958466.0, S_FALSE, 0},
        {-657435.0, S_FALSE, 0},
        {-657434.0, S_FALSE, 0},
        {-1e300, S_FALSE, 0},
        {std::nan(""), S_FALSE, 0},
    };
    for (const auto& row : rows) {
        LONG day = -7;
        EXPECT_EQ(row.status, vb::esGetDayNumEx2(row.date, &day)) << row.date;
        EXPECT_EQ(row.day, day) << row.date;
    }
}

TEST(DayNumber, NullPointers) {
    SYSTEMTIME date = St(2024, 10, 14);
    LONG day = 0x1234;
    EXPECT_EQ(S_FALSE, vb::esGetDayNumEx(nullptr, nullptr));
    EXPECT_EQ(S_FALSE, vb::esGetDayNumEx(&date, nullptr));
    EXPECT_EQ(E_INVALIDARG, vb::esGetDayNumEx(nullptr, &day));
    EXPECT_EQ(0x1234, day);
    EXPECT_EQ(S_FALSE, vb::esGetDayNumEx2(40000.0, nullptr));
    EXPECT_EQ(S_FALSE, vb::esGetDayNum(nullptr));
    EXPECT_EQ(S_FALSE, vb::esSysNow(nullptr));
    double out = 5.0;
    VARIANT_BOOL done = 7;
    EXPECT_EQ(S_FALSE, vb::esSystemTimeToLocalTime(40000.0, &out, nullptr));
    EXPECT_EQ(S_FALSE, vb::esLocalTimeToSystemTime(40000.0, nullptr, nullptr));
    EXPECT_EQ(E_INVALIDARG, vb::esSystemTimeToLocalTime(40000.0, nullptr, &done));
    EXPECT_EQ(E_INVALIDARG, vb::esLocalTimeToSystemTime(40000.0, nullptr, &done));
    EXPECT_EQ(5.0, out);
    EXPECT_EQ(7, done);
}

// Today by the local clock: what esGetDayNumEx makes of GetLocalTime, read
// on either side of the call in case midnight passes.
TEST(DayNumber, TodayIsLocal) {
    SYSTEMTIME before, after;
    LONG dayBefore = 0, today = 0, dayAfter = 0;
    GetLocalTime(&before);
    EXPECT_EQ(S_OK, vb::esGetDayNum(&today));
    GetLocalTime(&after);
    vb::esGetDayNumEx(&before, &dayBefore);
    vb::esGetDayNumEx(&after, &dayAfter);
    EXPECT_TRUE(today == dayBefore || today == dayAfter) << today;
    EXPECT_GT(today, 8846);
}

#ifdef CSK_WINSIM
// The stand-in's clock can be stopped: 20:00 UTC is already the next day at
// UTC+5:30, and the day number follows the local date.
TEST_F(DateTimeZone, TodayFollowsTheLocalDate) {
    SYSTEMTIME utc = St(2024, 10, 14, 20, 0);
    FILETIME t;
    ASSERT_TRUE(SystemTimeToFileTime(&utc, &t));
    winsim::setClock((static_cast<unsigned long long>(t.dwHighDateTime) << 32) | t.dwLowDateTime);
    LONG today = 0;
    EXPECT_EQ(S_OK, vb::esGetDayNum(&today));
    EXPECT_EQ(8847, today);
    double now = 0;
    EXPECT_EQ(S_OK, vb::esSysNow(&now));
    EXPECT_DOUBLE_EQ(45579.0 + 20.0 / 24, now);  // UTC, not local time
}
#endif

// ---- UTC and local time

TEST(DateTimeNow, SysNowIsUtc) {
    SYSTEMTIME record;
    double before = 0, after = 0, now = -1;
    GetSystemTime(&record);
    SystemTimeToVariantTime(&record, &before);
    EXPECT_EQ(S_OK, vb::esSysNow(&now));
    GetSystemTime(&record);
    SystemTimeToVariantTime(&record, &after);
    // The platform's date keeps whole seconds.
    EXPECT_GE(now, before - 1.0 / 86400);
    EXPECT_LE(now, after + 1.0 / 86400);
}

TEST_F(DateTimeZone, RecordsBetweenUtcAndLocal) {
    const SYSTEMTIME moments[] = {
        St(2024, 10, 14, 20, 0, 0, 123), St(2024, 2, 28, 23, 59, 59, 999), St(2000, 12, 31, 22, 15),
        St(1999, 12, 31, 23, 30), St(2400, 2, 29, 12), St(1601, 1, 1),
    };
    for (const SYSTEMTIME& utc : moments) {
        SYSTEMTIME input = utc, local = Garbage(), back = Garbage();
        VARIANT_BOOL done = 7;
        EXPECT_EQ(S_OK, vb::esSystemTimeToLocalSystemTime(&input, &local, &done));
        EXPECT_EQ(VARIANT_TRUE, done);
        EXPECT_EQ(Show(Shifted(utc, zone_)), Show(local));
        done = 7;
        EXPECT_EQ(S_OK, vb::esLocalSystemTimeToSystemTime(&local, &back, &done));
        EXPECT_EQ(VARIANT_TRUE, done);
        EXPECT_EQ(Show(Shifted(utc, 0)), Show(back));
        // One record may be both the input and the output.
        SYSTEMTIME both = utc;
        EXPECT_EQ(S_OK, vb::esSystemTimeToLocalSystemTime(&both, &both, &done));
        EXPECT_EQ(Show(local), Show(both));
    }
}

TEST_F(DateTimeZone, RefusedRecordsLeaveTheAnswerAlone) {
    struct Row {
        SYSTEMTIME input;
        bool toLocal;
    } rows[] = {
        {St(2024, 13, 1), true},
        {St(2024, 13, 1), false},
        {St(2023, 2, 30), true},
        {St(2024, 1, 1, 24), false},
        {St(1600, 12, 31, 23), true},
        // Local midnight of the calendar's first day lies before 1601 in UTC
        // east of Greenwich: the last step of the chain refuses.
        {St(1601, 1, 1), false},
    };
    for (auto& row : rows) {
        SYSTEMTIME out = Garbage();
        VARIANT_BOOL done = 7;
        HRESULT status = row.toLocal ? vb::esSystemTimeToLocalSystemTime(&row.input, &out, &done)
                                     : vb::esLocalSystemTimeToSystemTime(&row.input, &out, &done);
        EXPECT_EQ(S_OK, status) << Show(row.input);
        EXPECT_EQ(VARIANT_FALSE, done) << Show(row.input);
        EXPECT_TRUE(Same(Garbage(), out)) << Show(row.input) << " became " << Show(out);
    }
}

TEST_F(DateTimeZone, AutomationDatesBetweenUtcAndLocal) {
    // Seconds since 30 December 1899, on both sides of it.
    const long long moments[] = {
        (IndexOf(2024, 10, 14) - kDateEpoch) * 86400LL + 72000,  // 20:00
        (IndexOf(2000, 7, 26) - kDateEpoch) * 86400LL + 86399,
        -86400 + 6 * 3600,  // 29 December 1899 06:00, which is -1.25
        -2 * 86400 - 3600,  // 27 December 1899 23:00
        (IndexOf(1700, 3, 1) - kDateEpoch) * 86400LL + 1,
    };
    for (long long seconds : moments) {
        double utc = AutomationDate(seconds), expected = AutomationDate(seconds + zone_ * 60LL);
        double local = -7, back = -7;
        VARIANT_BOOL done = 7;
        EXPECT_EQ(S_OK, vb::esSystemTimeToLocalTime(utc, &local, &done));
        EXPECT_EQ(VARIANT_TRUE, done) << utc;
        EXPECT_NEAR(expected, local, 1e-9) << utc;
        done = 7;
        EXPECT_EQ(S_OK, vb::esLocalTimeToSystemTime(local, &back, &done));
        EXPECT_EQ(VARIANT_TRUE, done) << local;
        EXPECT_NEAR(utc, back, 1e-9) << local;
    }
}

TEST_F(DateTimeZone, RefusedAutomationDatesLeaveTheAnswerAlone) {
    struct Row {
        double date;
        bool toLocal;
    } rows[] = {
        // Outside the automation range.
        {2958466.0, true},
        {-657435.0, false},
        // In range, but before the calendar's 1601.
        {-109572.0, true},
        // The local moment is in the year 10000, which no automation date holds.
        {2958465.9, true},
        // Year 100: an automation date, but not a date of the calendar.
        {-657434.0, false},
    };
    for (const auto& row : rows) {
        double out = 42.0;
        VARIANT_BOOL done = 7;
        HRESULT status = row.toLocal ? vb::esSystemTimeToLocalTime(row.date, &out, &done)
                                     : vb::esLocalTimeToSystemTime(row.date, &out, &done);
        EXPECT_EQ(S_OK, status) << row.date;
        EXPECT_EQ(VARIANT_FALSE, done) << row.date;
        EXPECT_EQ(42.0, out) << row.date;
    }
#ifdef CSK_WINSIM
    // The stand-in refuses NaN as no date; Wine takes it for 30 December 1899.
    double out = 42.0;
    VARIANT_BOOL done = 7;
    EXPECT_EQ(S_OK, vb::esSystemTimeToLocalTime(std::nan(""), &out, &done));
    EXPECT_EQ(VARIANT_FALSE, done);
    EXPECT_EQ(42.0, out);
#endif
}

// The automation date's rules, as the record conversions rely on them:
// what the stand-in must agree with the platform on.
TEST(AutomationDate, PlatformRules) {
    struct Row {
        SYSTEMTIME record;
        bool accepted;
        double date;
    } rows[] = {
        {St(1899, 12, 30), true, 0.0},
        {St(2000, 7, 27), true, 36734.0},
        {St(1899, 12, 29, 6), true, -1.25},
        {St(1899, 12, 29, 18), true, -1.75},
        {St(100, 1, 1), true, -657434.0},
        {St(9999, 12, 31, 23, 59, 59, 999), true, 2958465.0 + 86399.0 / 86400},  // milliseconds are dropped
        {St(49, 1, 1), true, 54424.0},  // two-digit years: 2049
        {St(50, 1, 1), true, 18264.0},  // and 1950
        {St(2001, 2, 29), true, 36951.0},  // carried into March
        {St(2000, 0, 1), true, 36495.0},   // month 0 is December before
        {St(2000, 13, 1), false, 0},
        {St(10000, 1, 1), false, 0},
    };
    for (auto& row : rows) {
        double date = -7;
        EXPECT_EQ(row.accepted, SystemTimeToVariantTime(&row.record, &date) != 0) << Show(row.record);
        if (row.accepted) {
            EXPECT_NEAR(row.date, date, 1e-9) << Show(row.record);
        }
    }
}

}  // namespace
