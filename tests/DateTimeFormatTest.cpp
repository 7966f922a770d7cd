// Date and time text in the user's locale, and Roman numerals, through the
// exports. The date and time text must be the platform's own picture: the
// Win32 build runs these tests again under two host locales (LANG).
#include <cstdlib>

#include "VbDeclares.h"

namespace {

const SYSTEMTIME kMoment = {2024, 10, 1, 14, 15, 7, 9, 0};  // Monday 14 October 2024, 15:07:09

// What the platform itself writes for the record, asked directly and widened
// as the platform widens; kNull when it declines.
std::string Platform(bool date, SYSTEMTIME t, DWORD flags) {
    char text[256] = "";
    char16_t wide[256] = u"";
    if (!(date ? GetDateFormatA : GetTimeFormatA)(LOCALE_USER_DEFAULT, flags, &t, nullptr, text, 256)) return kNull;
    MultiByteToWideChar(CP_ACP, 0, text, -1, reinterpret_cast<LPWSTR>(wide), 256);
    return Utf8(wide);
}

// The four exports: a date (long form, else short) or a time (without
// seconds, else with them), of a record or of an automation date. Each is
// asked once more without an answer pointer: status 1, whatever else.
enum Form { kDate, kTime, kDate2, kTime2 };
std::string Text(Form form, SYSTEMTIME t, double when, VARIANT_BOOL first = 0, VARIANT_BOOL noOverride = 0) {
    auto call = [&](BSTR* out) {
        return form == kDate   ? vb::esFormatDate(&t, first, noOverride, out)
               : form == kTime ? vb::esFormatTime(&t, first, noOverride, out)
                               : (form == kDate2 ? vb::esFormatDate2 : vb::esFormatTime2)(when, first, noOverride, out);
    };
    Bstr out("old text");
    EXPECT_TRUE(call(out.out()) == S_OK && call(nullptr) == S_FALSE) << form;
    return out.text();
}

// Each form is the platform's own picture, any nonzero flag counting as set;
// an automation date gives the text of its record.
TEST(DateTimeFormat, IsThePlatformsPicture) {
    for (SYSTEMTIME t : {kMoment, SYSTEMTIME{2000, 7, 4, 27, 0, 0, 0, 0}, SYSTEMTIME{1601, 1, 1, 1, 12, 0, 59, 0},
                         SYSTEMTIME{30827, 12, 0, 31, 23, 59, 59, 0}}) {
        double when = 0;
        bool hasDate = SystemTimeToVariantTime(&t, &when) != 0;
        for (VARIANT_BOOL flag : {0, -1, 1, 0x7FFF, -32768}) {
            std::string date = Platform(true, t, flag ? DATE_LONGDATE | LOCALE_NOUSEROVERRIDE : DATE_SHORTDATE);
            std::string time = Platform(false, t, flag ? TIME_NOSECONDS | LOCALE_NOUSEROVERRIDE : 0);
            EXPECT_EQ(date + time, Text(kDate, t, 0, flag, flag) + Text(kTime, t, 0, flag, flag)) << t.wYear;
            if (!hasDate) continue;  // past 9999, no automation date
            EXPECT_EQ(date + time, Text(kDate2, t, when, flag, flag) + Text(kTime2, t, when, flag, flag)) << when;
        }
    }
}

// The text of the two locales the Win32 runs use (Wine takes the user's
// locale from the host's LANG), so that they show two different texts.
TEST(DateTimeFormat, KnownLocales) {
    LCID locale = GetUserDefaultLCID();
#ifdef _WIN32
    std::string lang = std::getenv("LANG") ? std::getenv("LANG") : "";
    EXPECT_TRUE(lang.compare(0, 5, "ru_RU") ? lang.compare(0, 5, "en_US") || locale == 0x409 : locale == 0x419) << lang;
#endif
    const char* known = locale == 0x409 ? "10/14/2024 3:07:09 PM" : locale == 0x419 ? "14.10.2024 15:07:09" : nullptr;
    if (!known) GTEST_SKIP() << "no known text for locale " << locale;
    EXPECT_EQ(known, Text(kDate, kMoment, 0, 0, -1) + " " + Text(kTime, kMoment, 0, 0, -1));
}

// The user's own pictures count unless LOCALE_NOUSEROVERRIDE is asked for.
TEST(DateTimeFormat, UserPictures) {
    char date[128] = "", time[128] = "";
    ASSERT_TRUE(GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SSHORTDATE, date, sizeof date) &&
                GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_STIMEFORMAT, time, sizeof time));
    std::string standard = Platform(true, kMoment, DATE_SHORTDATE | LOCALE_NOUSEROVERRIDE) +
                           Platform(false, kMoment, LOCALE_NOUSEROVERRIDE);
    EXPECT_TRUE(SetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SSHORTDATE, "yyyy-MM-dd") &&
                SetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_STIMEFORMAT, "HH.mm.ss"));
    EXPECT_EQ("2024-10-14 15.07.09", Text(kDate, kMoment, 0) + " " + Text(kTime, kMoment, 0));
    EXPECT_EQ(standard, Text(kDate, kMoment, 0, 0, 1) + Text(kTime, kMoment, 0, 0, -32768));
    EXPECT_TRUE(standard.find("2024-10-14") == std::string::npos && standard.find("15.07.09") == std::string::npos);
    SetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SSHORTDATE, date);
    SetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_STIMEFORMAT, time);
}

