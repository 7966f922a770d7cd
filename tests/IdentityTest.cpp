// Who runs the program, its SID in bytes and text, and the event log.
// Under Wine against the platform's own answers; in winsim the host, the
// account and every refusal that the platform can give.
#include <cstdio>
#include <vector>

#include "VbDeclares.h"
#ifdef CSK_WINSIM
#include "winsim_control.h"
#else
#include <sddl.h>
#endif

using namespace std::string_literals;

namespace {

#ifdef CSK_WINSIM
// winsim's default host (Windows 7, the account of "Tester") and a library
// that has kept nothing yet.
struct ResetFirst {
    ResetFirst() { winsim::reset(); }
};
struct FreshHost : ResetFirst {
    FreshLibrary library;
};
#else
struct FreshHost {};
#endif

// A SAFEARRAY of bytes (VT_UI1, or another element type), destroyed with
// the test.
struct Array {
    SAFEARRAY* array = nullptr;
    Array() = default;
    explicit Array(const std::string& bytes, VARTYPE type = VT_UI1)
        : array(SafeArrayCreateVector(type, 0, static_cast<ULONG>(bytes.size()) / (type == VT_UI1 ? 1 : 4))) {
        if (!bytes.empty()) std::memcpy(array->pvData, bytes.data(), bytes.size());
    }
    ~Array() { SafeArrayDestroy(array); }
    std::string bytes() const {
        return array ? std::string(static_cast<const char*>(array->pvData), array->rgsabound[0].cElements) : "";
    }
};

std::string Text(const VbFunction<HRESULT, BSTR*>& function) {
    Bstr out;
    EXPECT_EQ(S_OK, function(out.out()));
    return out.text();
}

// The token's SID, asked of the platform directly.
std::string TokenSid() {
    HANDLE token;
    EXPECT_TRUE(OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token));
    std::vector<BYTE> buffer(512);
    DWORD size = 0;
    EXPECT_TRUE(GetTokenInformation(token, TokenUser, buffer.data(), 512, &size));
    CloseHandle(token);
    PSID sid = reinterpret_cast<TOKEN_USER*>(buffer.data())->User.Sid;
    return std::string(static_cast<const char*>(sid), GetLengthSid(sid));
}

std::string SidText(const std::string& sid) {
    Bstr text("stale"), text2("stale");
    Array array(sid);
    EXPECT_EQ(S_OK, vb::esSIDtoStringSID(sid.data(), text.out()));
    EXPECT_EQ(S_OK, vb::esSIDtoStringSID2(&array.array, text2.out()));
    EXPECT_EQ(text.text(), text2.text());
    return text.text();
}

}  // namespace

TEST(Identity, AgreesWithThePlatform) {
    FreshHost host;
    char name[1100];
    DWORD size = sizeof name;
    ASSERT_TRUE(GetComputerNameA(name, &size));
    EXPECT_EQ(name, Text(vb::esGetComputerName));
    size = sizeof name;
    ASSERT_TRUE(GetUserNameA(name, &size));
    const std::string user = name;
    EXPECT_EQ(user, Text(vb::esGetUserName));
    Array sid;
    VARIANT_BOOL given = 7;
    EXPECT_EQ(S_OK, vb::esGetUserSID(&sid.array, &given));
    EXPECT_EQ(VARIANT_TRUE, given);
    EXPECT_EQ(TokenSid(), sid.bytes());
#ifdef CSK_WINSIM
    EXPECT_EQ("S-1-5-21-1004336348-1177238915-682003330-1001", SidText(sid.bytes()));
#else
    char* platformText = nullptr;
    ASSERT_TRUE(ConvertSidToStringSidA(const_cast<char*>(sid.bytes().data()), &platformText));
    EXPECT_EQ(platformText, SidText(sid.bytes()));
    LocalFree(platformText);
#endif
    // The full name's shapes, from the parts' own exports.
    const std::string domain = Text(vb::esGetDomainName), computer = Text(vb::esGetComputerName);
    const std::string plain = domain == kNull ? user : domain + "\\" + user;
    const std::string mail = domain == kNull ? user : user + "@" + domain;
    const std::string shapes[4] = {plain, mail, plain + " at " + computer, mail + " at " + computer};
    for (int i = 0; i < 4; ++i) {
        Bstr full;
        EXPECT_EQ(S_OK, vb::esGetFullUserName(i & 1 ? 5 : 0, i & 2 ? -1 : 0, full.out()));
        EXPECT_EQ(shapes[i], full.text()) << i;
    }
}

