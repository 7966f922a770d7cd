// One locale, English (United States): its date and time pictures, the
// user's own pictures that SetLocaleInfoA stores over them, and
// GetDateFormatA / GetTimeFormatA, which fill a picture from a record.
#include <cstring>
#include <string>

#include "winsim.h"
#include "winsim_control.h"

namespace {

const char* const kDayNames[7] = {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};
const char* const kMonthNames[12] = {"January", "February", "March",     "April",   "May",      "June",
                                     "July",    "August",   "September", "October", "November", "December"};

struct Picture {
    LCTYPE type;
    const char* standard;
    std::string user;
};

Picture pictures[] = {
    {LOCALE_SSHORTDATE, "M/d/yyyy", "M/d/yyyy"},
    {LOCALE_SLONGDATE, "dddd, MMMM d, yyyy", "dddd, MMMM d, yyyy"},
    {LOCALE_STIMEFORMAT, "h:mm:ss tt", "h:mm:ss tt"},
};

bool knownLocale(LCID locale) {
    return locale == 0 || locale == LOCALE_USER_DEFAULT || locale == LOCALE_SYSTEM_DEFAULT || locale == 0x409;
}

Picture* findPicture(LCTYPE type) {
    for (Picture& p : pictures)
        if (p.type == type) return &p;
    return nullptr;
}

std::string pictureOf(LCTYPE type, DWORD flags) {
    Picture* p = findPicture(type);
    return flags & LOCALE_NOUSEROVERRIDE ? p->standard : p->user;
}

// Copies text out the platform's way: size 0 asks for the length with the
// terminator; a buffer that is too small is an error.
int answer(const std::string& text, LPSTR buffer, int size) {
    int needed = static_cast<int>(text.size()) + 1;
    if (size == 0) return needed;
    if (size < needed) {
        SetLastError(122);  // ERROR_INSUFFICIENT_BUFFER
        return 0;
    }
    std::memcpy(buffer, text.c_str(), static_cast<size_t>(needed));
    return needed;
}

bool isLeap(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

int daysInMonth(int year, int month) {
    static const int lengths[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && isLeap(year) ? 29 : lengths[month - 1];
}

// 0 is Sunday; the record's own wDayOfWeek is not trusted.
int dayOfWeek(int year, int month, int day) {
    int64_t y = year - 1;
    int64_t days = 365 * y + y / 4 - y / 100 + y / 400 + day - 1;
    for (int m = 1; m < month; ++m) days += daysInMonth(year, m);
    return static_cast<int>((days + 1) % 7);
}

std::string number(int value, int width) {
    std::string digits = std::to_string(value);
    if (static_cast<int>(digits.size()) < width) digits.insert(0, static_cast<size_t>(width) - digits.size(), '0');
    return digits;
}

// Fills a picture. Runs of one letter are the fields; text in single quotes
// ('' for a quote) and every other character stand as they are. `skip`
// names the time fields that a flag leaves out: each goes together with the
// text between it and the field before it.
std::string fill(const std::string& picture, const SYSTEMTIME& t, bool force24, const char* skip) {
    std::string out;
    size_t afterField = 0;  // where the text behind the last field began
    for (size_t i = 0; i < picture.size();) {
        char c = picture[i];
        if (c == '\'') {
            size_t j = i + 1;
            for (; j < picture.size(); ++j) {
                if (picture[j] != '\'') out += picture[j];
                else if (j + 1 < picture.size() && picture[j + 1] == '\'') out += picture[j++];
                else break;
            }
            i = j + 1;
            continue;
        }
        if (!std::strchr("dMygHhmst", c)) {
            out += c;
            ++i;
            continue;
        }
        size_t run = 1;
        while (i + run < picture.size() && picture[i + run] == c) ++run;
        i += run;
        if (std::strchr(skip, c)) {
            out.resize(afterField);
            continue;
        }
        int hour12 = t.wHour % 12 == 0 ? 12 : t.wHour % 12;
        switch (c) {
            case 'd':
                if (run <= 2) out += number(t.wDay, static_cast<int>(run));
                else out += std::string(kDayNames[dayOfWeek(t.wYear, t.wMonth, t.wDay)]).substr(0, run == 3 ? 3 : 99);
                break;
            case 'M':
                if (run <= 2) out += number(t.wMonth, static_cast<int>(run));
                else out += std::string(kMonthNames[t.wMonth - 1]).substr(0, run == 3 ? 3 : 99);
                break;
            case 'y':
                out += run >= 3 ? number(t.wYear, 4) : number(t.wYear % 100, static_cast<int>(run));
                break;
            case 'g':
                out += "A.D.";
                break;
            case 'h':
            case 'H':
                out += number(c == 'H' || force24 ? t.wHour : hour12, run >= 2 ? 2 : 1);
                break;
            case 'm':
                out += number(t.wMinute, run >= 2 ? 2 : 1);
                break;
            case 's':
                out += number(t.wSecond, run >= 2 ? 2 : 1);
                break;
            case 't':
                out += std::string(t.wHour < 12 ? "AM" : "PM").substr(0, run >= 2 ? 2 : 1);
                break;
        }
        afterField = out.size();
    }
    return out;
}

// The record to format: the caller's, or the local time now.
SYSTEMTIME recordOrNow(const SYSTEMTIME* given) {
    SYSTEMTIME t;
    if (given) t = *given;
    else GetLocalTime(&t);
    return t;
}

}  // namespace

extern "C" {

LCID WINAPI GetUserDefaultLCID(void) { return 0x409; }

int WINAPI GetLocaleInfoA(LCID locale, LCTYPE type, LPSTR data, int size) {
    if (winsim::refuse("GetLocaleInfoA")) return 0;
    if (!knownLocale(locale) || !findPicture(type & ~LOCALE_NOUSEROVERRIDE) || size < 0 || (size > 0 && !data)) {
        SetLastError(87);
        return 0;
    }
    return answer(pictureOf(type & ~LOCALE_NOUSEROVERRIDE, type), data, size);
}

BOOL WINAPI SetLocaleInfoA(LCID locale, LCTYPE type, LPCSTR data) {
    if (winsim::refuse("SetLocaleInfoA")) return FALSE;
    Picture* p = findPicture(type);
    if (!knownLocale(locale) || !p || !data) {
        SetLastError(87);
        return FALSE;
    }
    p->user = data;
    return TRUE;
}

int WINAPI GetDateFormatA(LCID locale, DWORD flags, const SYSTEMTIME* date, LPCSTR picture, LPSTR buffer,
                          int size) {
    if (winsim::refuse("GetDateFormatA")) return 0;
    DWORD form = flags & ~LOCALE_NOUSEROVERRIDE;
    if (!knownLocale(locale) || size < 0 || (size > 0 && !buffer)) {
        SetLastError(87);
        return 0;
    }
    if ((form & ~3u) || form == 3 || (picture && form)) {
        SetLastError(1004);  // ERROR_INVALID_FLAGS
        return 0;
    }
    SYSTEMTIME t = recordOrNow(date);
    if (t.wYear < 1601 || t.wYear > 30827 || t.wMonth < 1 || t.wMonth > 12 || t.wDay < 1 ||
        t.wDay > daysInMonth(t.wYear, t.wMonth)) {
        SetLastError(87);
        return 0;
    }
    std::string shape = picture ? picture : pictureOf(form == DATE_LONGDATE ? LOCALE_SLONGDATE : LOCALE_SSHORTDATE, flags);
    return answer(fill(shape, t, false, ""), buffer, size);
}

int WINAPI GetTimeFormatA(LCID locale, DWORD flags, const SYSTEMTIME* time, LPCSTR picture, LPSTR buffer,
                          int size) {
    if (winsim::refuse("GetTimeFormatA")) return 0;
    if (!knownLocale(locale) || size < 0 || (size > 0 && !buffer)) {
        SetLastError(87);
        return 0;
    }
    if (flags & ~(LOCALE_NOUSEROVERRIDE | 0xFu)) {
        SetLastError(1004);
        return 0;
    }
    // Only the time of day is looked at.
    SYSTEMTIME t = recordOrNow(time);
    if (t.wHour > 23 || t.wMinute > 59 || t.wSecond > 59 || t.wMilliseconds > 999) {
        SetLastError(87);
        return 0;
    }
    std::string skip;
    if (flags & (TIME_NOSECONDS | TIME_NOMINUTESORSECONDS)) skip += 's';
    if (flags & TIME_NOMINUTESORSECONDS) skip += 'm';
    if (flags & TIME_NOTIMEMARKER) skip += 't';
    std::string shape = picture ? picture : pictureOf(LOCALE_STIMEFORMAT, flags);
    return answer(fill(shape, t, (flags & TIME_FORCE24HOURFORMAT) != 0, skip.c_str()), buffer, size);
}

}  // extern "C"
