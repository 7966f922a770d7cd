// Moments compared and counted in days, UTC against local time, and the
// date, time and Roman texts, through the exports: one table, which the
// build runs again under two zones and locales. Whatever depends on the zone
// or the locale is held against the platform's own answer; the clocks and
// one refusal are detoured.

#include "Detour.h"
#include "VbDeclares.h"

namespace {

// A record that lives for the row that asked for it.
SYSTEMTIME* St(int y, int m, int d, int h = 0, int mi = 0, int s = 0, int ms = 0, int dow = 0) {
    static SYSTEMTIME pool[16], *next = pool;
    return &(*(next = next == pool + 15 ? pool : next + 1) = SYSTEMTIME{WORD(y), WORD(m), WORD(dow), WORD(d), WORD(h), WORD(mi), WORD(s), WORD(ms)});
}
double Vt(SYSTEMTIME t) { double d = -1; return SystemTimeToVariantTime(&t, &d) ? d : -1; }
SYSTEMTIME g_clock[2];  // what the detoured local and UTC clocks read
std::string Roman(LONG n) { Bstr out("old"); return vb::esFormatRoman(n, out.out()) ? "failed" : out.text(); }
template <class F> std::string Detoured(const char* name, F fake, const std::function<std::string()>& row) { Detour d(name, fake); return row(); }

// "status answer" of an export whose last argument is the answer (E:
// E_INVALIDARG).
template <class A = LONG, class F, class... In>
std::string L(const F& f, In... in) { A a = -7; HRESULT s = f(in..., &a); return (s == E_INVALIDARG ? "E " : std::to_string(s) + " ") + std::to_string(a); }

// Status, the two flags, and how many minutes the record and then the
// automation date moved ("kept": the caller's variable as it was), in one
// direction.
std::string Z(bool toLocal, SYSTEMTIME* t, double date = 0) {
    SYSTEMTIME out = *St(0x5555, 0x5555, 0x5555, 0x5555, 0x5555, 0x5555, 0x5555, 0x5555), junk = out;
    double moved = 42.0, from = date ? date : Vt(*t);
    VARIANT_BOOL done[2] = {7, 7};
    const HRESULT status = (toLocal ? vb::esSystemTimeToLocalSystemTime : vb::esLocalSystemTimeToSystemTime)(t, &out, &done[0]) |
                           (toLocal ? vb::esSystemTimeToLocalTime : vb::esLocalTimeToSystemTime)(from, &moved, &done[1]);
    auto minutes = [](bool kept, double by) { return kept ? std::string(" kept") : " " + std::to_string(int(by * 1440 + (by < 0 ? -0.5 : 0.5))); };
    return std::to_string(status) + " " + std::to_string(done[0]) + " " + std::to_string(done[1]) +
           minutes(!memcmp(&out, &junk, sizeof out), Vt(out) - Vt(*t)) + minutes(moved == 42.0, moved - from);
}

// The four format exports' date (long form, else short) | time (no seconds,
// else with them), of the record or, when one is given, of the automation
// date, a status first unless it is 0; beside it what the platform writes
// for the same flags (DATE_LONGDATE and TIME_NOSECONDS are both 2), widened
// from the ANSI code page as the library widens it.
std::pair<std::string, std::string> F(SYSTEMTIME* t, double when, VARIANT_BOOL first, VARIANT_BOOL noOverride) {
    Bstr date("old"), time("old");
    HRESULT status = when ? vb::esFormatDate2(when, first, noOverride, date.out()) | vb::esFormatTime2(when, first, noOverride, time.out())
                          : vb::esFormatDate(t, first, noOverride, date.out()) | vb::esFormatTime(t, first, noOverride, time.out());
    std::string want[2] = {kNull, kNull};
    alignas(WCHAR) char ansi[256], wide[512];
    for (int i = 0; i < 2; ++i)
        if ((i ? GetTimeFormatA : GetDateFormatA)(0x400, (first ? 2 : 1 - i) | (noOverride ? LOCALE_NOUSEROVERRIDE : 0), t ? t : St(0, 0, 0), nullptr, ansi, 256))
            want[i] = Utf8(std::u16string(reinterpret_cast<char16_t*>(wide), MultiByteToWideChar(CP_ACP, 0, ansi, -1, LPWSTR(wide), 256) - 1));
    return {(status ? std::to_string(status) + " " : "") + date.text() + "|" + time.text(), want[0] + "|" + want[1]};
}

// Comparison: field by field, unsigned and unchecked, the day of week left
// out; the Ex form by the platform's count, a refused record the earliest.
// Day 1 is 27 July 2000 at any time of day; before it, or for a date the
// calendar refuses, day 0 with status 1. Today is counted by the local
// clock, now read from the UTC one. A conversion moves a moment by the bias
// that the platform applies to any moment now; a refusal at any step, the
// platform's or a detoured one, is the flag 0 with status 0 and the caller's
// record or date as it was. Each format is the platform's picture for its
// flags, any nonzero Boolean counting as set; the user's own pictures (set
// here, put back after) count unless LOCALE_NOUSEROVERRIDE is asked for; a
// time is formatted whatever the date fields hold; an automation date out of
// range is the all-zero record. Roman numerals: 0 is "0", a minus sign before
// a negative number, thousands a run of M without limit.
TEST(DateTimeZone, Table) {
    const LCTYPE kinds[2] = {LOCALE_SSHORTDATE, LOCALE_STIMEFORMAT};
    char saved[2][80] = {}, mine[2][16] = {"yyyy-MM-dd", "HH.mm.ss"};
    for (int i = 0; i < 2; ++i) GetLocaleInfoA(0x400, kinds[i], saved[i], 80), SetLocaleInfoA(0x400, kinds[i], mine[i]);
    TIME_ZONE_INFORMATION zone;
    const LONG bias = GetTimeZoneInformation(&zone) == TIME_ZONE_ID_DAYLIGHT ? zone.Bias + zone.DaylightBias : zone.Bias + zone.StandardBias;
    const std::string toLocal = "0 -1 -1 " + std::to_string(-bias) + " " + std::to_string(-bias), kept = "0 0 0 kept kept";
    Detour localClock("GetLocalTime", +[](SYSTEMTIME* t) WINAPI -> void { *t = g_clock[0]; }), utcClock("GetSystemTime", +[](SYSTEMTIME* t) WINAPI -> void { *t = g_clock[1]; });
    const auto &cmp = vb::esCompareSystemTime, &cmpEx = vb::esCompareSystemTimeEx;
    SYSTEMTIME moment[2] = {*St(2024, 10, 14, 15, 7, 9), *St(2024, 13, 1, 15, 7, 9)};
    const std::pair<std::string, std::string> rows[] = {
        {L(cmp, St(2024, 10, 14, 15, 7, 9, 501), St(2024, 10, 14, 15, 7, 9, 500)), "0 1"}, {L(cmp, St(2024, 9, 30, 23), St(2024, 10, 1)), "0 2"},
        {L(cmp, St(2024, 10, 14, 1), St(2024, 10, 13, 23, 59)), "0 1"}, {L(cmp, St(2024, 5, 5, 0, 0, 0, 0, 1), St(2024, 5, 5)), "0 0"},
        {L(cmp, St(0x8000, 13, 1), St(0x7FFF, 12, 31)), "0 1"}, {L(cmpEx, St(2025, 1, 1), St(2024, 12, 31, 23, 59, 59, 999)), "0 1"},
        {L(cmpEx, St(2024, 9, 30, 23), St(2024, 10, 1)), "0 2"}, {L(cmpEx, St(2024, 13, 1), St(1601, 1, 1, 0, 0, 0, 1)), "0 2"},
        {L(cmpEx, St(2024, 1, 1, 24), St(1600, 12, 31)), "0 0"}, {L(cmp, nullptr, St(2024, 1, 1)), "E -7"}, {L(cmpEx, St(2024, 1, 1), nullptr), "E -7"},
        {L(vb::esGetDayNumEx, nullptr), "E -7"}, {L(vb::esGetDayNumEx, St(2000, 7, 27, 23, 59, 59, 999)), "0 1"},
        {L(vb::esGetDayNumEx, St(2000, 7, 26, 23, 59, 59, 999)), "1 0"}, {L(vb::esGetDayNumEx, St(2001, 1, 1, 12)), "0 159"}, {L(vb::esGetDayNumEx, St(2024, 2, 29)), "0 8618"},
        {L(vb::esGetDayNumEx, St(30827, 12, 31)), "0 10529003"}, {L(vb::esGetDayNumEx, St(2024, 13, 1)), "1 0"}, {L(vb::esGetDayNumEx2, 36734.75), "0 1"},
        {L(vb::esGetDayNumEx2, 45579.5), "0 8846"}, {L(vb::esGetDayNumEx2, 2958466.0), "1 0"},
        {(g_clock[0] = *St(2024, 10, 14, 23, 59), g_clock[1] = *St(2024, 10, 15, 12), L(vb::esGetDayNum) + " " + L<double>(vb::esSysNow)), "0 8846 0 45580.500000"},
        {(g_clock[0] = *St(2000, 7, 26, 12), g_clock[1] = *St(2024, 13, 1), L(vb::esGetDayNum) + " " + L<double>(vb::esSysNow)), "1 0 0 0.000000"},
        {Z(true, St(2024, 10, 14, 20)), toLocal}, {Z(false, St(2024, 2, 28, 23, 59, 59)), "0 -1 -1 " + std::to_string(bias) + " " + std::to_string(bias)},
        {Z(true, St(2400, 2, 29, 12, 1)), toLocal}, {Z(true, St(2024, 13, 1), 3e6), kept}, {Z(false, St(2024, 13, 1), 3e6), kept},
        {Detoured("SystemTimeToVariantTime", +[](SYSTEMTIME*, double*) WINAPI -> INT { return 0; }, [] { return Z(false, St(2024, 13, 1), 45579.5); }), kept},
        {L<VARIANT_BOOL>(vb::esSystemTimeToLocalSystemTime, nullptr, St(2024, 1, 1)), "E -7"},
        {L<VARIANT_BOOL>(vb::esLocalSystemTimeToSystemTime, St(2024, 1, 1), nullptr), "E -7"}, {L<VARIANT_BOOL>(vb::esLocalTimeToSystemTime, 45579.5, nullptr), "E -7"},
        {F(moment, 0, 0, 0).second, "2024-10-14|15.07.09"}, F(moment, 0, 0, 0), F(moment, 0, 1, 0), F(moment, 0, 0, -32768), F(moment, 0, -1, 1),
        F(moment, Vt(moment[0]), 0x7FFF, 0), F(moment, Vt(moment[0]), 0, -1), F(moment + 1, 0, 0, 0), F(nullptr, 3e6, 0, 0), {F(nullptr, 0, 0, 0).first, "-2147024809 old|old"},
        {Roman(0), "0"}, {Roman(1), "I"}, {Roman(8), "VIII"}, {Roman(49), "XLIX"}, {Roman(444), "CDXLIV"}, {Roman(999), "CMXCIX"}, {Roman(1666), "MDCLXVI"},
        {Roman(3999), "MMMCMXCIX"}, {Roman(4000), "MMMM"}, {Roman(-14), "-XIV"}, {Roman(-4009), "-MMMMIX"}};
    for (int i = 0; i < 2; ++i) SetLocaleInfoA(0x400, kinds[i], saved[i]);
    for (const auto& r : rows) EXPECT_EQ(r.second, r.first) << "row " << &r - rows;
}

}  // namespace