// What the platform declines comes back as an empty text (a null BSTR) with
// status 0; a time is formatted whatever the date fields hold. An automation
// date out of range leaves the record all zero. A missing record is
// E_INVALIDARG, but a missing answer pointer is status 1 before it.
TEST(DateTimeFormat, RefusalsAndNullPointers) {
    struct Row { Form form; SYSTEMTIME t; double when; bool empty; } rows[] = {
        {kDate, {2024, 13, 0, 1, 15, 7, 9, 0}, 0, true},  {kDate, {1600, 12, 0, 31, 0, 0, 0, 0}, 0, true},
        {kDate2, {}, 3e6, true},                          {kTime, {2024, 10, 0, 14, 24, 0, 0, 0}, 0, true},
        {kTime, {2024, 13, 0, 1, 15, 7, 9, 0}, 0, false}, {kTime2, {}, 3e6, false},
    };
    for (auto& row : rows)
        EXPECT_EQ(row.empty ? kNull : Platform(false, row.t, 0), Text(row.form, row.t, row.when)) << &row - rows;
    Bstr out("untouched");
    EXPECT_EQ(S_FALSE, vb::esFormatDate(nullptr, 0, 0, nullptr));
    EXPECT_EQ(E_INVALIDARG, vb::esFormatDate(nullptr, 0, 0, out.out()));
    EXPECT_EQ(E_INVALIDARG, vb::esFormatTime(nullptr, 0, 0, out.out()));
    EXPECT_EQ("untouched", out.text());
}

// ---- Roman numerals: 0 as "0", a minus sign before a negative number, and
// the thousands as a run of M with no upper limit, up to the extreme Longs
// (some two million letters; the lowest one's magnitude does not fit a Long).
TEST(RomanNumerals, Table) {
    const std::string millions(2147483, 'M');
    struct Row { LONG n; std::string text; } rows[] = {
        // Every subtractive pair shows in 444, 999 and 1994; every single letter in 1666.
        {0, "0"},          {1, "I"},           {8, "VIII"},      {49, "XLIX"},       {444, "CDXLIV"},
        {999, "CMXCIX"},   {1666, "MDCLXVI"},  {1994, "MCMXCIV"}, {3999, "MMMCMXCIX"}, {4000, "MMMM"},
        {-1, "-I"},        {-4009, "-MMMMIX"},
        {2147483647, millions + "DCXLVII"}, {-2147483647 - 1, "-" + millions + "DCXLVIII"},
    };
    for (const auto& row : rows) {
        Bstr out("old");
        EXPECT_TRUE(vb::esFormatRoman(row.n, out.out()) == S_OK && vb::esFormatRoman(row.n, nullptr) == S_FALSE);
        EXPECT_TRUE(out.text() == row.text) << row.n << " came out as " << out.text().substr(0, 40);
    }
}

}  // namespace
