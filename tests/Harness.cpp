#include "Harness.h"

#include <stdexcept>
#include <utility>

#include "Detour.h"

const char* const kNull = "<null>";

// CallChecked, in assembly so that nothing but the callee moves the stack
// between the measurement and the call.
__asm__(
    ".text\n"
    ".globl csk_call_checked\n"
    "csk_call_checked:\n"
    "  pushl %ebp\n"
    "  movl %esp, %ebp\n"
    "  pushl %ebx\n"
    "  pushl %esi\n"
    "  pushl %edi\n"
    "  movl 12(%ebp), %esi\n"
    "  movl 16(%ebp), %ecx\n"
    "  movl %esp, %ebx\n"
    "1:\n"
    "  testl %ecx, %ecx\n"
    "  jz 2f\n"
    "  decl %ecx\n"
    "  pushl (%esi,%ecx,4)\n"
    "  jmp 1b\n"
    "2:\n"
    "  call *8(%ebp)\n"
    "  movl %esp, %ecx\n"
    "  subl %ebx, %ecx\n"
    "  movl 20(%ebp), %edx\n"
    "  movl %ecx, (%edx)\n"
    "  leal -12(%ebp), %esp\n"
    "  popl %edi\n"
    "  popl %esi\n"
    "  popl %ebx\n"
    "  popl %ebp\n"
    "  ret\n");

namespace {
const char kDll[] = "CorvaneSupportKit0100.dll";
HMODULE g_library = nullptr;

void Reload() {
    while (g_library && GetModuleHandleA(kDll)) FreeLibrary(g_library);
    g_library = LoadLibraryA(kDll);
}
}  // namespace

HMODULE CskLibrary() {
    if (!g_library) g_library = LoadLibraryA(kDll);
    if (!g_library) throw std::runtime_error(std::string(kDll) + " did not load");
    return g_library;
}

void* CskProc(const char* name) {
    void* proc = reinterpret_cast<void*>(GetProcAddress(CskLibrary(), name));
    if (!proc) throw std::runtime_error(std::string("the library does not export ") + name);
    return proc;
}

FreshLibrary::FreshLibrary() { Reload(); }
FreshLibrary::~FreshLibrary() { Reload(); }

Bstr::Bstr(const std::string& utf8) : value_(nullptr) { *this = FromUnits(Utf16(utf8)); }

Bstr Bstr::FromUnits(const std::u16string& units) {
    Bstr made;
    made.value_ = SysAllocStringLen(reinterpret_cast<const OLECHAR*>(units.data()), static_cast<UINT>(units.size()));
    return made;
}

Bstr::~Bstr() { GuardedHeap::Owns(value_) ? GuardedHeap::Release(value_) : SysFreeString(value_); }

// The old string goes with the other one.
Bstr& Bstr::operator=(Bstr&& other) noexcept {
    std::swap(value_, other.value_);
    return *this;
}

std::u16string Bstr::units() const {
    return value_ ? std::u16string(reinterpret_cast<const char16_t*>(value_), SysStringLen(value_)) : std::u16string();
}

std::string Bstr::text() const { return value_ ? Utf8(units()) : kNull; }

// Lone surrogates come out as U+FFFD.
std::string Utf8(const std::u16string& units) {
    const auto* wide = reinterpret_cast<const wchar_t*>(units.data());
    std::string out(WideCharToMultiByte(CP_UTF8, 0, wide, static_cast<int>(units.size()), nullptr, 0, nullptr, nullptr), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide, static_cast<int>(units.size()), &out[0], static_cast<int>(out.size()), nullptr, nullptr);
    return out;
}

std::u16string Utf16(const std::string& utf8) {
    std::u16string out(MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), nullptr, 0), u'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), reinterpret_cast<wchar_t*>(&out[0]),
                        static_cast<int>(out.size()));
    return out;
}

TestSafeArray::TestSafeArray(const std::string& bytes, VARTYPE type)
    : array(SafeArrayCreateVector(type, 0, static_cast<ULONG>(bytes.size() / (type == VT_UI1 ? 1 : 4)))) {
    if (!bytes.empty()) std::memcpy(array->pvData, bytes.data(), bytes.size());
}

TestSafeArray::~TestSafeArray() { SafeArrayDestroy(array); }

std::string TestSafeArray::bytes() const {
    if (!array) return std::string();
    return std::string(static_cast<const char*>(array->pvData), array->rgsabound[0].cElements * array->cbElements);
}
