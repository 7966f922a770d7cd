// Date and time text in the user's locale, and Roman numerals, through the
// exports. The date and time text must be the platform's own picture: the
// Win32 build runs these tests again under two host locales (LANG), and
// under the user's own pictures with and without LOCALE_NOUSEROVERRIDE.
#include <cstdlib>
#include <cstring>

#include "VbDeclares.h"

namespace {

SYSTEMTIME St(int y, int m, int d, int h = 0, int mi = 0, int s = 0) {
    SYSTEMTIME t = {static_cast<WORD>(y), static_cast<WORD>(m), 0, static_cast<WORD>(d),
                    static_cast<WORD>(h), static_cast<WORD>(mi), static_cast<WORD>(s), 0};
    return t;
}

// 14 October 2024, 15:07:09, both as a record and as an automation date.
const SYSTEMTIME kMoment = St(2024, 10, 14, 15, 7, 9);
const double kMomentDate = 45579.0 + (15 * 3600 + 7 * 60 + 9) / 86400.0;

// The ANSI text widened the way the platform does; kNull when it failed.
std::string Widened(const char* ansi, int length) {
    if (length == 0) return kNull;
    int n = MultiByteToWideChar(CP_ACP, 0, ansi, -1, nullptr, 0);
    std::u16string wide(static_cast<size_t>(n), u'\0');
    MultiByteToWideChar(CP_ACP, 0, ansi, -1, reinterpret_cast<LPWSTR>(&wide[0]), n);
    wide.resize(static_cast<size_t>(n) - 1);
    return Utf8(wide);
}

// What the platform itself writes for the record, asked directly.
std::string PlatformDate(SYSTEMTIME t, DWORD flags) {
    char text[256] = "";
    return Widened(text, GetDateFormatA(LOCALE_USER_DEFAULT, flags, &t, nullptr, text, sizeof text));
}

std::string PlatformTime(SYSTEMTIME t, DWORD flags) {
    char text[256] = "";
    return Widened(text, GetTimeFormatA(LOCALE_USER_DEFAULT, flags, &t, nullptr, text, sizeof text));
}

std::string Date(SYSTEMTIME t, VARIANT_BOOL longForm, VARIANT_BOOL noOverride) {
    Bstr out;
    EXPECT_EQ(S_OK, vb::esFormatDate(&t, longForm, noOverride, out.out()));
    return out.text();
}

std::string Time(SYSTEMTIME t, VARIANT_BOOL noSeconds, VARIANT_BOOL noOverride) {
    Bstr out;
    EXPECT_EQ(S_OK, vb::esFormatTime(&t, noSeconds, noOverride, out.out()));
    return out.text();
}

// The user's own picture for one item, put back when the test ends.
class UserPicture {
  public:
    UserPicture(LCTYPE type, const char* picture) : type_(type) {
        char saved[128] = "";
        saved_ok_ = GetLocaleInfoA(LOCALE_USER_DEFAULT, type, saved, sizeof saved) > 0;
        saved_ = saved;
        set_ok_ = SetLocaleInfoA(LOCALE_USER_DEFAULT, type, picture) != 0;
    }
    ~UserPicture() {
        if (saved_ok_) SetLocaleInfoA(LOCALE_USER_DEFAULT, type_, saved_.c_str());
    }
    bool ok() const { return saved_ok_ && set_ok_; }

