// Promises that hold for every export alike, checked for all 267 from the
// export table's shapes: a missing answer variable, the all-zero call, the
// type library; and the frame's text crossing, through a few exports.
#include <map>
#include <vector>

#include "Detour.h"
#include "VbDeclares.h"

using namespace std::string_literals;

namespace {

const BYTE kUntouched = 0xA5;

// The arguments of one call: every input zero, every out- and in-out
// argument the address of its own buffer of kUntouched bytes (the array
// variables among them holding no array), the last one null when
// nullLast.
struct Arguments {
    std::vector<uint32_t> slots;
    std::vector<std::vector<BYTE>> buffers;
    Arguments(const ExportShape& shape, bool nullLast) {
        std::string codes = shape.arguments;
        buffers.reserve(codes.size());
        for (size_t at = 0; at < codes.size(); at += 3) {
            const char direction = codes[at], type = codes[at + 1];
            if (direction == 'i' && type != 'R' && type != 'A') {
                slots.push_back(0);
                if (type == 'D' || type == 'T') slots.push_back(0);
            } else if (nullLast && at + 3 >= codes.size()) {
                slots.push_back(0);
            } else {
                buffers.emplace_back(256, type == 'A' ? 0 : kUntouched);
                slots.push_back(reinterpret_cast<uint32_t>(buffers.back().data()));
            }
        }
    }
    bool untouched() const {
        for (const auto& buffer : buffers)
            for (BYTE b : buffer)
                if (b != kUntouched && b != 0) return false;
        return true;
    }
};

uint32_t Call(const ExportShape& shape, Arguments& arguments) {
    int32_t espDelta = 1;
    uint32_t result = CallChecked(CskProc(shape.name), arguments.slots.data(),
                                  static_cast<uint32_t>(arguments.slots.size()), &espDelta);
    EXPECT_EQ(0, espDelta) << shape.name << " did not remove exactly its arguments";
    return result;
}

}  // namespace

TEST(AllExports, AMissingAnswerVariableIsStatusOneAndNothingElse) {
    NeverRun never;
    GuardedHeap heap;
    int checked = 0;
    for (const ExportShape& shape : kExportShapes) {
        if (!shape.checksOut) continue;
        ++checked;
        g_calls.clear();
        Arguments arguments(shape, true);
        const size_t live = GuardedHeap::Live();
        EXPECT_EQ(1u, Call(shape, arguments)) << shape.name;
        EXPECT_TRUE(arguments.untouched()) << shape.name << " wrote through another argument";
        EXPECT_EQ("", g_calls) << shape.name;
        EXPECT_EQ(live, GuardedHeap::Live()) << shape.name << " kept a block";
    }
    EXPECT_GT(checked, 200);
}

TEST(AllExports, TheAllZeroCallAnswersWithABalancedStack) {
    NeverRun never;
    GuardedHeap heap;
    for (const ExportShape& shape : kExportShapes) {
        Arguments arguments(shape, false);
        for (uint32_t& slot : arguments.slots) slot = 0;
        const uint32_t status = Call(shape, arguments);
        if (std::string(shape.result) == "status")
            EXPECT_TRUE(status == 0 || status == 1 || status == E_INVALIDARG || status == 0x80000069u)
                << shape.name << " answered " << std::hex << status;
    }
}

