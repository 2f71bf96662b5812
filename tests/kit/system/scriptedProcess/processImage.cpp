#include "kit/system/scriptedProcess/processImage.h"

#include <cstddef>
#include <stdexcept>

namespace scripted {

template <typename P>
ProcessImage<P>::ProcessImage() {
    peb.ProcessParameters = parametersAddress;
    peb.Ldr = ldrAddress;
    ldr.InLoadOrderModuleList.Flink = HeadAddress();
}

template <typename P>
published::UnicodeString<P>& ProcessImage<P>::String(size_t index) {
    switch (index) {
    case 0:
        return parameters.CurrentDirectory.DosPath;
    case 1:
        return parameters.DllPath;
    case 2:
        return parameters.ImagePathName;
    case 3:
        return parameters.CommandLine;
    case 4:
        return parameters.WindowTitle;
    case 5:
        return parameters.DesktopInfo;
    case 6:
        return parameters.ShellInfo;
    case 7:
        return parameters.RuntimeData;
    default:
        throw std::logic_error("there are eight parameter strings");
    }
}

template <typename P>
P ProcessImage<P>::HeaderAddress(size_t index) {
    const auto* const begin = reinterpret_cast<const char*>(&parameters);
    return static_cast<P>(parametersAddress + (reinterpret_cast<const char*>(&String(index)) - begin));
}

template <typename P>
P ProcessImage<P>::HeadAddress() const {
    return static_cast<P>(ldrAddress + offsetof(published::PebLdrData<P>, InLoadOrderModuleList));
}

template <typename P>
void ProcessImage<P>::Map(TargetMemory& memory) {
    memory.Map(pebAddress, sizeof peb);
    memory.Map(parametersAddress, sizeof parameters);
    memory.Map(ldrAddress, sizeof ldr);
}

template <typename P>
void ProcessImage<P>::Put(TargetMemory& memory) {
    memory.Put(pebAddress, peb);
    memory.Put(parametersAddress, parameters);
    memory.Put(ldrAddress, ldr);
}

template <typename P>
void ProcessImage<P>::AddText(TargetMemory& memory, size_t index, const Text& text) {
    const auto maximumLength = static_cast<uint16_t>((text.size() + 1) * sizeof(WideChar));
    AddText(memory, index, text, maximumLength, size_t{maximumLength} * 2);
}

template <typename P>
void ProcessImage<P>::AddText(TargetMemory& memory, size_t index, const Text& text, uint16_t maximumLength,
                              size_t mapped) {
    const size_t length = text.size() * sizeof(WideChar);
    String(index) = {static_cast<uint16_t>(length), maximumLength, TextAddress(index)};
    if (mapped != 0) {
        memory.Map(TextAddress(index), mapped);
        memory.Write(TextAddress(index), text.data(), length);
    }
}

template <typename P>
published::LdrDataTableEntry<P> ProcessImage<P>::Entry(size_t index, const LoadedModule& module, P next) const {
    const auto length = static_cast<uint16_t>(module.path.size() * sizeof(WideChar));
    published::LdrDataTableEntry<P> entry{};
    entry.InLoadOrderLinks.Flink = next;
    entry.DllBase = static_cast<P>(module.base);
    entry.SizeOfImage = module.size;
    entry.FullDllName = {length, static_cast<uint16_t>(length + sizeof(WideChar)), NameAddress(index)};
    return entry;
}

template <typename P>
void ProcessImage<P>::AddModules(TargetMemory& memory, const std::vector<LoadedModule>& modules) {
    if (modules.empty()) {
        return;
    }
    ldr.InLoadOrderModuleList.Flink = EntryAddress(0);
    for (size_t i = 0; i < modules.size(); ++i) {
        const P next = i + 1 == modules.size() ? HeadAddress() : EntryAddress(i + 1);
        const auto entry = Entry(i, modules[i], next);
        memory.Map(EntryAddress(i), sizeof entry);
        memory.Put(EntryAddress(i), entry);
        if (!modules[i].path.empty()) {
            memory.Map(NameAddress(i), modules[i].path.size() * sizeof(WideChar));
            memory.Write(NameAddress(i), modules[i].path.data(), modules[i].path.size() * sizeof(WideChar));
        }
    }
}

template class ProcessImage<uint32_t>;
template class ProcessImage<uint64_t>;

} // namespace scripted
