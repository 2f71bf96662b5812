#include "kit/system/scriptedSystem.h"

#include "kit/text/logRecords.h"
#include "kit/text/utf.h"
#include "platform/platform.h"

namespace kit {

namespace {

void Log(const std::string& call) {
    ScriptedSiblings::Instance().calls.Add(call);
}

// A handle is the address of the library's name.
std::string NameOf(const void* handle) {
    for (const auto& module : ScriptedSystem::Instance().modules) {
        if (&module.first == handle) {
            return module.first;
        }
    }
    return "unknown module";
}

} // namespace

ScriptedSystem& ScriptedSystem::Instance() {
    static ScriptedSystem* const system = new ScriptedSystem; // the library may still call when the program ends
    return *system;
}

void ScriptedSystem::Reset() {
    modules = {{"ZelkBase.dll", ScriptedSiblings::Factory()}, {"Ferrocore.dll", ScriptedSiblings::Factory()}};
    ScriptedSiblings::Instance().foundModule = Handle("ZelkBase.dll");
    ini.clear();
    debugOutput.Take();
    standardOutput.Take();
    threadId = 4312;
    lastError = 0;
    nextRandomByte = 0;
    randomStep = 1;
    randomFails = false;
    randomFills.clear();
}

void* ScriptedSystem::Handle(const std::string& name) {
    const auto found = modules.find(name);
    return found == modules.end() ? nullptr : const_cast<std::string*>(&found->first);
}

} // namespace kit

namespace platform {

using kit::ScriptedSystem;
using kit::ToNarrow;

ModuleHandle GetModuleHandleW(const WideChar* name) {
    kit::Log("GetModuleHandleW(" + ToNarrow(name) + ")");
    return ScriptedSystem::Instance().Handle(ToNarrow(name));
}

void* GetProcAddress(ModuleHandle module, const char* name) {
    const std::string library = kit::NameOf(module);
    kit::Log("GetProcAddress(" + library + "," + name + ")");
    const auto& modules = ScriptedSystem::Instance().modules;
    const auto found = modules.find(library);
    return found == modules.end() || std::string(name) != "CreateZelkObject" ? nullptr
                                                                             : reinterpret_cast<void*>(found->second);
}

uint32_t GetPrivateProfileIntW(const WideChar* section, const WideChar* key, int32_t defaultValue,
                               const WideChar* path) {
    kit::Log("GetPrivateProfileIntW(" + ToNarrow(section) + "," + ToNarrow(key) + "," + std::to_string(defaultValue) +
             "," + ToNarrow(path) + ")");
    const auto& ini = ScriptedSystem::Instance().ini;
    const auto found = ini.find(ToNarrow(key));
    return found == ini.end() ? static_cast<uint32_t>(defaultValue) : found->second;
}

void OutputDebugStringW(const WideChar* text) {
    kit::Log("OutputDebugStringW(" + kit::MaskRecord(ToNarrow(text)) + ")");
    ScriptedSystem::Instance().debugOutput.Add(ToNarrow(text));
}

void WriteStandardOutput(const WideChar* text) {
    kit::Log("WriteStandardOutput(" + kit::MaskRecord(ToNarrow(text)) + ")");
    ScriptedSystem::Instance().standardOutput.Add(ToNarrow(text));
}

uint32_t GetCurrentThreadId() {
    return ScriptedSystem::Instance().threadId;
}

bool FillRandom(void* buffer, size_t size) {
    ScriptedSystem& system = ScriptedSystem::Instance();
    system.randomFills.push_back(size);
    for (auto* at = static_cast<unsigned char*>(buffer); size != 0; --size) {
        *at++ = system.nextRandomByte;
        system.nextRandomByte = static_cast<unsigned char>(system.nextRandomByte + system.randomStep);
    }
    return !system.randomFails;
}

uint32_t GetLastError() {
    return ScriptedSystem::Instance().lastError;
}

} // namespace platform
