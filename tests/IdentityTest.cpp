// Who runs the program, its SID in bytes and text, and the event log:
// under Wine against the platform's own answers, in winsim with the host,
// the account and the refusals a test chooses.
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

// The token's SID, asked of the platform.
std::string TokenSid() {
    HANDLE token;
    std::vector<BYTE> buffer(512);
    DWORD size = 0;
    EXPECT_TRUE(OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token) &&
                GetTokenInformation(token, TokenUser, buffer.data(), 512, &size) && CloseHandle(token));
    PSID sid = reinterpret_cast<TOKEN_USER*>(buffer.data())->User.Sid;
    return std::string(static_cast<const char*>(sid), GetLengthSid(sid));
}

// The text of a SID in memory, which the array form must give alike.
std::string SidText(const std::string& sid) {
    Bstr text("stale"), text2("stale");
    TestSafeArray array(sid);
    EXPECT_EQ(S_OK, vb::esSIDtoStringSID(sid.data(), text.out()) | vb::esSIDtoStringSID2(&array.array, text2.out()));
    EXPECT_EQ(text.text(), text2.text());
    return text.text();
}

}  // namespace

TEST(Identity, AgreesWithThePlatform) {
    FreshHost host;
    char computer[64], user[300];
    DWORD computerSize = sizeof computer, userSize = sizeof user;
    ASSERT_TRUE(GetComputerNameA(computer, &computerSize) && GetUserNameA(user, &userSize));
    EXPECT_EQ(std::string(computer) + "|" + user, ExportText(vb::esGetComputerName) + "|" + ExportText(vb::esGetUserName));
    TestSafeArray sid;
    VARIANT_BOOL given = 7;
    EXPECT_EQ(S_OK, vb::esGetUserSID(&sid.array, &given));
    EXPECT_EQ(VARIANT_TRUE, given);
    EXPECT_EQ(TokenSid(), sid.bytes());
    char* platformText = const_cast<char*>("S-1-5-21-1004336348-1177238915-682003330-1001");
#ifndef CSK_WINSIM
    ASSERT_TRUE(ConvertSidToStringSidA(const_cast<char*>(sid.bytes().data()), &platformText));
#endif
    EXPECT_EQ(platformText, SidText(sid.bytes()));
}

// Authority in decimal below 2^32, else in twelve lower-case hexadecimal
// digits; sub-authorities unsigned; anything but revision 1 with at most 15
// sub-authorities is no SID.
TEST(Identity, SidText) {
    FreshHost host;
    const std::pair<std::string, const char*> rows[] = {
        {"\1\2\0\0\0\0\0\5\x20\0\0\0\x20\2\0\0"s, "S-1-5-32-544"},
        {"\1\0\1\2\3\4\5\6"s, "S-1-0x010203040506"},
        {"\1\1\0\xAB\0\0\0\0\xFF\xFF\xFF\xFF"s, "S-1-0x00ab00000000-4294967295"},
        {"\1\0\0\0\xFE\xDC\xBA\x98"s, "S-1-4275878552"},
        {"\1\1\0\0\0\0\0\5\x12\0\0\0trailing"s, "S-1-5-18"},
        {"\2\0\0\0\0\0\0\5"s, kNull},
        {"\1\x10\0\0\0\0\0\5"s + std::string(64, '\0'), kNull}};
    for (const auto& row : rows) EXPECT_EQ(row.second, SidText(row.first)) << row.second;
}