  private:
    LCTYPE type_;
    std::string saved_;
    bool saved_ok_ = false, set_ok_ = false;
};

TEST(DateTimeFormat, IsThePlatformsPicture) {
    const SYSTEMTIME moments[] = {kMoment, St(2000, 7, 27, 0, 0, 0), St(1601, 1, 1, 12, 0, 59),
                                  St(30827, 12, 31, 23, 59, 59), St(2024, 2, 29, 9, 3, 4)};
    for (const SYSTEMTIME& t : moments) {
        for (VARIANT_BOOL first : {VARIANT_FALSE, VARIANT_TRUE}) {
            for (VARIANT_BOOL noOverride : {VARIANT_FALSE, VARIANT_TRUE}) {
                DWORD override = noOverride ? LOCALE_NOUSEROVERRIDE : 0;
                EXPECT_EQ(PlatformDate(t, (first ? DATE_LONGDATE : DATE_SHORTDATE) | override),
                          Date(t, first, noOverride));
                EXPECT_EQ(PlatformTime(t, (first ? TIME_NOSECONDS : 0) | override), Time(t, first, noOverride));
            }
        }
    }
}

// The text of the locales the tests know, so that two runs under two host
// locales show two different texts for one moment.
TEST(DateTimeFormat, KnownLocales) {
    struct Row {
        LCID locale;
        const char* shortDate;
        const char* longDateHas;
        const char* time;
        const char* timeNoSeconds;
    } rows[] = {
        {0x409, "10/14/2024", "Monday, October 14, 2024", "3:07:09 PM", "3:07 PM"},
        {0x419, "14.10.2024", "14 \xD0\xBE\xD0\xBA\xD1\x82\xD1\x8F\xD0\xB1\xD1\x80\xD1\x8F 2024", "15:07:09", "15:07"},
    };
    LCID locale = GetUserDefaultLCID();
#ifdef _WIN32
    // Wine takes the user's locale from the host's LANG.
    const char* lang = std::getenv("LANG");
    std::string host = lang ? lang : "";
    if (host.compare(0, 5, "ru_RU") == 0) {
        EXPECT_EQ(0x419u, locale);
    } else if (host.compare(0, 5, "en_US") == 0) {
        EXPECT_EQ(0x409u, locale);
    }
#endif
    const Row* row = nullptr;
    for (const Row& r : rows)
        if (r.locale == locale) row = &r;
    if (!row) GTEST_SKIP() << "no known text for locale " << locale;
    EXPECT_EQ(row->shortDate, Date(kMoment, VARIANT_FALSE, VARIANT_TRUE));
    EXPECT_NE(std::string::npos, Date(kMoment, VARIANT_TRUE, VARIANT_TRUE).find(row->longDateHas));
    EXPECT_EQ(row->time, Time(kMoment, VARIANT_FALSE, VARIANT_TRUE));
    EXPECT_EQ(row->timeNoSeconds, Time(kMoment, VARIANT_TRUE, VARIANT_TRUE));
}

// The user's own pictures count unless LOCALE_NOUSEROVERRIDE is asked for.
TEST(DateTimeFormat, UserPictures) {
    std::string standardDate = PlatformDate(kMoment, DATE_SHORTDATE | LOCALE_NOUSEROVERRIDE);
    std::string standardTime = PlatformTime(kMoment, LOCALE_NOUSEROVERRIDE);
    std::string standardShort = PlatformTime(kMoment, TIME_NOSECONDS | LOCALE_NOUSEROVERRIDE);
    UserPicture date(LOCALE_SSHORTDATE, "yyyy-MM-dd");
    UserPicture time(LOCALE_STIMEFORMAT, "HH.mm.ss");
    ASSERT_TRUE(date.ok() && time.ok());
    EXPECT_EQ("2024-10-14", Date(kMoment, VARIANT_FALSE, VARIANT_FALSE));
    EXPECT_EQ("15.07.09", Time(kMoment, VARIANT_FALSE, VARIANT_FALSE));
    // Without seconds the separator before them goes too.
    EXPECT_EQ("15.07", Time(kMoment, VARIANT_TRUE, VARIANT_FALSE));
    EXPECT_EQ(standardDate, Date(kMoment, VARIANT_FALSE, VARIANT_TRUE));
    EXPECT_EQ(standardTime, Time(kMoment, VARIANT_FALSE, VARIANT_TRUE));
    EXPECT_EQ(standardShort, Time(kMoment, VARIANT_TRUE, VARIANT_TRUE));
    EXPECT_NE("2024-10-14", standardDate);
    EXPECT_NE("15.07.09", standardTime);
}

TEST(DateTimeFormat, AnyNonzeroFlagCounts) {
    for (VARIANT_BOOL flag : {VARIANT_BOOL(1), VARIANT_BOOL(0x7FFF), VARIANT_BOOL(-32768), VARIANT_BOOL(-1)}) {
        EXPECT_EQ(PlatformDate(kMoment, DATE_LONGDATE | LOCALE_NOUSEROVERRIDE), Date(kMoment, flag, flag)) << flag;
        EXPECT_EQ(PlatformTime(kMoment, TIME_NOSECONDS | LOCALE_NOUSEROVERRIDE), Time(kMoment, flag, flag)) << flag;
    }
}

// What the platform declines comes back as an empty text (a null BSTR),
// with status 0; a time is formatted whatever the date fields hold.
TEST(DateTimeFormat, RefusedRecords) {
    struct Row {
        SYSTEMTIME t;
        bool date;
        bool empty;
    } rows[] = {
        {St(2024, 13, 1, 15, 7, 9), true, true},  {St(2024, 10, 32), true, true},
        {St(1600, 12, 31), true, true},           {St(0, 0, 0), true, true},
        {St(2024, 10, 14, 24), false, true},      {St(2024, 10, 14, 15, 60), false, true},
        {St(2024, 13, 1, 15, 7, 9), false, false}, {St(0, 0, 0), false, false},
    };
    for (auto& row : rows) {
        Bstr out("old text");
        HRESULT status = row.date ? vb::esFormatDate(&row.t, VARIANT_FALSE, VARIANT_FALSE, out.out())
                                  : vb::esFormatTime(&row.t, VARIANT_FALSE, VARIANT_FALSE, out.out());
        EXPECT_EQ(S_OK, status);
        if (row.empty) EXPECT_EQ(kNull, out.text()) << row.t.wYear << "-" << row.t.wMonth << " " << row.t.wHour;
        else EXPECT_EQ(PlatformTime(row.t, 0), out.text());
    }
}

TEST(DateTimeFormat, AutomationDates) {
    for (VARIANT_BOOL first : {VARIANT_FALSE, VARIANT_TRUE}) {
        Bstr date, time;
        EXPECT_EQ(S_OK, vb::esFormatDate2(kMomentDate, first, VARIANT_FALSE, date.out()));
        EXPECT_EQ(S_OK, vb::esFormatTime2(kMomentDate, first, VARIANT_FALSE, time.out()));
        EXPECT_EQ(Date(kMoment, first, VARIANT_FALSE), date.text());
        EXPECT_EQ(Time(kMoment, first, VARIANT_FALSE), time.text());
    }
    // Outside the automation range the record stays all zero: no date, and
    // the time of the zero record.
    Bstr date("old"), time("old");
    EXPECT_EQ(S_OK, vb::esFormatDate2(3e6, VARIANT_FALSE, VARIANT_FALSE, date.out()));
    EXPECT_EQ(S_OK, vb::esFormatTime2(3e6, VARIANT_FALSE, VARIANT_FALSE, time.out()));
    EXPECT_EQ(kNull, date.text());
    EXPECT_EQ(PlatformTime(St(0, 0, 0), 0), time.text());
}

TEST(DateTimeFormat, NullPointers) {
    SYSTEMTIME t = kMoment;
    Bstr out("untouched");
    EXPECT_EQ(S_FALSE, vb::esFormatDate(nullptr, VARIANT_FALSE, VARIANT_FALSE, nullptr));
    EXPECT_EQ(S_FALSE, vb::esFormatTime(nullptr, VARIANT_FALSE, VARIANT_FALSE, nullptr));
    EXPECT_EQ(S_FALSE, vb::esFormatDate(&t, VARIANT_FALSE, VARIANT_FALSE, nullptr));
    EXPECT_EQ(E_INVALIDARG, vb::esFormatDate(nullptr, VARIANT_FALSE, VARIANT_FALSE, out.out()));
    EXPECT_EQ(E_INVALIDARG, vb::esFormatTime(nullptr, VARIANT_FALSE, VARIANT_FALSE, out.out()));
    EXPECT_EQ("untouched", out.text());
    EXPECT_EQ(S_FALSE, vb::esFormatDate2(kMomentDate, VARIANT_FALSE, VARIANT_FALSE, nullptr));
    EXPECT_EQ(S_FALSE, vb::esFormatTime2(kMomentDate, VARIANT_FALSE, VARIANT_FALSE, nullptr));
    EXPECT_EQ(S_FALSE, vb::esFormatRoman(1994, nullptr));
}

// ---- Roman numerals

std::string Roman(LONG n) {
    Bstr out("old");
    EXPECT_EQ(S_OK, vb::esFormatRoman(n, out.out()));
    return out.text();
}

TEST(RomanNumerals, Table) {
    struct Row {
        LONG n;
        const char* text;
    } rows[] = {
        {0, "0"},        {1, "I"},          {3, "III"},      {4, "IV"},        {5, "V"},
        {8, "VIII"},     {9, "IX"},         {14, "XIV"},     {40, "XL"},       {49, "XLIX"},
        {90, "XC"},      {400, "CD"},       {444, "CDXLIV"}, {900, "CM"},      {999, "CMXCIX"},
        {1994, "MCMXCIV"}, {2024, "MMXXIV"}, {3999, "MMMCMXCIX"}, {4000, "MMMM"}, {5000, "MMMMM"},
        {-1, "-I"},      {-14, "-XIV"},     {-4009, "-MMMMIX"},
    };
    for (const auto& row : rows) EXPECT_EQ(row.text, Roman(row.n)) << row.n;
}

// Read back by the ordinary rule (a smaller letter before a larger one is
// taken away), every text from 1 to 5000 gives its number, and no letter
// but M runs more than three times.
TEST(RomanNumerals, ReadBack) {
    auto value = [](char c) {
        switch (c) {
            case 'I': return 1;
            case 'V': return 5;
            case 'X': return 10;
            case 'L': return 50;
            case 'C': return 100;
            case 'D': return 500;
            case 'M': return 1000;
        }
        return -100000;
    };
    int failures = 0;
    for (LONG n = 1; n <= 5000; ++n) {
        std::string text = Roman(n);
        long total = 0;
        int run = 1;
        for (size_t i = 0; i < text.size(); ++i) {
            int v = value(text[i]);
            total += i + 1 < text.size() && v < value(text[i + 1]) ? -v : v;
            run = i > 0 && text[i] == text[i - 1] ? run + 1 : 1;
            if (run > 3 && text[i] != 'M') total = -1;
        }
        if (total != n && ++failures <= 5) ADD_FAILURE() << n << " came out as " << text;
    }
    EXPECT_EQ(0, failures);
}

// The extreme Longs: some two million letters, exact, built in linear time.
TEST(RomanNumerals, ExtremeLongs) {
    struct Row {
        LONG n;
        const char* sign;
        const char* tail;
    } rows[] = {
        {2147483647, "", "DCXLVII"},
        {static_cast<LONG>(-2147483647 - 1), "-", "DCXLVIII"},
    };
    for (const auto& row : rows) {
        Bstr out;
        EXPECT_EQ(S_OK, vb::esFormatRoman(row.n, out.out()));
        std::string expected = std::string(row.sign) + std::string(2147483, 'M') + row.tail;
        EXPECT_TRUE(out.text() == expected) << row.n << ": " << out.text().size() << " letters";
    }
}

}  // namespace
