// The memory of a well-formed process of one width: PEB, parameters with their strings, loader list.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "kit/system/published/processLayouts.h"
#include "kit/system/scriptedProcess/system.h"

namespace scripted {

struct LoadedModule {
    uint64_t base;
    uint32_t size;
    Text path;
};

// Each structure is in a separate range, so that a read that begins or ends wrongly fails or shows. A test that
// needs other contents changes them here, and has Put write it again.
template <typename P>
class ProcessImage {
public:
    static constexpr bool is64Bit = sizeof(P) == 8;
    static constexpr P high = static_cast<P>(is64Bit ? 0x7FF600000000 : 0); // 64-bit addresses do not fit 32 bits

    P pebAddress = high + 0x00310000;
    P parametersAddress = high + 0x00320010;
    P ldrAddress = high + 0x00330020;
    P entriesAddress = high + 0x01000000; // an entry every 0x10000, with its name 0x1000 behind it
    P textsAddress = high + 0x02000000;   // a text every 0x100000

    published::Peb<P> peb{};
    published::RtlUserProcessParameters<P> parameters{};
    published::PebLdrData<P> ldr{};

    ProcessImage();

    // The string with that index of ProcessParameterField.
    published::UnicodeString<P>& String(size_t index);

    P TextAddress(size_t index) const { return static_cast<P>(textsAddress + index * 0x100000); }
    P HeaderAddress(size_t index);

    // Maps the PEB, the parameters and the (empty) loader data.
    void Map(TargetMemory& memory);

    // Writes them unchanged.
    void Put(TargetMemory& memory);

    // Makes the parameter string `text` with room for its NUL, maps as much as a doubled read of it takes, and writes
    // it.
    void AddText(TargetMemory& memory, size_t index, const Text& text);

    // The same with a MaximumLength and a range of other sizes, in bytes.
    void AddText(TargetMemory& memory, size_t index, const Text& text, uint16_t maximumLength, size_t mapped);

    // Links the modules in load order behind the head. Put writes the head.
    void AddModules(TargetMemory& memory, const std::vector<LoadedModule>& modules);

    P HeadAddress() const;
    P EntryAddress(size_t index) const { return static_cast<P>(entriesAddress + index * 0x10000); }
    P NameAddress(size_t index) const { return static_cast<P>(EntryAddress(index) + 0x1000); }
    published::LdrDataTableEntry<P> Entry(size_t index, const LoadedModule& module, P next) const;
};

extern template class ProcessImage<uint32_t>;
extern template class ProcessImage<uint64_t>;

} // namespace scripted
