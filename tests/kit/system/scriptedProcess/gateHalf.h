// The 64-bit half as a loader leaves it: TEB, PEB, loader list, and an ntdll with its export tables.
#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "kit/system/scriptedProcess/gate.h"
#include "kit/system/scriptedProcess/system.h"

namespace scripted {

struct GateModule {
    Text baseName;
    uint64_t base = 0;
    std::optional<uint16_t> maximumLength; // of the name, in bytes; else its length and a NUL
};

// A test sets what differs before Build.
struct GateHalf {
    static constexpr uint64_t threadBlock = 0x7F0000010000;
    static constexpr uint64_t peb = 0x7F0000020000;
    static constexpr uint64_t ldr = 0x7F0000030000;
    static constexpr uint64_t firstEntry = 0x7F0000040000; // the others follow at distances of 0x1000
    static constexpr uint64_t ntdll = 0x7FFB12340000;

    static constexpr uint32_t exportDirectory = 0x1000; // relative to ntdll, like the tables
    static constexpr uint32_t functionTable = 0x2000;
    static constexpr uint32_t ordinalTable = 0x3000;
    static constexpr uint32_t nameTable = 0x4000;
    static constexpr uint32_t nameTexts = 0x5000;

    std::vector<GateModule> modules = {
        {WIDE("program.exe"), 0x400000, {}}, {WIDE("ntdll.dll"), ntdll, {}}, {WIDE("wow64.dll"), 0x7FFB11110000, {}}};
    int32_t newHeader = 0x80; // e_lfanew

    // Names in the order of the name table. The functions stand in the opposite order, with one before them that has no
    // name.
    std::vector<std::string> exports = {
        "LdrFindEntryForAddress", "LdrGetProcedureAddress", "LdrGetProcedureAddressEx", "NtAllocateVirtualMemory",
        "NtFreeVirtualMemory",    "NtGetContextThread",     "NtProtectVirtualMemory",   "NtQueryInformationThread",
        "NtQueryVirtualMemory",   "NtReadVirtualMemory",    "NtSetContextThread",       "NtWriteVirtualMemory"};

    // Names that LdrGetProcedureAddress does not find. May change later.
    std::set<std::string> hidden;

    // Fills `gate`, whose functions refer to this object from then on.
    void Build(Gate& gate);

    uint64_t FunctionCount() const { return exports.size() + 1; }
    uint64_t AddressOf(const std::string& name) const;
};

} // namespace scripted
