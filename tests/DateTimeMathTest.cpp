// Comparing moments, day numbers, and UTC against local time, through the
// exports. Expected dates come from the small calendar below, which walks
// day by day and shares nothing with the library or the stand-in.
#include <cmath>
#include <cstdlib>

#include "VbDeclares.h"

#ifdef CSK_WINSIM
#include "winsim_control.h"
#endif

namespace {

SYSTEMTIME St(int y, int m, int d, int h = 0, int mi = 0, int s = 0, int ms = 0, int dow = 0) {
    return SYSTEMTIME{WORD(y), WORD(m), WORD(dow), WORD(d), WORD(h), WORD(mi), WORD(s), WORD(ms)};
}

const SYSTEMTIME kJunk = St(0x5555, 0x5555, 0x5555, 0x5555, 0x5555, 0x5555, 0x5555, 0x5555);

// Year, month, day, hour, minute, second, millisecond, day of week.
std::string Show(const SYSTEMTIME& t) {
    return testing::PrintToString(std::vector<int>{t.wYear, t.wMonth, t.wDay, t.wHour, t.wMinute, t.wSecond,
                                                   t.wMilliseconds, t.wDayOfWeek});
}

// ---- The test's own calendar: a walk from 1 January 1601 (a Monday).
bool IsLeap(int y) { return y % 400 == 0 || (y % 100 != 0 && y % 4 == 0); }
int MonthLength(int y, int m) { return m == 2 ? 28 + IsLeap(y) : m == 4 || m == 6 || m == 9 || m == 11 ? 30 : 31; }

struct Walk {
    int y = 1601, m = 1, d = 1;
    long index = 0;  // days since 1 January 1601
    void Next() { ++index, d = d < MonthLength(y, m) ? d + 1 : (y += m == 12, m = m % 12 + 1, 1); }
};

Walk To(int y, int m, int d) { Walk w; while (w.y != y || w.m != m || w.d != d) w.Next(); return w; }

const long kDayOne = To(2000, 7, 27).index, kDateEpoch = To(1899, 12, 30).index;  // day 1, automation date 0

// The record's automation date, minutes later and its milliseconds left out,
// in the platform's encoding: before 30 December 1899 the time of day counts
// away from 0.
double AutomationDate(const SYSTEMTIME& t, int minutes = 0) {
    double days = static_cast<double>(To(t.wYear, t.wMonth, t.wDay).index - kDateEpoch) +
                  (t.wHour * 3600 + (t.wMinute + minutes) * 60 + t.wSecond) / 86400.0;
    return days >= 0 ? days : 2 * std::floor(days) - days;
}

// The record moved forward by less than a day, with its true day of week.
SYSTEMTIME Shifted(const SYSTEMTIME& t, int minutes) {
    Walk w = To(t.wYear, t.wMonth, t.wDay);
    int minute = t.wHour * 60 + t.wMinute + minutes;
    if (minute >= 1440) w.Next(), minute -= 1440;
    return St(w.y, w.m, w.d, minute / 60, minute % 60, t.wSecond, t.wMilliseconds, static_cast<int>(w.index + 1) % 7);
}

// The zone this run's local time follows: the stand-in's is set here; the
// Win32 entries that run under a fixed TZ name theirs (Wine follows it).
struct DateTimeZone : ::testing::Test {
#ifdef CSK_WINSIM
    void SetUp() override { winsim::setTimeZone(zone_ = 330); }  // UTC+5:30: the half hour shows too
    void TearDown() override { winsim::setTimeZone(0), winsim::setClock(0); }
#else
    void SetUp() override {
        std::string tz = std::getenv("TZ") ? std::getenv("TZ") : "";
        zone_ = tz == "Asia/Kolkata" ? 330 : tz == "Asia/Tokyo" ? 540 : -1;
        if (zone_ < 0) GTEST_SKIP() << "this run's time zone is the host's; the TZ entries cover it";
    }
#endif
    int zone_ = 0;
};

// esCompareSystemTime compares the fields unchecked, as unsigned 16-bit
// numbers, the day of week left out; esCompareSystemTimeEx compares moments,
// a refused record being the earliest of all.
TEST(DateTimeCompare, FieldsAndMoments) {
    struct Row { bool moments; SYSTEMTIME a, b; LONG expected; } rows[] = {
        {false, St(2024, 10, 14, 15, 7, 9, 501), St(2024, 10, 14, 15, 7, 9, 500), 1},
        {false, St(2025, 1, 1), St(2024, 12, 31, 23, 59, 59, 999), 1},
        {false, St(2024, 9, 30, 23), St(2024, 10, 1), 2},
        {false, St(2024, 10, 14, 0, 0, 0, 0, 1), St(2024, 10, 14, 0, 0, 0, 0, 6), 0},
        {false, St(0x8000, 13, 1), St(0x7FFF, 12, 31), 1},  // no field is checked
        {true, St(1601, 1, 1), St(30827, 12, 31, 23, 59, 59, 999), 2},
        {true, St(2024, 13, 1), St(1601, 1, 1, 0, 0, 0, 1), 2},
        {true, St(1601, 1, 1, 0, 0, 0, 1), St(2000, 4, 31), 1},
        {true, St(2024, 1, 1, 24), St(1600, 12, 31), 0},
    };
    for (auto& row : rows) {
        auto& compare = row.moments ? vb::esCompareSystemTimeEx : vb::esCompareSystemTime;
        LONG code = -7, kept = -7;
        EXPECT_EQ(S_OK, compare(&row.a, &row.b, &code));
        EXPECT_EQ(row.expected, code) << Show(row.a) << " vs " << Show(row.b) << (row.moments ? " (Ex)" : "");
        // A missing answer pointer is status 1 before anything else; a missing record E_INVALIDARG.
        EXPECT_TRUE(compare(nullptr, nullptr, nullptr) == S_FALSE && compare(nullptr, &row.b, &kept) == E_INVALIDARG
                    && compare(&row.a, nullptr, &kept) == E_INVALIDARG && kept == -7);
    }
}

// ---- Day numbers: day 1 is 27 July 2000; before it, or for a date the
// calendar refuses, day 0 with status 1. A record of year 0 stands for the
// automation date beside it.
TEST(DayNumber, Edges) {
    struct Row { SYSTEMTIME record; double date; HRESULT status; LONG day; } rows[] = {
        {St(2000, 7, 27, 99, 99, 99, 9999), 0, S_OK, 1},  // the time of day is never looked at
        {St(30827, 12, 31), 0, S_OK, 10529003},           // the calendar's last day, counted by the walk
        {St(1600, 12, 31), 0, S_FALSE, 0},                // the calendar refuses it
        {St(0, 0, 0), kDayOne - kDateEpoch + 0.999999, S_OK, 2},  // rounds up to the next midnight
        {St(0, 0, 0), 2958465.0, S_OK, 2921732},    // 31 December 9999, the last automation date
        {St(0, 0, 0), 2958466.0, S_FALSE, 0},
    };
    for (auto& row : rows) {
        LONG day = -7;
        // A missing answer pointer is status 1 before anything else; a missing record E_INVALIDARG.
        EXPECT_TRUE(vb::esGetDayNumEx(nullptr, nullptr) == S_FALSE && vb::esGetDayNumEx2(row.date, nullptr) == S_FALSE
                    && vb::esGetDayNumEx(nullptr, &day) == E_INVALIDARG && day == -7);
        HRESULT status = row.record.wYear ? vb::esGetDayNumEx(&row.record, &day) : vb::esGetDayNumEx2(row.date, &day);
        EXPECT_TRUE(status == row.status && day == row.day) << Show(row.record) << " " << row.date << ": " << day;
    }
}

// Against the calendar walk on both sides of day 1 and across every kind of
// leap year: records (at any hour) up to 2400 on every 11th day, the first
// and last days of each month and every day of 1999 to 2001; automation
// dates (at 18:00) up to 9999 on every 97th day and through July 2000.
TEST(DayNumber, AgreesWithACalendarWalk) {
    int failures = 0;
    for (Walk w; w.y <= 9999; w.Next()) {
        bool asRecord = w.y <= 2400 && (w.index % 11 == 0 || w.d >= 28 || w.d == 1 || (w.y >= 1999 && w.y <= 2001));
        bool asDate = w.index % 97 == 0 || (w.y == 2000 && w.m == 7);
        SYSTEMTIME date = St(w.y, w.m, w.d, static_cast<int>(w.index % 24), 30);
        LONG expected = w.index < kDayOne ? 0 : static_cast<LONG>(w.index - kDayOne + 1);
        for (int kind = asRecord ? 0 : 1; kind <= (asDate ? 1 : 0); ++kind) {
            LONG day = -7;
            HRESULT status = kind ? vb::esGetDayNumEx2(static_cast<double>(w.index - kDateEpoch) + 0.75, &day)
                                  : vb::esGetDayNumEx(&date, &day);
            if ((status != (expected ? S_OK : S_FALSE) || day != expected) && ++failures <= 5)
                ADD_FAILURE() << Show(date) << (kind ? " as a date" : "") << ": day " << day << ", not " << expected;
        }
    }
    EXPECT_EQ(0, failures);
}

// ---- The clock: today by local time, now in UTC, each read on either side
// of the calls in case the day or the second turns.
TEST_F(DateTimeZone, TodayIsLocalNowIsUtc) {
#ifdef CSK_WINSIM
    // The stand-in's clock stops at 20:00 UTC, already the next day locally.
    winsim::setClock((To(2024, 10, 14).index * 86400ULL + 72000) * 10000000ULL);
#endif
    SYSTEMTIME local[2], utc[2];
    LONG today = 0;
    double now = -1;
    GetLocalTime(&local[0]), GetSystemTime(&utc[0]);
    EXPECT_TRUE(vb::esGetDayNum(&today) == S_OK && vb::esSysNow(&now) == S_OK);
    GetLocalTime(&local[1]), GetSystemTime(&utc[1]);
    EXPECT_TRUE(today == To(local[0].wYear, local[0].wMonth, local[0].wDay).index - kDayOne + 1 ||
                today == To(local[1].wYear, local[1].wMonth, local[1].wDay).index - kDayOne + 1) << today;
    EXPECT_TRUE(now >= AutomationDate(utc[0]) - 1e-9 && now <= AutomationDate(utc[1]) + 1e-9) << Show(utc[0]);
    EXPECT_TRUE(vb::esGetDayNum(nullptr) == S_FALSE && vb::esSysNow(nullptr) == S_FALSE);
}

// ---- UTC and local time, each moment as a record and as an automation date.
TEST_F(DateTimeZone, BetweenUtcAndLocal) {
    for (const SYSTEMTIME& utc : {St(2024, 10, 14, 20, 0, 0, 123), St(2024, 2, 28, 23, 59, 59, 999),
                                  St(2000, 12, 31, 22, 15), St(2400, 2, 29, 12), St(1601, 1, 1),
                                  St(1899, 12, 29, 6), St(1899, 12, 27, 23)}) {
        SYSTEMTIME input = utc, local = kJunk, back = kJunk;
        double date = AutomationDate(utc), localDate = -7, backDate = -7;
        VARIANT_BOOL done[4] = {7, 7, 7, 7};
        EXPECT_EQ(S_OK, vb::esSystemTimeToLocalSystemTime(&input, &local, &done[0]));
        EXPECT_EQ(S_OK, vb::esLocalSystemTimeToSystemTime(&local, &back, &done[1]));
        EXPECT_EQ(S_OK, vb::esSystemTimeToLocalTime(date, &localDate, &done[2]));
        EXPECT_EQ(S_OK, vb::esLocalTimeToSystemTime(localDate, &backDate, &done[3]));
        EXPECT_EQ(Show(Shifted(utc, zone_)) + Show(Shifted(utc, 0)), Show(local) + Show(back));  // there and back
        EXPECT_NEAR(AutomationDate(utc, zone_), localDate, 1e-9) << Show(utc);
        EXPECT_NEAR(date, backDate, 1e-9) << Show(utc);
        for (VARIANT_BOOL d : done) EXPECT_EQ(VARIANT_TRUE, d) << Show(utc);
    }
}

// A refusal at any step answers VARIANT_FALSE with status 0 and leaves the
// caller's record or date as it was. A record of year 0 stands for the
// automation date beside it.
TEST_F(DateTimeZone, RefusalsLeaveTheAnswerAlone) {
    struct Row { SYSTEMTIME record; double date; bool toLocal; } rows[] = {
        {St(2024, 13, 1), 0, true},
        {St(1600, 12, 31, 23), 0, true},
        // Local midnight of 1601's first day is before 1601 in UTC east of Greenwich.
        {St(1601, 1, 1), 0, false},
        {St(0, 0, 0), 2958466.0, true},  // outside the automation range
        {St(0, 0, 0), -109572.0, true},  // in range, but before the calendar's 1601
        {St(0, 0, 0), 2958465.9, true},  // the local moment is in the year 10000
    };
    for (auto& row : rows) {
        SYSTEMTIME out = kJunk;
        double date = 42.0;
        VARIANT_BOOL done = 7;
        auto& records = row.toLocal ? vb::esSystemTimeToLocalSystemTime : vb::esLocalSystemTimeToSystemTime;
        auto& dates = row.toLocal ? vb::esSystemTimeToLocalTime : vb::esLocalTimeToSystemTime;
        // A missing answer pointer is status 1 before anything else; a missing record or date E_INVALIDARG.
        EXPECT_TRUE(records(&row.record, &out, nullptr) == S_FALSE && records(nullptr, &out, &done) == E_INVALIDARG &&
                    records(&row.record, nullptr, &done) == E_INVALIDARG && dates(row.date, &date, nullptr) == S_FALSE
                    && dates(row.date, nullptr, &done) == E_INVALIDARG && done == 7);
        HRESULT status = row.record.wYear ? records(&row.record, &out, &done) : dates(row.date, &date, &done);
        EXPECT_TRUE(status == S_OK && done == VARIANT_FALSE && !std::memcmp(&kJunk, &out, sizeof out) && date == 42.0)
            << Show(row.record) << " " << row.date << ": status " << status << ", done " << done << ", " << date;
    }
}

}  // namespace
