// The strings of a process's parameters block.
#include <iterator>

#include "native/remoteLayouts.h"
#include "native/systemBuffer.h"
#include "native/targetProcess.h"

namespace {

// The parameters pointer is read as eight bytes for both bitnesses, by design: in a 32-bit target the word behind the
// pointer becomes the upper half of the address.
constexpr uint64_t parametersPointerSize = 8;

// The read covers twice the bytes that the target declares and runs past the string, by design.
constexpr uint64_t textReadFactor = 2;

} // namespace

Wow64extStringW::Wow64extStringW(const uint16_t& maximumLength)
    : buffer(new WideChar[maximumLength + size_t{1}]), length(maximumLength) {
    buffer[maximumLength] = WideChar{};
}

std::shared_ptr<Wow64extStringW> TargetProcess::ReadImagePath() {
    return ReadParameterString(ImagePathName);
}

std::shared_ptr<Wow64extStringW> TargetProcess::ReadCommandLine() {
    return ReadParameterString(CommandLine);
}

std::shared_ptr<Wow64extStringW> TargetProcess::ReadCurrentDirectory() {
    return ReadParameterString(CurrentDirectory);
}

std::shared_ptr<Wow64extStringW> TargetProcess::ReadParameterString(uint32_t fieldIndex) {
    return native->TargetIsWow64() ? ReadParameterString32(fieldIndex) : ReadParameterString64(fieldIndex);
}

std::shared_ptr<Wow64extStringW> TargetProcess::ReadParameterString32(uint32_t fieldIndex) {
    return ReadParameterStringOf<Bits32>(fieldIndex);
}

std::shared_ptr<Wow64extStringW> TargetProcess::ReadParameterString64(uint32_t fieldIndex) {
    return ReadParameterStringOf<Bits64>(fieldIndex);
}

template <typename Bits>
std::shared_ptr<Wow64extStringW> TargetProcess::ReadParameterStringOf(uint32_t fieldIndex) {
    if (fieldIndex >= std::size(Bits::parameterStrings)) {
        return nullptr;
    }
    SystemBuffer<Bits::pebSize> peb;
    const uint64_t pebAddress = ReadPeb<Bits>(peb.bytes);
    if (pebAddress == 0) {
        return nullptr;
    }
    uint64_t parameters = 0;
    static_assert(sizeof parameters == parametersPointerSize);
    if (Failed(
            native->ReadMemory(pebAddress + Bits::pebProcessParameters, &parameters, parametersPointerSize, nullptr))) {
        return nullptr;
    }
    SystemBuffer<Bits::unicodeStringSize> header;
    const uint64_t headerAddress = parameters + Bits::parameterStrings[fieldIndex];
    if (Failed(native->ReadMemory(headerAddress, header.bytes, sizeof header.bytes, nullptr))) {
        return nullptr;
    }
    const auto maximumLength = LoadField<uint16_t>(header.bytes, unicodeStringMaximumLength);
    const uint64_t textAddress = LoadField<typename Bits::Pointer>(header.bytes, Bits::unicodeStringBuffer);
    auto string = std::make_shared<Wow64extStringW>(maximumLength);
    if (Failed(native->ReadMemory(textAddress, string->buffer.get(), maximumLength * textReadFactor, nullptr))) {
        return nullptr;
    }
    return string;
}
