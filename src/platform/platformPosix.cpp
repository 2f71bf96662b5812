#include "platform/platform.h"

#include <cerrno>
#include <cstdio>
#include <iostream>

#include <dlfcn.h>
#include <link.h>
#include <pthread.h>
#include <sys/random.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "platform/iniFile.h"
#include "platform/unicode.h"

namespace platform {

namespace {

// The id of the calling thread, or 0 if it is not known yet: the system call takes a tenth of the time of a record.
// This access model needs no memory at the first use in a thread.
[[gnu::tls_model("initial-exec")]] thread_local uint32_t threadId = 0;

// The only thread of a forked process has another id than the thread that forked it.
const bool resetsAtFork = pthread_atfork(nullptr, nullptr, [] { threadId = 0; }) == 0;

// Maps "ZelkBase.dll" to "libZelkBase.so". Leaves a name without ".dll" unchanged.
std::string LibraryFileName(const WideChar* name) {
    std::string narrow = ToUtf8(name);
    constexpr std::string_view ending = ".dll";
    if (!narrow.ends_with(ending)) {
        return narrow;
    }
    return "lib" + narrow.substr(0, narrow.size() - ending.size()) + ".so";
}

} // namespace

ModuleHandle GetModuleHandleW(const WideChar* name) {
    void* const module = dlopen(LibraryFileName(name).c_str(), RTLD_NOLOAD | RTLD_LAZY);
    if (module != nullptr) {
        dlclose(module); // callers get no reference; the host keeps the library loaded
    }
    return module;
}

// dlsym also searches the libraries that `module` depends on, so a result counts only if `module` itself contains it.
void* GetProcAddress(ModuleHandle module, const char* name) {
    link_map* wanted = nullptr;
    if (module == nullptr || dlinfo(module, RTLD_DI_LINKMAP, &wanted) != 0) {
        return nullptr;
    }
    void* const address = dlsym(module, name);
    Dl_info info;
    void* owner = nullptr;
    const bool known = address != nullptr && dladdr1(address, &info, &owner, RTLD_DL_LINKMAP) != 0;
    return known && owner == wanted ? address : nullptr;
}

uint32_t GetPrivateProfileIntW(const WideChar* section, const WideChar* key, int32_t defaultValue,
                               const WideChar* path) {
    const std::string value = FindIniValue(ReadIniFile(ToUtf8(path)), ToUtf8(section), ToUtf8(key));
    return value.empty() ? static_cast<uint32_t>(defaultValue) : ParseIniInteger(value);
}

// Allocates nothing: the destructor of a log stream calls it after memory ran out.
void OutputDebugStringW(const WideChar* text) {
    std::u16string_view rest(text);
    char bytes[4];
    flockfile(stderr); // keeps the lines of concurrent threads apart
    while (!rest.empty()) {
        fwrite_unlocked(bytes, 1, EncodeUtf8(TakeCodePoint(rest), bytes), stderr);
    }
    funlockfile(stderr);
}

void WriteStandardOutput(const WideChar* text) {
    std::u16string_view rest(text);
    while (!rest.empty()) {
        std::wcout.put(static_cast<wchar_t>(TakeCodePoint(rest))); // std::wcout's locale encodes what is beyond ASCII
    }
    std::wcout.flush();
    std::wcout.clear();
}

uint32_t GetCurrentThreadId() {
    if (threadId == 0) {
        const auto id = static_cast<uint32_t>(syscall(SYS_gettid));
        if (!resetsAtFork) {
            return id;
        }
        threadId = id;
    }
    return threadId;
}

bool FillRandom(void* buffer, size_t size) {
    auto* at = static_cast<char*>(buffer);
    while (size != 0) {
        const ssize_t filled = getrandom(at, size, 0);
        if (filled < 0) {
            if (errno == EINTR) {
                continue;
            }
            return false;
        }
        at += filled;
        size -= static_cast<size_t>(filled);
    }
    return true;
}

uint32_t GetLastError() {
    return static_cast<uint32_t>(errno);
}

} // namespace platform
