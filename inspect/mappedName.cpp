#include "mappedName.h"

#include <algorithm>
#include <cstdint>

#include "native/remoteLayouts.h"

namespace mordinspect {

WideText MappedName(const void* reply, size_t size, bool machineIs32Bit) {
    const auto begin = reinterpret_cast<uintptr_t>(reply);
    const uint64_t address = machineIs32Bit ? LoadField<uint32_t>(reply, Bits32::unicodeStringBuffer)
                                            : LoadField<uint64_t>(reply, Bits64::unicodeStringBuffer);
    if (address < begin || address - begin >= size) {
        return {};
    }
    const auto offset = static_cast<size_t>(address - begin);
    const size_t length = std::min<size_t>(LoadField<uint16_t>(reply, unicodeStringLength), size - offset);
    WideText name(length / sizeof(WideChar), WideChar{});
    std::memcpy(name.data(), static_cast<const char*>(reply) + offset, name.size() * sizeof(WideChar));
    return name;
}

} // namespace mordinspect