// Authority in decimal below 2^32, else in twelve lower-case hexadecimal
// digits; sub-authorities unsigned; anything but revision 1 and at most 15
// sub-authorities is no SID.
TEST(Identity, SidText) {
    FreshHost host;
    const struct {
        std::string bytes;
        const char* text;
    } rows[] = {
        {std::string("\1\2\0\0\0\0\0\5\x20\0\0\0\x20\2\0\0", 16), "S-1-5-32-544"},
        {std::string("\1\0\1\2\3\4\5\6", 8), "S-1-0x010203040506"},
        {std::string("\1\1\0\xAB\0\0\0\0\xFF\xFF\xFF\xFF", 12), "S-1-0x00ab00000000-4294967295"},
        {std::string("\1\0\0\0\xFE\xDC\xBA\x98", 8), "S-1-4275878552"},
        {std::string("\1\1\0\0\0\0\0\5\x12\0\0\0trailing", 20), "S-1-5-18"},
        {std::string("\2\0\0\0\0\0\0\5", 8), kNull},
        {std::string("\1\x10\0\0\0\0\0\5", 8) + std::string(64, '\0'), kNull},
    };
    for (const auto& row : rows) EXPECT_EQ(row.text, SidText(row.bytes)) << row.text;
}

// Null out-pointers first, then the inputs; a rejected array leaves the
// answer as it was.
TEST(Identity, BadInput) {
    for (auto function : {vb::esGetComputerName, vb::esGetUserName, vb::esGetDomainName})
        EXPECT_EQ(S_FALSE, function(nullptr));
    EXPECT_EQ(S_FALSE, vb::esGetFullUserName(-1, -1, nullptr));
    Array sid, empty(""), longs(std::string(8, '\1'), VT_I4);
    VARIANT_BOOL given = 7;
    EXPECT_EQ(S_FALSE, vb::esGetUserSID(&sid.array, nullptr));
    EXPECT_EQ(E_INVALIDARG, vb::esGetUserSID(nullptr, &given));
    EXPECT_EQ(7, given);
    EXPECT_EQ(S_FALSE, vb::esSIDtoStringSID(nullptr, nullptr));
    EXPECT_EQ(S_FALSE, vb::esSIDtoStringSID2(&sid.array, nullptr));
    Bstr text("stale");
    EXPECT_EQ(S_OK, vb::esSIDtoStringSID(nullptr, text.out()));
    EXPECT_EQ(kNull, text.text());
    const struct {
        SAFEARRAY** variable;
        HRESULT status;
    } arrays[] = {{nullptr, E_INVALIDARG}, {&sid.array, E_INVALIDARG}, {&empty.array, E_OUTOFMEMORY},
                  {&longs.array, E_INVALIDARG}};
    for (const auto& row : arrays) {
        Bstr untouched("stale");
        EXPECT_EQ(row.status, vb::esSIDtoStringSID2(row.variable, untouched.out()));
        EXPECT_EQ("stale", untouched.text());
    }
}

// Every kind of event, and the texts that can break the header: none, one
// with a NUL, non-ASCII, a megabyte.
TEST(EventLog, ReportsEveryKind) {
    FreshHost host;
    const Bstr nul = Bstr::FromUnits(u"Saved\0tail"s), big(std::string(1 << 20, 'x')), russian("Сохранено");
    const struct {
        VbFunction<HRESULT, BSTR, VARIANT_BOOL*> log;
        BSTR message;
    } rows[] = {{vb::esLogInfo, russian.get()}, {vb::esLogWarning, nul.get()}, {vb::esLogError, nullptr},
                {vb::esLogInfo, big.get()}};
    for (const auto& row : rows) {
        VARIANT_BOOL done = 7;
        EXPECT_EQ(S_FALSE, row.log(row.message, nullptr));
        EXPECT_EQ(S_OK, row.log(row.message, &done));
        EXPECT_EQ(VARIANT_TRUE, done) << row.log.name;
    }
}

#ifdef CSK_WINSIM
// Domain: the account's, else the environment's; a local account (the
// computer's name, in any case) has none, and then the environment is not
// asked. A 9x host asks the environment only.
TEST(Identity, DomainAndFullName) {
    const struct {
        const char* account;
        const char* environment;
        bool nt;
        const char* domain;
        const char* full;  // mail form, with the computer
    } rows[] = {
        {"CORVANE", "ENVDOM", true, "CORVANE", "Tester@CORVANE at WINSIM-PC"},
        {nullptr, "ENVDOM", true, "ENVDOM", "Tester@ENVDOM at WINSIM-PC"},
        {"winsim-pc", "ENVDOM", true, kNull, "Tester at WINSIM-PC"},
        {nullptr, nullptr, true, kNull, "Tester at WINSIM-PC"},
        {"CORVANE", "ENVDOM", false, "ENVDOM", "Tester@ENVDOM at WINSIM-PC"},
        {"CORVANE", "Winsim-PC", false, kNull, "Tester at WINSIM-PC"},
    };
    for (const auto& row : rows) {
        FreshHost host;
        if (!row.nt) winsim::setVersion(VER_PLATFORM_WIN32_WINDOWS, 4, 10, 2222, " A ", 0);
        winsim::setAccountDomain(row.account);
        SetEnvironmentVariableA("USERDOMAIN", row.environment);
        Bstr full;
        EXPECT_EQ(row.domain, Text(vb::esGetDomainName)) << row.domain;
        EXPECT_EQ(S_OK, vb::esGetFullUserName(-1, -1, full.out()));
        EXPECT_EQ(row.full, full.text());
    }
    SetEnvironmentVariableA("USERDOMAIN", nullptr);
}

