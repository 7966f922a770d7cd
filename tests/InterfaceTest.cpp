// Promises that hold for every export alike, checked for all 267 from the
// export table's shapes: a missing answer variable, the all-zero call, the
// type library; and the frame's text crossing, through a few exports.
#include <map>
#include <vector>

#include "Detour.h"
#include "VbDeclares.h"

using namespace std::string_literals;

namespace {

// The arguments of one call: every input zero, every out- and in-out
// argument the address of its own buffer of 0xA5 bytes (an array variable
// holding no array), the last one null when nullLast.
struct Arguments {
    std::vector<uint32_t> slots;
    std::vector<std::vector<BYTE>> buffers, before;
    Arguments(const ExportShape& shape, bool nullLast) {
        const std::string codes = shape.arguments;
        buffers.reserve(codes.size());
        for (size_t at = 0; at < codes.size(); at += 3) {
            const char direction = codes[at], type = codes[at + 1];
            if (direction == 'i' && type != 'R' && type != 'A') {
                slots.insert(slots.end(), type == 'D' || type == 'T' ? 2 : 1, 0);
            } else if (nullLast && at + 3 >= codes.size()) {
                slots.push_back(0);
            } else {
                buffers.emplace_back(256, type == 'A' ? 0 : 0xA5);
                slots.push_back(reinterpret_cast<uint32_t>(buffers.back().data()));
            }
        }
        before = buffers;
    }
    uint32_t call(const ExportShape& shape) {
        int32_t espDelta = 1;
        const uint32_t result = CallChecked(CskProc(shape.name), slots.data(), uint32_t(slots.size()), &espDelta);
        EXPECT_EQ(0, espDelta) << shape.name << " did not remove exactly its arguments";
        return result;
    }
};

}  // namespace

TEST(AllExports, AMissingAnswerVariableIsStatusOneAndNothingElse) {
    NeverRun never;
    GuardedHeap heap;
    int checked = 0;
    for (const ExportShape& shape : kExportShapes) {
        if (!shape.checksOut) continue;
        Arguments arguments(shape, true);
        const size_t live = GuardedHeap::Live();
        g_calls.clear(), ++checked;
        EXPECT_EQ(1u, arguments.call(shape)) << shape.name;
        EXPECT_TRUE(arguments.buffers == arguments.before) << shape.name << " wrote through another argument";
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
        std::fill(arguments.slots.begin(), arguments.slots.end(), 0);
        const uint32_t status = arguments.call(shape);
        if (std::string(shape.result) == "status") {
            EXPECT_TRUE(status <= 1 || status == 0x80070057u || status == 0x80000069u) << shape.name << " answered " << status;
        }
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
        EXPECT_EQ((J{0, row.added, 0, row.removed}), (J{vb::esAddBackslash(in.get(), added.out()), added.text(),
                                                       vb::esRemoveBackslash(in.get(), removed.out()), removed.text()}))
            << Utf8(row.in);
    }
    // Guarded: a null input is answered with an empty, non-null string; the
    // work's empty answer leaves a null one. Each replaces the caller's text.
    Bstr guarded("the caller's old text"), unguarded("the caller's old text");
    EXPECT_EQ((J{0, "", 0, kNull}), (J{vb::esGetFileExtension(Bstr().get(), guarded.out()), guarded.text(),
                                      vb::esGetFileExtension(Bstr("C:\\D.d\\f").get(), unguarded.out()), unguarded.text()}));
    guarded = Bstr(), unguarded = Bstr();
    EXPECT_EQ(live, GuardedHeap::Live()) << "a block left behind";
}

// The type library, loaded as an automation client loads it, with no
// registration: each entry is the DLL's export of that name, taking the
// bytes the table gives it; each record has its size.
TEST(AllExports, TheTypeLibraryDescribesEachAsTheDllHasIt) {
    wchar_t path[MAX_PATH] = {};
    const std::wstring file(path, GetModuleFileNameW(nullptr, path, MAX_PATH));
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
        BSTR typeName = nullptr;
        library->GetTypeInfo(index, &info), info->GetTypeAttr(&attributes);
        info->GetDocumentation(MEMBERID_NIL, &typeName, nullptr, nullptr, nullptr);
        auto record = records.find(S(typeName));
        sized += attributes->typekind == TKIND_RECORD && record != records.end() && attributes->cbSizeInstance == record->second;
        for (WORD f = 0; attributes->typekind == TKIND_MODULE && f < attributes->cFuncs; ++f, ++functions) {
            FUNCDESC* function = nullptr;
            BSTR name = nullptr;
            void* address = nullptr;
            info->GetFuncDesc(f, &function), info->GetDocumentation(function->memid, &name, nullptr, nullptr, nullptr);
            const std::string text = S(name);
            int pushed = 0;
            for (SHORT p = 0; p < function->cParams; ++p)
                pushed += function->lprgelemdescParam[p].tdesc.vt == VT_R8 || function->lprgelemdescParam[p].tdesc.vt == VT_DATE ? 8 : 4;
            EXPECT_EQ((J{0, intptr_t(GetProcAddress(CskLibrary(), text.c_str())), CC_STDCALL, bytes[text]}),
                      (J{info->AddressOfMember(function->memid, INVOKE_FUNC, &address), intptr_t(address), function->callconv, pushed}))
                << text;
            SysFreeString(name), info->ReleaseFuncDesc(function);
        }
        SysFreeString(typeName), info->ReleaseTypeAttr(attributes), info->Release();
    }
    library->Release();
    EXPECT_EQ(267, functions);
    EXPECT_EQ(7, sized);
}