// Null out-pointers first (nothing logged, no privilege step), then the
// inputs; a refused array leaves the answer as it was.
TEST(Identity, BadInput) {
    FreshHost host;
    TestSafeArray none, empty(""), longs("\1\0\0\0\1\0\0\5"s, VT_I4);
    VARIANT_BOOL given = 7;
    EXPECT_EQ(12, vb::esGetComputerName(nullptr) + vb::esGetUserName(nullptr) + vb::esGetDomainName(nullptr) +
                      vb::esGetFullUserName(-1, -1, nullptr) + vb::esGetUserSID(&none.array, nullptr) +
                      vb::esSIDtoStringSID(nullptr, nullptr) + vb::esSIDtoStringSID2(&none.array, nullptr) +
                      vb::esLogInfo(nullptr, nullptr) + vb::esLogWarning(nullptr, nullptr) +
                      vb::esLogError(nullptr, nullptr) + vb::esExitWindowsEx(EWX_LOGOFF, 0, nullptr) +
                      vb::esSetSystemPowerState(-1, -1, nullptr));
#ifdef CSK_WINSIM
    EXPECT_EQ("", winsim::securityLog());
    EXPECT_TRUE(winsim::eventSourcesOpened().empty());
#endif
    EXPECT_EQ(E_INVALIDARG, vb::esGetUserSID(nullptr, &given));
    EXPECT_EQ(7, given);
    Bstr text("stale");  // a null SID has no text
    EXPECT_EQ(S_OK, vb::esSIDtoStringSID(nullptr, text.out()));
    EXPECT_EQ(kNull, text.text());
    const std::pair<SAFEARRAY**, HRESULT> arrays[] = {{nullptr, E_INVALIDARG}, {&none.array, E_INVALIDARG},
                                                      {&empty.array, E_OUTOFMEMORY}, {&longs.array, E_INVALIDARG}};
    for (const auto& row : arrays) {
        Bstr untouched("stale");
        EXPECT_EQ(row.second, vb::esSIDtoStringSID2(row.first, untouched.out()));
        EXPECT_EQ("stale", untouched.text());
    }
}

// Every kind of event, with the texts that can break the header: none, one
// with a NUL, non-ASCII, a megabyte.
TEST(EventLog, ReportsEveryKind) {
    FreshHost host;
    const Bstr nul = Bstr::FromUnits(u"Saved\0tail"s), big(std::string(1 << 20, 'x')), russian("Сохранено");
    const std::pair<VbFunction<HRESULT, BSTR, VARIANT_BOOL*>, BSTR> rows[] = {
        {vb::esLogInfo, russian.get()}, {vb::esLogWarning, nul.get()}, {vb::esLogError, nullptr}, {vb::esLogInfo, big.get()}};
    for (const auto& row : rows) {
        VARIANT_BOOL done = 7;
        EXPECT_EQ(S_OK, row.first(row.second, &done));
        EXPECT_EQ(VARIANT_TRUE, done) << row.first.name;
    }
}

#ifdef CSK_WINSIM
// The domain: the account's, else the environment's; none for a local
// account (the computer's name in any case), and then the environment is not
// asked; a 9x host asks only the environment. The full name in all shapes.
TEST(Identity, DomainAndNames) {
    const struct {
        const char *account, *environment;
        bool nt;
        VARIANT_BOOL mail, computer;
        const char* answers;  // domain|full name
    } rows[] = {{"CORVANE", "ENVDOM", true, 0, 0, "CORVANE|CORVANE\\Tester"},
                {nullptr, "ENVDOM", true, -1, -1, "ENVDOM|Tester@ENVDOM at WINSIM-PC"},
                {"winsim-pc", "ENVDOM", true, 0, -1, "<null>|Tester at WINSIM-PC"},
                {nullptr, nullptr, true, -1, 0, "<null>|Tester"},
                {"CORVANE", "ENVDOM", false, 3, 0, "ENVDOM|Tester@ENVDOM"},
                {"CORVANE", "Winsim-PC", false, 0, 0, "<null>|Tester"}};
    for (const auto& row : rows) {
        FreshHost host(row.nt);
        winsim::setAccountDomain(row.account);
        SetEnvironmentVariableA("USERDOMAIN", row.environment);
        Bstr full;
        EXPECT_EQ(S_OK, vb::esGetFullUserName(row.mail, row.computer, full.out()));
        EXPECT_EQ(row.answers, ExportText(vb::esGetDomainName) + "|" + full.text());
    }
    SetEnvironmentVariableA("USERDOMAIN", nullptr);
    // The user name: a retry after "not logged on"; "NONE" when there is
    // none; names of every length.
    FreshHost host;
    winsim::failNext("GetUserNameA", 1);
    EXPECT_EQ("Tester", ExportText(vb::esGetUserName));
    winsim::failNext("GetUserNameA", 2);
    Bstr none;
    EXPECT_EQ(S_OK, vb::esGetFullUserName(0, 0, none.out()));
    EXPECT_EQ("CORVANE\\NONE", none.text());
    for (size_t length : {1, 15, 63, 256}) {
        winsim::setUserName(std::string(length, 'u').c_str());
        winsim::setComputerName(std::string(length, 'C').c_str());
        EXPECT_EQ(std::string(length, 'u') + std::string(length, 'C'),
                  ExportText(vb::esGetUserName) + ExportText(vb::esGetComputerName));
    }
}