// The frame's crossing of text: what comes back of a round trip through
// exports that hand their input back, and the two kinds of empty answer.
TEST(AllExports, TextCrossesTheFrameAsTheCallerSentIt) {
    struct Row { std::u16string in; std::string added, removed; };
    const Row rows[] = {
        {u"", kNull, kNull},  // unguarded: the empty input reaches the work, whose empty answer is a null string
        {u"C:", "C:\\", "C:"},
        {u"\u00C5ngstr\u00F6m", "\u00C5ngstr\u00F6m\\", "\u00C5ngstr\u00F6m"},  // in the ANSI code page
        {u"ab\0cd\\"s, "ab\\", "ab"},                          // the text ends at an embedded NUL
        {u"\u4E2D\\", "?\\", "?"},                             // what the code page lacks becomes ?
    };
    GuardedHeap heap;
    const size_t live = GuardedHeap::Live();
    for (const Row& row : rows) {
        Bstr in = Bstr::FromUnits(row.in), added, removed;
        EXPECT_EQ(S_OK, vb::esAddBackslash(in.get(), added.out()));
        EXPECT_EQ(S_OK, vb::esRemoveBackslash(in.get(), removed.out()));
        EXPECT_EQ(row.added, added.text()) << Utf8(row.in);
        EXPECT_EQ(row.removed, removed.text()) << Utf8(row.in);
    }
    Bstr guarded("the caller's old text"), unguarded("the caller's old text");
    EXPECT_EQ(S_OK, vb::esGetFileExtension(Bstr().get(), guarded.out()));
    EXPECT_EQ(S_OK, vb::esGetFileExtension(Bstr("C:\\D.d\\f").get(), unguarded.out()));
    EXPECT_EQ("", guarded.text()) << "guarded: a null input is answered with an empty, non-null string";
    EXPECT_EQ(kNull, unguarded.text()) << "the work's empty answer leaves a null string";
    guarded = Bstr(), unguarded = Bstr();
    EXPECT_EQ(live, GuardedHeap::Live()) << "a block left behind";
}

// The type library, loaded as an automation client loads it, with no
// registration: each entry is the DLL's export of that name, taking the
// bytes the table gives it; each record has its size.
TEST(AllExports, TheTypeLibraryDescribesEachAsTheDllHasIt) {
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::wstring file = path;
    ITypeLib* library = nullptr;
    ASSERT_EQ(S_OK, LoadTypeLibEx((file.substr(0, file.rfind(L'\\') + 1) + L"CorvaneSupportKit0100.tlb").c_str(),
                                  REGKIND_NONE, &library));
    std::map<std::string, int> bytes;
    for (const ExportShape& shape : kExportShapes) bytes[shape.name] = static_cast<int>(Arguments(shape, false).slots.size()) * 4;
    const std::map<std::string, UINT> records = {{"SYSTEMTIME", 16}, {"RECT", 16}, {"NewRect", 16}, {"TMFI", 16},
                                                 {"OSVERSIONINFOEX", 156}, {"SYSTEM_INFO", 36}, {"DLLVERSIONINFO", 20}};
    int functions = 0, sized = 0;
    for (UINT index = 0; index < library->GetTypeInfoCount(); ++index) {
        ITypeInfo* info = nullptr;
        TYPEATTR* attributes = nullptr;
        library->GetTypeInfo(index, &info);
        info->GetTypeAttr(&attributes);
        BSTR typeName = nullptr;
        info->GetDocumentation(MEMBERID_NIL, &typeName, nullptr, nullptr, nullptr);
        auto record = records.find(Utf8(reinterpret_cast<const char16_t*>(typeName)));
        if (attributes->typekind == TKIND_RECORD && record != records.end())
            sized += attributes->cbSizeInstance == record->second;
        for (WORD f = 0; attributes->typekind == TKIND_MODULE && f < attributes->cFuncs; ++f, ++functions) {
            FUNCDESC* function = nullptr;
            BSTR name = nullptr;
            void* address = nullptr;
            info->GetFuncDesc(f, &function);
            info->GetDocumentation(function->memid, &name, nullptr, nullptr, nullptr);
            const std::string text = Utf8(reinterpret_cast<const char16_t*>(name));
            EXPECT_EQ(S_OK, info->AddressOfMember(function->memid, INVOKE_FUNC, &address)) << text;
            EXPECT_EQ(reinterpret_cast<void*>(GetProcAddress(CskLibrary(), text.c_str())), address) << text;
            EXPECT_EQ(CC_STDCALL, function->callconv) << text;
            int pushed = 0;
            for (SHORT p = 0; p < function->cParams; ++p) {
                const TYPEDESC& type = function->lprgelemdescParam[p].tdesc;
                pushed += type.vt == VT_R8 || type.vt == VT_DATE ? 8 : 4;
            }
            EXPECT_EQ(bytes[text], pushed) << text;
            SysFreeString(name);
            info->ReleaseFuncDesc(function);
        }
        SysFreeString(typeName);
        info->ReleaseTypeAttr(attributes);
        info->Release();
    }
    library->Release();
    EXPECT_EQ(267, functions);
    EXPECT_EQ(7, sized);
}