// The user name: the probe, a retry after "not logged on", names of every
// length; "NONE" when there is none.
TEST(Identity, UserAndComputerNames) {
    FreshHost host;
    winsim::failNext("GetUserNameA", 1);
    EXPECT_EQ("Tester", Text(vb::esGetUserName));
    EXPECT_EQ(2, winsim::calls("GetUserNameA"));
    winsim::failNext("GetUserNameA", 2);
    Bstr full;
    EXPECT_EQ(S_OK, vb::esGetFullUserName(0, 0, full.out()));
    EXPECT_EQ("CORVANE\\NONE", full.text());
    for (size_t length : {1, 15, 63, 256}) {
        winsim::setUserName(std::string(length, 'u').c_str());
        winsim::setComputerName(std::string(length, 'C').c_str());
        EXPECT_EQ(std::string(length, 'u'), Text(vb::esGetUserName));
        EXPECT_EQ(std::string(length, 'C'), Text(vb::esGetComputerName));
    }
    winsim::failNext("GetComputerNameA");
    EXPECT_EQ(kNull, Text(vb::esGetComputerName));
}

// Kept after the first success; a 9x host has none, and no text for any.
TEST(Identity, SidCacheAndHosts) {
    Array first, second;
    VARIANT_BOOL given;
    {
        FreshHost host;
        winsim::failNext("OpenProcessToken");
        EXPECT_EQ(S_OK, vb::esGetUserSID(&first.array, &given));
        EXPECT_EQ(0, given);
        EXPECT_EQ(S_OK, vb::esGetUserSID(&first.array, &given));
        winsim::setUserSid(std::string("\1\0\0\0\0\0\0\5", 8));
        EXPECT_EQ(S_OK, vb::esGetUserSID(&second.array, &given));
        EXPECT_EQ(first.bytes(), second.bytes());
        EXPECT_EQ(2, winsim::calls("OpenProcessToken"));
    }
    winsim::setVersion(VER_PLATFORM_WIN32_WINDOWS, 4, 90, 3000, " ", 0);
    FreshLibrary nineX;
    EXPECT_EQ(S_OK, vb::esGetUserSID(&second.array, &given));
    EXPECT_EQ(0, given);
    EXPECT_EQ(kNull, SidText(first.bytes()));
}

// The event as ReportEventW got it: type, category 0, event 1, the user's
// SID, one string; the header in UTF-16; one source for the process, named
// after the main window or "Corvane application", also when it did not open.
TEST(EventLog, WhatIsReported) {
    VARIANT_BOOL done = 7;
    {
    FreshHost host;
    EXPECT_EQ(S_FALSE, vb::esLogInfo(nullptr, nullptr));
    EXPECT_TRUE(winsim::eventSourcesOpened().empty());
    const Bstr nul = Bstr::FromUnits(u"Saved\0tail"s), russian("Сохранено");
    vb::esLogWarning(nul.get(), &done);
    vb::esLogError(nullptr, &done);
    vb::esLogInfo(russian.get(), &done);
    char thread[16];
    std::snprintf(thread, sizeof thread, "%08X", static_cast<unsigned>(GetCurrentThreadId()));
    const std::u16string header =
        u"Module: C:\\Program Files\\Corvane\\App.exe\r\nProcess ID: 0x00001F4C\r\nThread ID: 0x" + Utf16(thread) +
        u"\r\n\r\n";
    const auto& events = winsim::reportedEvents();
    ASSERT_EQ(3u, events.size());
    const WORD types[] = {2, 1, 4};
    const std::u16string texts[] = {header + u"Saved", header, header + u"Сохранено"};
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(types[i], events[i].type);
        EXPECT_EQ(0, events[i].category + events[i].dataSize + events[i].rawData);
        EXPECT_EQ(1u, events[i].id);
        EXPECT_EQ(1, events[i].strings);
        EXPECT_EQ(TokenSid(), events[i].sid);
        EXPECT_EQ(texts[i], events[i].text);
    }
    EXPECT_EQ(std::vector<std::u16string>{u"Corvane application"}, winsim::eventSourcesOpened());
    }
    {
    FreshHost host;
    winsim::addWindow("ThunderRT6Main", "Ledger");
    winsim::failNext("RegisterEventSourceW");
    winsim::failNext("OpenProcessToken");
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(S_OK, vb::esLogInfo(nullptr, &done));
        EXPECT_EQ(0, done);
    }
    EXPECT_EQ(std::vector<std::u16string>{u"Ledger"}, winsim::eventSourcesOpened());
    EXPECT_EQ("", winsim::reportedEvents()[0].sid);
    }
    winsim::reset();
    winsim::setVersion(VER_PLATFORM_WIN32_WINDOWS, 4, 10, 2222, " A ", 0);
    FreshLibrary nineX;
    EXPECT_EQ(S_OK, vb::esLogError(nullptr, &done));
    EXPECT_EQ(0, done);
    EXPECT_TRUE(winsim::eventSourcesOpened().empty() && winsim::reportedEvents().empty());
}
#endif
