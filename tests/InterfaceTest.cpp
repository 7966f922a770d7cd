// What a Visual Basic program sees of the library besides the DLL: the
// Declare statements of vb6/CorvaneSupportKit0100.bas, held against the
// export table, and the type library, loaded as an automation client loads
// it and called through its own descriptions.
#include <algorithm>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <vector>

#include "Harness.h"

namespace {

std::vector<std::string> Split(const std::string& text, const std::string& separator) {
    std::vector<std::string> parts;
    size_t from = 0;
    for (size_t at; (at = text.find(separator, from)) != std::string::npos; from = at + separator.size())
        parts.push_back(text.substr(from, at - from));
    parts.push_back(text.substr(from));
    return parts;
}

#ifdef CSK_WINSIM
// Reads the repository's own files, the same in either build.

// Per export: whether it returns nothing, and the stack bytes of each argument.
struct Shape {
    bool returnsNothing = false;
    std::vector<int> bytes;
    bool operator==(const Shape& other) const { return returnsNothing == other.returnsNothing && bytes == other.bytes; }
};

std::map<std::string, Shape> FromTable() {
    std::ifstream table(CSK_SOURCE_DIR "/src/frame/ExportTable.txt");
    std::map<std::string, Shape> shapes;
    for (std::string line; std::getline(table, line);) {
        if (line.empty() || line[0] == '#' || line[0] == '=') continue;
        const std::vector<std::string> fields = Split(line, "|");
        Shape& shape = shapes[fields.at(0)];
        shape.returnsNothing = fields.at(2) == "none";
        for (const std::string& argument : Split(fields.at(3), ";")) {
            std::istringstream words(argument);
            std::string direction, type;
            if (words >> direction >> type)
                shape.bytes.push_back(direction == "in" && (type == "DOUBLE" || type == "DATE") ? 8 : 4);
        }
    }
    return shapes;
}

std::map<std::string, Shape> FromDeclarations() {
    std::ifstream bas(CSK_SOURCE_DIR "/vb6/CorvaneSupportKit0100.bas");
    std::map<std::string, Shape> shapes;
    for (std::string line; std::getline(bas, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        std::istringstream words(line);
        std::string scope, declare, kind, name;
        if (!(words >> scope >> declare >> kind >> name) || declare != "Declare") continue;
        Shape& shape = shapes[name];
        shape.returnsNothing = kind == "Sub";
        const size_t open = line.find('('), close = line.rfind(')');
        const std::string list = line.substr(open + 1, close - open - 1);
        if (list.empty()) continue;
        for (const std::string& argument : Split(list, ", ")) {
            const bool byValue = argument.rfind("ByVal ", 0) == 0;
            const std::string type = argument.substr(argument.rfind(' ') + 1);
            shape.bytes.push_back(byValue && (type == "Double" || type == "Date") ? 8 : 4);
        }
    }
    return shapes;
}

TEST(Declarations, EveryExportWithTheTablesArgumentsAndSizes) {
    const std::map<std::string, Shape> table = FromTable(), declared = FromDeclarations();
    EXPECT_EQ(267u, table.size());
    EXPECT_EQ(table.size(), declared.size());
    for (const auto& [name, shape] : table) {
        auto found = declared.find(name);
        if (found == declared.end()) {
            ADD_FAILURE() << name << " is not declared";
            continue;
        }
        EXPECT_TRUE(shape == found->second) << name;
    }
}
#else
// The type library is a Win32 file read by OLEAUT32: only the DLL build
// can load it.

struct TypeLibrary {
    ITypeLib* library = nullptr;
    TypeLibrary() {
        wchar_t path[MAX_PATH + 40] = {};
        GetModuleFileNameW(nullptr, path, MAX_PATH);
        std::wstring file = path;
        file = file.substr(0, file.rfind(L'\\') + 1) + L"CorvaneSupportKit0100.tlb";
        EXPECT_EQ(S_OK, LoadTypeLibEx(file.c_str(), REGKIND_NONE, &library));
    }
    ~TypeLibrary() {
        if (library) library->Release();
    }
};

std::string Narrow(BSTR text) {
    return text ? Utf8(std::u16string(reinterpret_cast<const char16_t*>(text), SysStringLen(text))) : std::string();
}

// Every function of every module, with the module's type description.
template <class Visit>
void EachFunction(ITypeLib* library, Visit visit) {
    for (UINT index = 0; index < library->GetTypeInfoCount(); ++index) {
        ITypeInfo* info = nullptr;
        library->GetTypeInfo(index, &info);
        TYPEATTR* attributes = nullptr;
        info->GetTypeAttr(&attributes);
        for (WORD function = 0; attributes->typekind == TKIND_MODULE && function < attributes->cFuncs; ++function) {
            FUNCDESC* description = nullptr;
            info->GetFuncDesc(function, &description);
            BSTR name = nullptr;
            info->GetDocumentation(description->memid, &name, nullptr, nullptr, nullptr);
            visit(info, description, Narrow(name));
            SysFreeString(name);
            info->ReleaseFuncDesc(description);
        }
        info->ReleaseTypeAttr(attributes);
        info->Release();
    }
}

TEST(TypeLibrary, EveryEntryIsAnExportOfTheDllAndEveryRecordHasItsSize) {
    TypeLibrary tlb;
    ASSERT_NE(nullptr, tlb.library);
    HMODULE dll = GetModuleHandleA("CorvaneSupportKit0100.dll");
    if (!dll) dll = LoadLibraryA("CorvaneSupportKit0100.dll");
    std::set<std::string> names;
    int functions = 0;
    EachFunction(tlb.library, [&](ITypeInfo* info, FUNCDESC* description, const std::string& name) {
        ++functions;
        names.insert(name);
        BSTR library = nullptr, entry = nullptr;
        WORD ordinal = 0;
        EXPECT_EQ(S_OK, info->GetDllEntry(description->memid, INVOKE_FUNC, &library, &entry, &ordinal)) << name;
        EXPECT_EQ("CorvaneSupportKit0100.dll", Narrow(library)) << name;
        void* address = nullptr;
        EXPECT_EQ(S_OK, info->AddressOfMember(description->memid, INVOKE_FUNC, &address)) << name;
        EXPECT_NE(nullptr, address) << name;
        EXPECT_EQ(reinterpret_cast<void*>(GetProcAddress(dll, name.c_str())), address) << name << " at ordinal " << ordinal;
        EXPECT_EQ(CC_STDCALL, description->callconv) << name;
        SysFreeString(library);
        SysFreeString(entry);
    });
    EXPECT_EQ(267, functions);
    EXPECT_EQ(267u, names.size());
    const std::map<std::string, UINT> sizes = {{"SYSTEMTIME", 16}, {"RECT", 16},        {"NewRect", 16},
                                               {"TMFI", 16},       {"OSVERSIONINFOEX", 156}, {"SYSTEM_INFO", 36},
                                               {"DLLVERSIONINFO", 20}};
    for (const auto& [record, size] : sizes) {
        ITypeInfo* info = nullptr;
        MEMBERID member = 0;
        USHORT found = 1;
        std::wstring wide(record.begin(), record.end());
        ASSERT_EQ(S_OK, tlb.library->FindName(&wide[0], 0, &info, &member, &found)) << record;
        ASSERT_EQ(1, found) << record;
        TYPEATTR* attributes = nullptr;
        info->GetTypeAttr(&attributes);
        EXPECT_EQ(TKIND_RECORD, attributes->typekind) << record;
        EXPECT_EQ(size, attributes->cbSizeInstance) << record;
        info->ReleaseTypeAttr(attributes);
        info->Release();
    }
}

// One export of every family, called twice with the same inputs: through
// DispCallFunc with the arguments the type library describes, and directly,
// pushing those same arguments, where the DLL must remove exactly the bytes
// the type library said. Answers and statuses must agree.
struct Sample { const char* name; std::vector<std::string> inputs; };

const Sample kSamples[] = {
    {"DllGetVersion", {}},
    {"esGetFileName", {"C:\\Data\\report.txt:summary", "-1"}},
    {"esBuildFileName2", {"C:\\", "Program Files", "", "Corvane\\", "report.txt"}},
    {"esGetLongFileName", {"C:\\windows\\win.ini", "0"}},
    {"esGetTempFileName2", {"C:\\no such folder\\", "tmp"}},
    {"esGetFileAttributes", {"C:\\windows"}},
    {"esGetFileSizeEx", {"C:\\windows\\win.ini"}},
    {"esGetFileAppPath", {"no such program.exe"}},
    {"esGetVersionEx", {}},
    {"esIsHostWinNT", {}},
    {"esIsProcessWin64Ex", {"0"}},
    {"esGetDayNumEx2", {"45000.75"}},
    {"esFormatDate2", {"45000.75", "-1", "0"}},
    {"esGetRedRGB", {"1193046"}},
    {"esMakeWord", {"18", "52"}},
    {"esGetRnd", {"5", "5", "0"}},
    {"esReadLongFromRegistry", {"-2147483647", "Software\\No Such Key", "Value", "42"}},
    {"esGetSpecialFolder", {"36"}},
    {"esGetWindowsPath", {}},
    {"esGetVBVersion", {}},
    {"esCallFunctionEx_i44_r4", {"0", "1", "2"}},
    {"esMsgBox2", {"Shown through the type library", "64", "Corvane"}},
    {"esFixUserControlsContainerWindow", {}},
    {"esNewRectToRect", {}},
    {"esGetWindowClassName", {"0"}},
    {"esDisableWindowTransparecny", {"0"}},
    {"esScreenTwipsPerPixelX", {}},
    {"esLogInfo", {"The type library reaches the event log."}},
    {"esGetUserName", {}},
    {"esCLng", {"&HFF"}},
    {"esSetForegroundProcessPriority", {}},
};

// The argument values of one call: the by-value ones as the description's
// types, and each pointer to storage of its own.
struct Call {
    std::vector<VARIANT> values;
    std::vector<std::vector<unsigned char>> storage;
    std::vector<BSTR*> strings;

    Call(ITypeInfo* info, FUNCDESC* description, const std::vector<std::string>& inputs) {
        values.resize(size_t(description->cParams));
        storage.resize(size_t(description->cParams));
        size_t next = 0;
        for (SHORT i = 0; i < description->cParams; ++i) {
            const TYPEDESC& type = description->lprgelemdescParam[i].tdesc;
            const bool in = (description->lprgelemdescParam[i].paramdesc.wParamFlags & PARAMFLAG_FOUT) == 0;
            const std::string input = in && next < inputs.size() ? inputs[next++] : "";
            VARIANT& value = values[size_t(i)];
            VariantInit(&value);
            value.vt = type.vt;
            switch (type.vt) {
                case VT_BSTR: {
                    std::wstring wide(input.begin(), input.end());
                    value.bstrVal = SysAllocString(wide.c_str());
                    break;
                }
                case VT_R8: case VT_DATE: value.dblVal = atof(input.c_str()); break;
                case VT_R4: value.fltVal = float(atof(input.c_str())); break;
                case VT_PTR: {
                    UINT size = 16;
                    if (type.lptdesc->vt == VT_USERDEFINED) {
                        ITypeInfo* record = nullptr;
                        info->GetRefTypeInfo(type.lptdesc->hreftype, &record);
                        TYPEATTR* attributes = nullptr;
                        record->GetTypeAttr(&attributes);
                        size = attributes->cbSizeInstance;
                        record->ReleaseTypeAttr(attributes);
                        record->Release();
                    }
                    storage[size_t(i)].assign(size, 0);
                    if (type.lptdesc->vt == VT_USERDEFINED) std::memcpy(storage[size_t(i)].data(), &size, 4);
                    if (type.lptdesc->vt == VT_BSTR) strings.push_back(reinterpret_cast<BSTR*>(storage[size_t(i)].data()));
                    value.vt = VT_I4;
                    value.lVal = LONG(reinterpret_cast<intptr_t>(storage[size_t(i)].data()));
                    break;
                }
                default: value.vt = VT_I4, value.lVal = atol(input.c_str()); break;
            }
        }
    }
    ~Call() {
        for (VARIANT& value : values) VariantClear(&value);
        for (BSTR* text : strings) SysFreeString(*text);
    }
    // What the call left behind: every answer's bytes, strings by their text.
    std::string Answers() const {
        std::string all;
        for (const auto& bytes : storage) {
            BSTR* text = reinterpret_cast<BSTR*>(const_cast<unsigned char*>(bytes.data()));
            const bool isText = std::find(strings.begin(), strings.end(), text) != strings.end();
            all += (isText ? *text ? Narrow(*text) : "<null>" : std::string(bytes.begin(), bytes.end())) + "|";
        }
        return all;
    }
};

TEST(TypeLibrary, OneExportOfEveryFamilyCalledThroughItsDescription) {
    TypeLibrary tlb;
    ASSERT_NE(nullptr, tlb.library);
    std::set<std::string> called;
    EachFunction(tlb.library, [&](ITypeInfo* info, FUNCDESC* description, const std::string& name) {
        for (const Sample& sample : kSamples) {
            if (name != sample.name) continue;
            called.insert(name);
            void* address = nullptr;
            info->AddressOfMember(description->memid, INVOKE_FUNC, &address);
            if (!address) {
                ADD_FAILURE() << name << " cannot be reached through the type library";
                continue;
            }
            const VARTYPE result = description->elemdescFunc.tdesc.vt == VT_VOID ? VT_EMPTY : VT_I4;
            Call through(info, description, sample.inputs), direct(info, description, sample.inputs);
            std::vector<VARTYPE> types;
            std::vector<VARIANTARG*> arguments;
            for (VARIANT& value : through.values) types.push_back(value.vt), arguments.push_back(&value);
            VARIANT answer;
            VariantInit(&answer);
            // A message box is closed by a helper thread; other calls run as they are.
            const bool box = name.rfind("esMsgBox", 0) == 0;
            auto run = [box](const std::function<void()>& call) { box ? (void)CloseNextBox(call) : call(); };
            HRESULT dispatched = E_FAIL;
            run([&] {
                dispatched = DispCallFunc(nullptr, ULONG_PTR(address), CC_STDCALL, result, UINT(types.size()),
                                          types.data(), arguments.data(), &answer);
            });
            ASSERT_EQ(S_OK, dispatched) << name;
            std::vector<uint32_t> slots;
            for (const VARIANT& value : direct.values) {
                uint32_t words[2];
                std::memcpy(words, &value.dblVal, 8);
                slots.push_back(value.vt == VT_R8 || value.vt == VT_DATE ? words[0] : uint32_t(value.lVal));
                if (value.vt == VT_R8 || value.vt == VT_DATE) slots.push_back(words[1]);
            }
            int32_t espDelta = 0;
            uint32_t status = 0;
            run([&] { status = CallChecked(address, slots.data(), uint32_t(slots.size()), &espDelta); });
            EXPECT_EQ(0, espDelta) << name << ": the DLL removed other bytes than the type library pushes";
            if (result == VT_I4) EXPECT_EQ(LONG(status), answer.lVal) << name;
            EXPECT_EQ(direct.Answers(), through.Answers()) << name;
        }
    });
    EXPECT_EQ(std::size(kSamples), called.size());
    SetPriorityClass(GetCurrentProcess(), NORMAL_PRIORITY_CLASS);
}
#endif

}  // namespace
