// The bodies of platform.h.
#include "platform/platform.h"

#include <cctype>
#include <utility>

#include "kit/system/scriptedProcess/internals.h"

namespace platform {

using namespace scripted;

namespace {

// The handle of a module is its name in lower case.
std::set<std::string> modules = {"ntdll.dll", "kernel32.dll", "zelkbase.dll"};

std::string LowerCase(std::string text) {
    for (char& c : text) {
        c = static_cast<char>(std::tolower(c));
    }
    return text;
}

} // namespace

ModuleHandle GetModuleHandleW(const WideChar* name) {
    Note([&] { return "GetModuleHandleW(" + Narrow(name) + ")"; });
    if (const auto work = std::exchange(Instance().onFirstModuleHandle, nullptr)) {
        work();
    }
    const auto module = modules.find(LowerCase(Narrow(name)));
    if (module == modules.end() || Instance().missingModules.count(*module) != 0) {
        return nullptr;
    }
    return const_cast<std::string*>(&*module);
}

void* GetProcAddress(ModuleHandle module, const char* name) {
    Note([&] {
        return "GetProcAddress(" + (module == nullptr ? "null" : *static_cast<std::string*>(module)) + ", " + name +
               ")";
    });
    if (module == nullptr || Instance().missing.count(name) != 0) {
        return nullptr;
    }
    return FunctionOfCaller(name);
}

void OutputDebugStringW(const WideChar* text) {
    Instance().debugOutput.emplace_back(text);
}

void WriteStandardOutput(const WideChar* text) {
    Instance().debugOutput.emplace_back(text);
}

uint32_t GetCurrentThreadId() {
    return 1;
}

uint32_t GetLastError() {
    Note([&] { return std::string("GetLastError()"); });
    return Instance().lastError;
}

} // namespace platform
