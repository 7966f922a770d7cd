// Colours, bits, number and Boolean text, random numbers and GUIDs through
// the exports, in one table. A value answer lands in a variable filled with
// 0xCC, so the width an export writes shows in the answer (true is -1 in two
// bytes, never 1). The counter, the cryptographic provider and the GUID
// source are detoured to fixed answers; the calls that matter are logged.
#include <tuple>

#include "Detour.h"
#include "VbDeclares.h"

namespace {

// "status answer" in hexadecimal, the answer's variable (whatever its type,
// the export's last argument) read as 32 bits; the text of a text export,
// after a status unless it is 0.
std::string X(DWORD value, HRESULT status = 0) { char t[24]; return snprintf(t, sizeof t, "%lx %08lx", status, value), t; }
template <class... A> using Last = std::tuple_element_t<sizeof...(A) - 1, std::tuple<A...>>;
template <class R, class... A, class... In> std::string V(const VbFunction<R, A...>& f, In... in) { uint32_t w = 0xCCCCCCCC; HRESULT s = f(in..., Last<A...>(&w)); return X(w, s); }
template <class F, class... In> std::string T(const F& f, In... in) { Bstr t("stale"); HRESULT s = f(in..., t.out()); return (s ? std::to_string(s) + " " : "") + t.text(); }
std::string Log(const std::string& answer) { const std::string calls = g_calls; return g_calls.clear(), answer + calls; }
template <class F> std::string Detoured(const char* name, F fake, const std::function<std::string()>& row) { Detour d(name, fake); return row(); }

// The random number as the word it was made of, exactly a multiple of 2^-32;
// the provider's calls during n draws. The staged counter (its low 32 bits
// are the seed), and what acquiring the provider answers (only exactly 1
// counts as success).
std::string R(VARIANT_BOOL repeat) { double v = -1; char t[24]; return vb::esRnd(repeat, &v), snprintf(t, sizeof t, "%.1f", v * 0x1p32), t; }
std::string Draw(int n) { double v; while (n--) vb::esRnd(0, &v); return Log(""); }
struct { LONGLONG counter; BOOL acquired; } g_random = {0x500000001, TRUE};

// A Byte travels in a 32-bit slot whose high bits are whatever they were.
const VbFunction<HRESULT, uint32_t, uint32_t, SHORT*> makeWordWide{"esMakeWord"};

// Colours: a component out of range in any place is refused, never clamped;
// the desktop's context is given back (D), a caller's is not. Shifts: a count
// outside 1 to 31 is status 1 with the value unchanged; zeros come in from
// either side. Random numbers: nothing drawn yet is 0; the provider's words
// go out untempered; span times v plus low rounds to the nearest whole
// number, a tie to the even one, then is held within low and high; a new
// batch at the 625th draw. The Twister seeded with 1 gives its fixed words,
// after the last number again; with no counter it is seeded from the tick
// count whatever was asked; a provider that refuses hands the source to the
// Twister until the next seeding.
TEST(Numbers, Table) {
    FreshLibrary fresh;  // the random source not yet seeded
    Detour counter("QueryPerformanceCounter", +[](LARGE_INTEGER* c) WINAPI -> BOOL { return c->QuadPart = g_random.counter, g_random.counter != 0; });
    Detour tick("GetTickCount", +[]() WINAPI -> DWORD { return 1; });
    Detour acquire("CryptAcquireContextA", +[](HCRYPTPROV* p, LPCSTR c, LPCSTR n, DWORD type, DWORD flags) WINAPI -> BOOL {
        return g_calls += c || n || type != PROV_RSA_FULL || flags ? "?" : "A", *p = 7, g_random.acquired; });
    Detour fill("CryptGenRandom", +[](HCRYPTPROV p, DWORD n, BYTE* b) WINAPI -> BOOL {  // words 0x80000000, 0xFFFFFFFF, 0x19999999, 0xE6666666, 0...
        return memset(b, 0, n), memcpy(b, "\0\0\0\x80\xFF\xFF\xFF\xFF\x99\x99\x99\x19\x66\x66\x66\xE6", 16), g_calls += p == 7 && n == 2496 ? "G" : "?", TRUE; });
    Detour release("CryptReleaseContext", +[](HCRYPTPROV p, DWORD f) WINAPI -> BOOL { return g_calls += p == 7 && !f ? "R" : "?", TRUE; });
    Detour releaseDc("ReleaseDC", +[](HWND w, HDC dc) WINAPI -> int { return g_calls += "D", ReleaseDC(w, dc); });
    const auto refuse = +[](OLE_COLOR, HPALETTE, COLORREF*) WINAPI -> HRESULT { return E_FAIL; };
    const auto guid = +[](GUID* g) WINAPI -> HRESULT { return *g = {0x00112233, 0x4455, 0x6677, {0x88, 0x99, 0xAA, 0xBB, 0xCC, 0xDD, 0xEE, 0xFF}}, S_OK; };
    const LONG kSys = LONG(0x80000000);
    const std::string no = "80070057 cccccccc";  // refused, the answer unwritten
    const std::pair<std::string, std::string> rows[] = {
        {V(vb::esRGB, 1, 2, 255), "0 00ff0201"}, {V(vb::esD3DRGBA, 1, 2, 3, 255), "0 ff010203"}, {V(vb::esD3DARGB, 4, 1, 2, 3), "0 04010203"},
        {V(vb::esD3DXRGB, 0, 2, 3), "0 ff000203"}, {V(vb::esRGB, 256, 0, 0), no}, {V(vb::esRGB, 0, 0, 256), no}, {V(vb::esD3DXRGB, 0, 256, 0), no},
        {V(vb::esD3DXRGB, 0, 0, -1), no}, {V(vb::esD3DRGBA, 256, 0, 0, 0), no}, {V(vb::esD3DRGBA, 0, -1, 0, 0), no}, {V(vb::esD3DRGBA, 0, 0, 0, -1), no},
        {V(vb::esD3DARGB, 256, 0, 0, 0), no}, {V(vb::esD3DARGB, 0, 0, 256, 0), no}, {V(vb::esD3DARGB, 0, 0, 0, INT32_MIN), no},
        {V(vb::esGetRedD3DRGBA, 0x04C80203), "0 000000c8"}, {V(vb::esGetGreenD3DRGBA, 0x0401FE03), "0 000000fe"}, {V(vb::esGetBlueD3DRGBA, 0x040102FF), "0 000000ff"},
        {V(vb::esGetAlphaD3DRGBA, kSys), "0 00000080"}, {V(vb::esRGBtoD3DRGBA, kSys | 0x0201), "0 ff010200"}, {V(vb::esD3DRGBAtoRGB, 0x12345678), "0 00785634"},
        {V(vb::esPaletteRGB, kSys | 5), "0 82000005"}, {V(vb::esGetRedRGB, 0x02030201), "0 00000001"}, {V(vb::esGetGreenRGB, 0x02030201), "0 00000002"},
        {V(vb::esGetBlueRGB, 0x02030201), "0 00000003"}, {V(vb::esGetRedRGB, kSys | COLOR_MENUBAR), X(GetSysColor(COLOR_MENUBAR) & 0xFF)},
        {V(vb::esGetBlueRGB, kSys | (COLOR_MENUBAR + 1)), no}, {V(vb::esTranslateColor, kSys | COLOR_WINDOWTEXT, 0), X(GetSysColor(COLOR_WINDOWTEXT))},
        {Log(V(vb::esGetSolidColor, kSys | COLOR_WINDOW, 0)), X(GetSysColor(COLOR_WINDOW)) + "D"}, {Log(V(vb::esGetSolidColor, 0x030201, 0x1234)), "0 ffffffff"},
        {V(vb::esGetSolidColor, 0x05000000, 0), no}, {Detoured("OleTranslateColor", refuse, [] { return V(vb::esTranslateColor, 0x030201, 0); }), "80004005 cccccccc"},
        {Detoured("OleTranslateColor", refuse, [] { return V(vb::esGetGreenRGB, 0x030201); }), no},
        {Detoured("OleTranslateColor", refuse, [] { return V(vb::esGetSolidColor, 0x030201, 0); }), no}, {V(vb::esMakeLong, -1, 0), "0 0000ffff"},
        {V(makeWordWide, 0xABCD0034, 0xFFFFFF12), "0 cccc1234"}, {V(vb::esHiWord, kSys), "0 cccc8000"}, {V(vb::esLoWord, 0x12345678), "0 cccc5678"},
        {V(vb::esHiByte, 0x1234), "0 cccccc12"}, {V(vb::esLoByte, 0x1234), "0 cccccc34"}, {V(vb::esSwapBytes2, 0x8011), "0 cccc1180"},
        {V(vb::esSwapBytes4, 0x81223344), "0 44332281"}, {V(vb::esShiftLeft4, 1, 31), "0 80000000"}, {V(vb::esShiftLeft4, 1, 32), "1 00000001"},
        {V(vb::esShiftRight4, kSys, 31), "0 00000001"}, {V(vb::esShiftRight4, 0x1234, 0), "1 00001234"}, {V(vb::esShiftLeft1, 0x81, 1), "0 cccccc02"},
        {V(vb::esShiftRight1, 0xFF, 8), "0 cccccc00"}, {V(vb::esShiftLeft2, 0x4001, 1), "0 cccc8002"}, {V(vb::esShiftLeft2, -1, 16), "0 cccc0000"},
        {V(vb::esShiftRight2, -1, 4), "0 cccc0fff"}, {V(vb::esShiftRight2, 0x1234, INT32_MAX), "1 cccc1234"}, {V(vb::esStringToBool, Bstr("\t\n tRuE \r").get()), "0 ccccffff"},
        {V(vb::esStringToBool, Bstr::FromUnits({u'1', 0, u'x'}).get()), "0 ccccffff"}, {V(vb::esStringToBool, Bstr("True x").get()), "0 cccc0000"},
        {V(vb::esStringToBool, Bstr().get()), "0 cccc0000"}, {T(vb::esHex1, 0), "00"}, {T(vb::esHex2, 10), "000A"}, {T(vb::esHex4, 0x0ABCDEF0), "0ABCDEF0"},
        {T(vb::esHexEx1, 255), "0xFF"}, {T(vb::esHexEx2, -2), "0xFFFE"}, {T(vb::esHexEx4, 0x1F), "0x0000001F"}, {T(vb::esBin1, 5), "00000101"},
        {T(vb::esBin2, 0x8001), "1000000000000001"}, {T(vb::esBoolToString, 1), "True"}, {T(vb::esBin4, 0x80000001), "10000000000000000000000000000001"},
        {T(vb::esBoolToString, 0), "False"}, {R(-1), "0.0"}, {V(vb::esGetRnd, 1, 6, 0), "0 00000004"}, {V(vb::esGetRnd, 1, 8, -1), "0 00000004"},
        {V(vb::esGetRnd, 10, 1, 1), "0 00000001"}, {V(vb::esGetRnd, 0, INT32_MAX, 1), "0 40000000"}, {V(vb::esGetRnd, INT32_MIN, -1, 1), "0 c0000000"},
        {V(vb::esGetRnd, 5, 5, 1), "0 00000005"}, {V(vb::esGetRnd, 0, INT32_MAX, 0), "0 7fffffff"}, {V(vb::esGetRnd, 1, 6, 0), "0 00000001"}, {R(0), "3865470566.0"},
        {Draw(620), "AGR"}, {Draw(1), "AGR"}, {(vb::esRandomize(-1), R(-1)), "2147483648.0"}, {R(0), "2036278952.0"}, {R(0), "2285994594.0"}, {R(0), "2752314166.0"},
        {R(7), "2752314166.0"}, {(g_random.counter = 0, vb::esRandomize(0), R(0)), "2036278952.0"},
        {(g_random.counter = 1, g_random.acquired = 2, vb::esRandomize(0), Draw(700)), "A"}, {(g_random.acquired = 1, vb::esRandomize(0), Draw(1)), "AGR"},
        {std::to_string(ExportText(vb::esGetNewGUID) != ExportText(vb::esGetNewGUID)), "1"},
        {Detoured("CoCreateGuid", guid, [] { return ExportText(vb::esGetNewGUID); }), "{00112233-4455-6677-8899-AABBCCDDEEFF}"},
        {Detoured("CoCreateGuid", +[](GUID*) WINAPI -> HRESULT { return E_OUTOFMEMORY; }, [] { return ExportText(vb::esGetNewGUID); }), kNull}};
    for (const auto& r : rows) EXPECT_EQ(r.second, r.first) << "row " << &r - rows;
}

}  // namespace
