#include "Harness.h"

#include <stdexcept>
#include <thread>

#ifdef CSK_WINSIM
#include "winsim_control.h"
#endif

#ifndef _WIN32
#include <dlfcn.h>
#include <unistd.h>

#include <filesystem>
#endif

const char* const kNull = "<null>";

#if defined(__i386__)
// CallChecked, in assembly so that nothing but the callee moves the stack
// between the measurement and the call. The stack is 16-byte aligned at the
// call, as both platforms' compilers assume.
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
    "  leal 0(,%ecx,4), %edx\n"
    "  movl %esp, %eax\n"
    "  subl %edx, %eax\n"
    "  andl $-16, %eax\n"
    "  addl %edx, %eax\n"
    "  movl %eax, %esp\n"
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
#endif

#ifndef _WIN32
static void* g_freshLibrary = nullptr;

FreshLibrary::FreshLibrary() {
    const std::string path = "/tmp/csk-fresh-" + std::to_string(getpid()) + ".so";
    std::filesystem::copy_file(CSK_LIBRARY_PATH, path, std::filesystem::copy_options::overwrite_existing);
    g_freshLibrary = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    std::filesystem::remove(path);
    if (!g_freshLibrary) throw std::runtime_error(std::string("a fresh library did not load: ") + dlerror());
}

FreshLibrary::~FreshLibrary() {
    dlclose(g_freshLibrary);
    g_freshLibrary = nullptr;
}
#endif

void* CskProc(const char* name) {
#ifdef _WIN32
    static HMODULE library = LoadLibraryA("CorvaneSupportKit0100.dll");
    void* proc = library ? reinterpret_cast<void*>(GetProcAddress(library, name)) : nullptr;
#else
    static void* library = dlopen(CSK_LIBRARY_PATH, RTLD_NOW | RTLD_LOCAL);
    void* proc = g_freshLibrary ? dlsym(g_freshLibrary, name) : library ? dlsym(library, name) : nullptr;
#endif
    if (!proc) throw std::runtime_error(std::string("the library does not export ") + name);
    return proc;
}

Bstr::Bstr(const std::string& utf8) : value_(nullptr) { *this = FromUnits(Utf16(utf8)); }

Bstr Bstr::FromUnits(const std::u16string& units) {
    Bstr made;
    made.value_ = SysAllocStringLen(reinterpret_cast<const OLECHAR*>(units.data()), static_cast<UINT>(units.size()));
    return made;
}

Bstr::~Bstr() { SysFreeString(value_); }

Bstr& Bstr::operator=(Bstr&& other) noexcept {
    if (this != &other) {
        SysFreeString(value_);
        value_ = other.value_;
        other.value_ = nullptr;
    }
    return *this;
}

std::u16string Bstr::units() const {
    if (!value_) return std::u16string();
    return std::u16string(reinterpret_cast<const char16_t*>(value_), SysStringLen(value_));
}

std::string Bstr::text() const { return value_ ? Utf8(units()) : kNull; }

std::u16string Utf16(const std::string& utf8) {
    std::u16string out;
    for (size_t i = 0; i < utf8.size();) {
        unsigned char c = static_cast<unsigned char>(utf8[i]);
        char32_t cp;
        int extra = c < 0x80 ? 0 : c < 0xE0 ? 1 : c < 0xF0 ? 2 : 3;
        cp = extra == 0 ? c : extra == 1 ? (c & 0x1F) : extra == 2 ? (c & 0x0F) : (c & 0x07);
        for (int k = 1; k <= extra && i + k < utf8.size(); ++k) cp = (cp << 6) | (utf8[i + k] & 0x3F);
        i += extra + 1;
        if (cp >= 0x10000) {
            cp -= 0x10000;
            out += static_cast<char16_t>(0xD800 + (cp >> 10));
            out += static_cast<char16_t>(0xDC00 + (cp & 0x3FF));
        } else {
            out += static_cast<char16_t>(cp);
        }
    }
    return out;
}

std::string Utf8(const std::u16string& units) {
    std::string out;
    for (size_t i = 0; i < units.size(); ++i) {
        char32_t cp = units[i];
        if (cp >= 0xD800 && cp <= 0xDBFF && i + 1 < units.size() && units[i + 1] >= 0xDC00 && units[i + 1] <= 0xDFFF)
            cp = 0x10000 + ((cp - 0xD800) << 10) + (units[++i] - 0xDC00);
        else if (cp >= 0xD800 && cp <= 0xDFFF)
            cp = 0xFFFD;
        if (cp < 0x80) {
            out += static_cast<char>(cp);
        } else if (cp < 0x800) {
            out += static_cast<char>(0xC0 | (cp >> 6));
            out += static_cast<char>(0x80 | (cp & 0x3F));
        } else if (cp < 0x10000) {
            out += static_cast<char>(0xE0 | (cp >> 12));
            out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (cp & 0x3F));
        } else {
            out += static_cast<char>(0xF0 | (cp >> 18));
            out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
            out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (cp & 0x3F));
        }
    }
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

#ifndef CSK_WINSIM
ShownBox CloseNextBox(const std::function<void()>& show, const char* caption) {
    ShownBox shown;
    std::thread watcher([&shown, caption] {
        for (int tries = 0; tries < 600; ++tries, Sleep(50)) {
            HWND box = FindWindowA("#32770", tries < 100 ? caption : nullptr);
            if (!box) continue;
            WCHAR text[512] = {}, title[256] = {};
            GetWindowTextW(box, title, 256);
            GetDlgItemTextW(box, 0xFFFF, text, 512);
            HICON icon = reinterpret_cast<HICON>(SendDlgItemMessageW(box, 1088, STM_GETICON, 0, 0));
            shown.caption = Utf8(reinterpret_cast<const char16_t*>(title));
            shown.text = Utf8(reinterpret_cast<const char16_t*>(text));
            shown.exclamation = icon && icon == LoadIconW(nullptr, MAKEINTRESOURCEW(32515));
            shown.okOnly = GetDlgItem(box, IDOK) && !GetDlgItem(box, IDCANCEL);
            for (int wait = 0; wait < 100 && IsWindow(box); ++wait, Sleep(50)) PostMessageW(box, WM_COMMAND, IDOK, 0);
            return;
        }
    });
    show();
    watcher.join();
    return shown;
}
#endif

#ifdef CSK_WINSIM
WinsimReset::WinsimReset(bool nt) {
    winsim::reset();
    if (!nt) winsim::setVersion(VER_PLATFORM_WIN32_WINDOWS, 4, 0, 950, "", 0);
}
#endif

std::string ExportText(const VbFunction<HRESULT, BSTR*>& function) {
    Bstr out("stale");
    EXPECT_EQ(S_OK, function(out.out()));
    return out.text();
}
