#include "kit/system/scriptedProcess/gateHalf.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

#include "kit/system/published/queryLayouts.h"
#include "kit/system/scriptedProcess/internals.h"

namespace scripted {

namespace {

using Entry = published::LdrDataTableEntry7<uint64_t>;
using LdrData = published::PebLdrData<uint64_t>;

constexpr uint64_t entryDistance = 0x1000;
constexpr uint64_t nameInEntry = 0x200; // where the test puts the text
constexpr uint32_t functionCode = 0x10000;

uint32_t FunctionAddress(uint64_t index) {
    return functionCode + static_cast<uint32_t>(index) * 0x100;
}

void BuildLoaderList(Gate& gate, const std::vector<GateModule>& modules) {
    const uint64_t head = GateHalf::ldr + offsetof(LdrData, InLoadOrderModuleList);
    LdrData data{};
    data.InLoadOrderModuleList.Flink = modules.empty() ? head : GateHalf::firstEntry;
    gate.memory.Map(GateHalf::ldr, sizeof data);
    gate.memory.Put(GateHalf::ldr, data);

    for (size_t i = 0; i < modules.size(); ++i) {
        const uint64_t address = GateHalf::firstEntry + i * entryDistance;
        const auto length = static_cast<uint16_t>(modules[i].baseName.size() * sizeof(WideChar));
        Entry entry{};
        entry.before.InLoadOrderLinks.Flink = i + 1 == modules.size() ? head : address + entryDistance;
        entry.before.DllBase = modules[i].base;
        entry.before.BaseDllName = {length, modules[i].maximumLength.value_or(static_cast<uint16_t>(length + 2)),
                                    address + nameInEntry};
        gate.memory.Map(address, entryDistance);
        gate.memory.Put(address, entry);
        gate.memory.Write(address + nameInEntry, modules[i].baseName.data(), length);
    }
}

uint64_t FindProcedure(const GateHalf& half, const GateArguments& arguments) {
    published::AnsiString<uint64_t> name;
    std::memcpy(&name, reinterpret_cast<const void*>(arguments.at(1)), sizeof name);
    const std::string text(reinterpret_cast<const char*>(name.Buffer), name.Length);
    const bool found = arguments.at(0) == GateHalf::ntdll && half.hidden.count(text) == 0 &&
                       std::count(half.exports.begin(), half.exports.end(), text) != 0;
    if (!found) {
        return procedureNotFound;
    }
    const uint64_t address = half.AddressOf(text);
    std::memcpy(reinterpret_cast<void*>(arguments.at(3)), &address, sizeof address);
    return 0;
}

// The length is a 32-bit word for queries of threads, and a 64-bit one for those of memory.
template <typename Length>
uint64_t Told(const Answer& answer, uint64_t lengthPlace) {
    if (lengthPlace != 0) {
        const auto length = static_cast<Length>(answer.written);
        std::memcpy(reinterpret_cast<void*>(lengthPlace), &length, sizeof length);
    }
    return answer.status;
}

platform::Handle HandleOf(uint64_t argument) {
    return reinterpret_cast<platform::Handle>(argument);
}

} // namespace

uint64_t GateHalf::AddressOf(const std::string& name) const {
    const auto place = std::find(exports.rbegin(), exports.rend(), name); // functions are in reverse order
    if (place == exports.rend()) {
        throw std::logic_error("the 64-bit ntdll has no " + name);
    }
    return ntdll + FunctionAddress(static_cast<uint64_t>(place - exports.rbegin()) + 1);
}

void GateHalf::Build(Gate& gate) {
    gate.threadBlock = threadBlock;
    published::Teb<uint64_t> teb{};
    teb.ProcessEnvironmentBlock = peb;
    gate.memory.Map(threadBlock, sizeof teb);
    gate.memory.Put(threadBlock, teb);
    published::Peb<uint64_t> block{};
    block.Ldr = ldr;
    gate.memory.Map(peb, sizeof block);
    gate.memory.Put(peb, block);
    BuildLoaderList(gate, modules);

    gate.memory.Map(ntdll - 0x1000, 0x21000); // a header before the base has room too
    published::ImageDosHeader dos{};
    dos.e_magic = 0x5A4D;
    dos.e_lfanew = newHeader;
    gate.memory.Put(ntdll, dos);
    published::ImageNtHeaders64 headers{};
    headers.OptionalHeader.ExportDirectory.VirtualAddress = exports.empty() ? 0 : exportDirectory;
    gate.memory.Put(ntdll + static_cast<uint64_t>(int64_t{newHeader}), headers);

    published::ImageExportDirectory directory{};
    directory.NumberOfFunctions = static_cast<uint32_t>(FunctionCount());
    directory.NumberOfNames = static_cast<uint32_t>(exports.size());
    directory.AddressOfFunctions = functionTable;
    directory.AddressOfNames = nameTable;
    directory.AddressOfNameOrdinals = ordinalTable;
    gate.memory.Put(ntdll + exportDirectory, directory);
    for (uint32_t i = 0; i < FunctionCount(); ++i) {
        gate.memory.Put(ntdll + functionTable + i * sizeof(uint32_t), FunctionAddress(i));
    }
    uint32_t text = nameTexts;
    for (size_t i = 0; i < exports.size(); ++i) {
        gate.memory.Put(ntdll + nameTable + i * sizeof(uint32_t), text);
        gate.memory.Put(ntdll + ordinalTable + i * sizeof(uint16_t), static_cast<uint16_t>(exports.size() - i));
        gate.memory.Write(ntdll + text, exports[i].c_str(), exports[i].size() + 1);
        text += static_cast<uint32_t>(exports[i].size() + 1);
        gate.names[AddressOf(exports[i])] = exports[i];
    }
    const auto define = [&](const std::string& name, std::function<uint64_t(const GateArguments&)> body) {
        if (std::count(exports.begin(), exports.end(), name) != 0) {
            gate.functions[AddressOf(name)] = std::move(body);
        }
    };
    define("LdrGetProcedureAddress", [this](const GateArguments& a) { return FindProcedure(*this, a); });
    define("NtQueryInformationThread", [](const GateArguments& a) {
        const Answer answer =
            QueryThread<uint64_t>("64-bit NtQueryInformationThread", HandleOf(a.at(0)), static_cast<uint32_t>(a.at(1)),
                                  reinterpret_cast<void*>(a.at(2)), a.at(3));
        return Told<uint32_t>(answer, a.at(4));
    });
    define("NtQueryVirtualMemory", [](const GateArguments& a) {
        const Answer answer =
            QueryMemory<uint64_t>("64-bit NtQueryVirtualMemory", HandleOf(a.at(0)), a.at(1),
                                  static_cast<uint32_t>(a.at(2)), reinterpret_cast<void*>(a.at(3)), a.at(4));
        return Told<uint64_t>(answer, a.at(5));
    });
    define("NtGetContextThread", [](const GateArguments& a) -> uint64_t {
        const auto outcome = ScriptedOutcome("64-bit NtGetContextThread");
        if (outcome) {
            return outcome->status;
        }
        std::memcpy(reinterpret_cast<void*>(a.at(1)), "gate64", 7);
        return 0;
    });
}

} // namespace scripted
