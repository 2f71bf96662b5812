// An operating system that a test scripts, in place of the real one: a program that links `scriptedSystem` gets
// these bodies of platform.h and no others. For what the real system does not show: the look-ups that are made and not
// made, the arguments of its calls, and their order among the calls of the siblings.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include <gtest/gtest.h>

#include "frame/interfaces.h"
#include "kit/siblings/scriptedSiblings.h"

namespace kit {

// The calls go into the siblings' log, as
//     GetModuleHandleW(ZelkBase.dll)   GetProcAddress(ZelkBase.dll,CreateZelkObject)
//     GetPrivateProfileIntW(OUTLOG,WriteLog,0,PATH)   OutputDebugStringW(TEXT)   WriteStandardOutput(TEXT)
// where a TEXT that is a log record is masked.
class ScriptedSystem {
public:
    static ScriptedSystem& Instance();

    // Both siblings loaded, with the scripted factory; "module.base" is the first; no ini file.
    void Reset();

    // The libraries that are loaded, by file name, with their factory; null: they export none.
    std::map<std::string, CreateZelkObjectFunction> modules;

    // The handle of a library that is loaded; null for others.
    void* Handle(const std::string& name);

    // The integers of the ini file's section "OUTLOG". A key that is missing gives the default.
    std::map<std::string, uint32_t> ini;

    // The raw texts of the two outputs, in UTF-8.
    CallLog debugOutput;
    CallLog standardOutput;

    uint32_t threadId = 4312;
    uint32_t lastError = 0;

    // The source of randomness counts up by the step. When it fails, it leaves such bytes behind all the same.
    unsigned char nextRandomByte = 0;
    unsigned char randomStep = 1;
    bool randomFails = false;
    std::vector<size_t> randomFills; // the requested sizes; not among the calls

private:
    ScriptedSystem() = default;
};

// Siblings and system at their beginning for each test.
class ScriptedSystemFixture : public testing::Test {
protected:
    void SetUp() override {
        siblings.Reset();
        system.Reset();
    }

    // The calls since the last one, of siblings and system, in order.
    std::vector<std::string> TakeCalls() { return siblings.calls.Take(); }

    ScriptedSiblings& siblings = ScriptedSiblings::Instance();
    ScriptedSystem& system = ScriptedSystem::Instance();
};

} // namespace kit
