// What the siblings of a system that never complains have in common.
#pragma once

#include <algorithm>
#include <cstdint>

#include "frame/interfaces.h"

namespace kit {

// A service that lives as long as the program and knows no other interface.
template <typename Interface>
class PlainService : public Interface {
public:
    int32_t AddRef() override { return 2; }
    int32_t Release() override { return 1; }
    uint32_t QueryInterface(const GUID*, void**) override { return 0x80004002; }
};

// Makes one unit of each byte and the other way round, whatever the bytes are: nothing is ever refused.
class ByteConverter final : public PlainService<ITextConverter> {
public:
    int32_t Convert(uint32_t command, TextConversionRequest* request) override {
        if (command == CONVERT_NARROW_TO_WIDE) {
            Copy<unsigned char, WideChar>(*request);
        } else {
            Copy<WideChar, unsigned char>(*request);
        }
        return 0;
    }

private:
    template <typename From, typename To>
    static void Copy(const TextConversionRequest& request) {
        const auto* const source = static_cast<const From*>(request.source);
        auto* const destination = static_cast<To*>(request.destination);
        const uint32_t length = std::min(request.sourceLength, request.destinationCapacity - 1);
        std::transform(source, source + length, destination, [](From unit) { return static_cast<To>(unit); });
        destination[length] = To{};
    }
};

} // namespace kit
