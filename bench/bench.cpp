// Times the exports of CorvaneSupportKit0100.dll, called as a Visual Basic
// program calls them, against a floor measured in the same run: for a text
// export, SysReAllocString of its answer from a BSTR of the same length,
// which is the least any text answer costs.
#include <windows.h>
#include <oleauto.h>

#include <cstdio>
#include <string>

namespace {

HMODULE library;

double Now() {
    LARGE_INTEGER counter, frequency;
    QueryPerformanceCounter(&counter);
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(counter.QuadPart) / static_cast<double>(frequency.QuadPart);
}

BSTR Make(const char* s) {
    int n = MultiByteToWideChar(CP_ACP, 0, s, -1, nullptr, 0);
    BSTR b = SysAllocStringLen(nullptr, n - 1);
    MultiByteToWideChar(CP_ACP, 0, s, -1, b, n);
    return b;
}

// Nanoseconds per call of body, over enough calls to be stable: the best of
// five rounds.
template <class Body>
double NanosecondsPerCall(Body body) {
    const int calls = 200000;
    double best = 1e30;
    for (int round = 0; round < 5; ++round) {
        double start = Now();
        for (int i = 0; i < calls; ++i) body();
        double each = (Now() - start) / calls * 1e9;
        if (each < best) best = each;
    }
    return best;
}

// The floor of a text export: replacing a BSTR variable with text of the
// answer's length.
double TextFloor(size_t length) {
    BSTR source = SysAllocStringLen(nullptr, static_cast<UINT>(length));
    for (size_t i = 0; i < length; ++i) source[i] = L'a';
    BSTR variable = nullptr;
    double ns = NanosecondsPerCall([&] { SysReAllocString(&variable, source); });
    SysFreeString(variable);
    SysFreeString(source);
    return ns;
}

void Report(const char* name, const char* what, double ns, double floor) {
    std::printf("%-24s %-34s %8.1f ns %8.1f ns %6.2fx\n", name, what, ns, floor, ns / floor);
}

// An export by its plain name, as a Declare statement finds it.
template <class F>
F Bind(const char* name) {
    return reinterpret_cast<F>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

typedef HRESULT(WINAPI* TextToText)(BSTR, BSTR*);
typedef HRESULT(WINAPI* BuildFileName)(BSTR, BSTR, VARIANT_BOOL, BSTR*);
typedef HRESULT(WINAPI* BuildFileName2)(BSTR, BSTR, BSTR, BSTR, BSTR, BSTR, BSTR, BSTR, BSTR, BSTR*);

void BenchTextToText(const char* name, const char* input) {
    auto f = Bind<TextToText>(name);
    if (!f) return;
    BSTR in = Make(input), out = nullptr;
    f(in, &out);
    size_t answer = out ? SysStringLen(out) : 0;
    double ns = NanosecondsPerCall([&] { f(in, &out); });
    Report(name, (std::to_string(SysStringLen(in)) + " chars").c_str(), ns, TextFloor(answer));
    SysFreeString(in);
    SysFreeString(out);
}

typedef HRESULT(WINAPI* DayNumber)(SYSTEMTIME*, LONG*);
typedef HRESULT(WINAPI* RecordText)(SYSTEMTIME*, VARIANT_BOOL, VARIANT_BOOL, BSTR*);
typedef HRESULT(WINAPI* RomanText)(LONG, BSTR*);

// Dates and formats: a value answer against a plain call of the platform's
// calendar, and two text answers against their SysReAllocString floors.
void BenchDatesAndFormats() {
    SYSTEMTIME date = {2024, 10, 1, 14, 15, 7, 9, 0};
    if (auto f = Bind<DayNumber>("esGetDayNumEx")) {
        LONG day = 0;
        FILETIME t;
        double floor = NanosecondsPerCall([&] { SystemTimeToFileTime(&date, &t); });
        double ns = NanosecondsPerCall([&] { f(&date, &day); });
        Report("esGetDayNumEx", "14 Oct 2024 (SystemTimeToFileTime)", ns, floor);
    }
    if (auto f = Bind<RecordText>("esFormatDate")) {
        BSTR out = nullptr;
        f(&date, VARIANT_TRUE, VARIANT_FALSE, &out);
        double ns = NanosecondsPerCall([&] { f(&date, VARIANT_TRUE, VARIANT_FALSE, &out); });
        Report("esFormatDate", "long form", ns, TextFloor(SysStringLen(out)));
        // The two passes of the platform alone, for comparison.
        char text[128];
        double platform = NanosecondsPerCall([&] {
            GetDateFormatA(LOCALE_USER_DEFAULT, DATE_LONGDATE, &date, nullptr, nullptr, 0);
            GetDateFormatA(LOCALE_USER_DEFAULT, DATE_LONGDATE, &date, nullptr, text, sizeof text);
        });
        Report("  GetDateFormatA x2", "long form, the platform's share", platform, TextFloor(SysStringLen(out)));
        SysFreeString(out);
    }
    if (auto f = Bind<RomanText>("esFormatRoman")) {
        BSTR out = nullptr;
        f(1994, &out);
        double ns = NanosecondsPerCall([&] { f(1994, &out); });
        Report("esFormatRoman", "1994", ns, TextFloor(SysStringLen(out)));
        SysFreeString(out);
    }
}

}  // namespace

int main() {
    library = LoadLibraryA("CorvaneSupportKit0100.dll");
    if (!library) {
        std::printf("CorvaneSupportKit0100.dll did not load\n");
        return 1;
    }
    std::printf("%-24s %-34s %11s %11s %7s\n", "export", "input", "per call", "floor", "ratio");
    BenchTextToText("esAddBackslash", "C:\\Program Files\\Corvane\\Data");
    BenchTextToText("esRemoveBackslash", "C:\\Program Files\\Corvane\\Data\\");
    if (auto f = Bind<BuildFileName>("esBuildFileName")) {
        BSTR folder = Make("C:\\Program Files\\Corvane"), file = Make("report.txt"), out = nullptr;
        f(folder, file, VARIANT_FALSE, &out);
        double ns = NanosecondsPerCall([&] { f(folder, file, VARIANT_FALSE, &out); });
        Report("esBuildFileName", "folder + name", ns, TextFloor(SysStringLen(out)));
        SysFreeString(folder), SysFreeString(file), SysFreeString(out);
    }
    if (auto f = Bind<BuildFileName2>("esBuildFileName2")) {
        BSTR a = Make("C:\\"), b = Make("Program Files"), c = Make("Corvane\\"), d = Make("report.txt"), out = nullptr;
        f(a, b, c, d, nullptr, nullptr, nullptr, nullptr, nullptr, &out);
        double ns = NanosecondsPerCall([&] { f(a, b, c, d, nullptr, nullptr, nullptr, nullptr, nullptr, &out); });
        Report("esBuildFileName2", "4 of 9 elements", ns, TextFloor(SysStringLen(out)));
        SysFreeString(a), SysFreeString(b), SysFreeString(c), SysFreeString(d), SysFreeString(out);
    }
    BenchDatesAndFormats();
    return 0;
}