// The SID is kept after the first success; a 9x host has none, and no text
// for any, and logs nothing.
TEST(Identity, SidCacheAndHosts) {
    TestSafeArray first, second;
    VARIANT_BOOL given = 7;
    {
        FreshHost host;
        winsim::failNext("OpenProcessToken");
        EXPECT_EQ(S_OK, vb::esGetUserSID(&first.array, &given));
        EXPECT_EQ(0, given);
        vb::esGetUserSID(&first.array, &given);
        winsim::setUserSid("\1\0\0\0\0\0\0\5"s);
        vb::esGetUserSID(&second.array, &given);
        EXPECT_EQ(first.bytes() + "2", second.bytes() + std::to_string(winsim::calls("OpenProcessToken")));
    }
    FreshHost nineX(false);
    EXPECT_EQ(S_OK, vb::esGetUserSID(&second.array, &given));
    EXPECT_EQ(0, given);
    EXPECT_EQ(S_OK, vb::esLogError(nullptr, &given));
    EXPECT_EQ(0, given);
    EXPECT_EQ(kNull, SidText(first.bytes()));
    EXPECT_TRUE(winsim::eventSourcesOpened().empty() && winsim::reportedEvents().empty());
}

// The event as ReportEventW got it: its type, category 0, event 1, the
// user's SID, one string that is the header in UTF-16 and the message. One
// source for the process, named after the main window or "Corvane
// application", kept also when it did not open.
TEST(EventLog, WhatIsReported) {
    VARIANT_BOOL done = 7;
    {
        FreshHost host;
        const Bstr nul = Bstr::FromUnits(u"Saved\0tail"s);
        vb::esLogWarning(nul.get(), &done);
        vb::esLogError(nullptr, &done);
        char ids[64];
        std::snprintf(ids, sizeof ids, "0x00001F4C\r\nThread ID: 0x%08X\r\n\r\n", unsigned(GetCurrentThreadId()));
        const std::u16string header = u"Module: C:\\Program Files\\Corvane\\App.exe\r\nProcess ID: " + Utf16(ids);
        const auto& events = winsim::reportedEvents();
        ASSERT_EQ(2u, events.size());
        for (int i = 0; i < 2; ++i) {
            const auto& e = events[i];
            EXPECT_EQ((i ? 10000 : 20000) + 110, e.type * 10000 + e.category * 1000 + e.id * 100 + e.strings * 10 +
                                                     e.dataSize + e.rawData);
            EXPECT_EQ(TokenSid(), e.sid);
            EXPECT_EQ(header + (i ? u"" : u"Saved"), e.text);
        }
        EXPECT_EQ(std::vector<std::u16string>{u"Corvane application"}, winsim::eventSourcesOpened());
    }
    FreshHost host;
    winsim::addWindow("ThunderRT6Main", "Ledger");
    winsim::failNext("RegisterEventSourceW");
    winsim::failNext("OpenProcessToken");
    EXPECT_EQ(S_OK, vb::esLogInfo(nullptr, &done) | vb::esLogInfo(nullptr, &done));
    EXPECT_EQ(0, done);
    EXPECT_EQ(std::vector<std::u16string>{u"Ledger"}, winsim::eventSourcesOpened());
    EXPECT_EQ("", winsim::reportedEvents()[0].sid);
}
#endif
