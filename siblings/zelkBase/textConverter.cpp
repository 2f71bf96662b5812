#include "zelkBase/textConverter.h"

#include <algorithm>

#include "zelkBase/unicode.h"

namespace siblings {

namespace {

constexpr uint32_t utf8CodePage = 65001;

// Converts `source` to `destination`, which has `room` characters and one for the NUL. Returns whether all of `source`
// fits.
template <typename To, typename From>
bool Fill(std::basic_string_view<From> source, To* destination, size_t room) {
    To units[longestCodePoint<To>];
    bool whole = true;
    while (!source.empty()) {
        const size_t ascii = CopyAscii(source.substr(0, room), destination);
        destination += ascii;
        source.remove_prefix(ascii);
        room -= ascii;
        if (source.empty()) {
            break;
        }
        const size_t count = PutCodePoint(TakeCodePoint(source), units);
        whole = count <= room;
        if (!whole) {
            break;
        }
        destination = std::copy_n(units, count, destination);
        room -= count;
    }
    *destination = To{};
    return whole;
}

template <typename To, typename From>
uint32_t ConvertText(const TextConversionRequest& request) {
    auto* const destination = static_cast<To*>(request.destination);
    if (request.destinationCapacity == 0) {
        return RESULT_TRUNCATED;
    }
    if (destination == nullptr) {
        return RESULT_INVALID_ARGUMENT;
    }
    const bool sourceMissing = request.source == nullptr && request.sourceLength != 0;
    if (request.codePage != utf8CodePage || sourceMissing) {
        *destination = To{};
        return RESULT_INVALID_ARGUMENT;
    }
    const std::basic_string_view<From> source(static_cast<const From*>(request.source), request.sourceLength);
    return Fill(source, destination, request.destinationCapacity - 1) ? RESULT_OK : RESULT_TRUNCATED;
}

} // namespace

int32_t TextConverter::Convert(uint32_t command, TextConversionRequest* request) {
    if (request == nullptr) {
        return Signed(RESULT_INVALID_ARGUMENT);
    }
    switch (command) {
    case CONVERT_NARROW_TO_WIDE:
        return Signed(ConvertText<WideChar, char>(*request));
    case CONVERT_WIDE_TO_NARROW:
        return Signed(ConvertText<char, WideChar>(*request));
    default:
        return Signed(RESULT_INVALID_ARGUMENT);
    }
}

} // namespace siblings
