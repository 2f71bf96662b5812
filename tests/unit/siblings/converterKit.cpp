#include "unit/siblings/converterKit.h"

#include <algorithm>
#include <memory>
#include <stdexcept>

namespace siblingTest {

namespace {

// The initial content of the destination. Output ends with a NUL, never with the filler.
template <typename Char>
constexpr Char filler = static_cast<Char>(0xFFFF);

constexpr size_t guardLength = 4;

template <typename To, typename From>
Converted<To> ConvertText(ITextConverter& converter, uint32_t command, std::basic_string_view<From> source,
                          size_t capacity) {
    const std::unique_ptr<To[]> destination(new To[capacity + guardLength]);
    std::fill_n(destination.get(), capacity + guardLength, filler<To>);
    // A block of exactly this size: the address sanitizer detects reads behind it.
    const std::unique_ptr<From[]> exact(new From[source.size()]);
    std::copy(source.begin(), source.end(), exact.get());

    TextConversionRequest request{};
    request.codePage = 65001;
    request.sourceLength = static_cast<uint32_t>(source.size());
    request.destinationCapacity = static_cast<uint32_t>(capacity);
    request.source = exact.get();
    request.destination = destination.get();

    Converted<To> converted{};
    converted.result = converter.Convert(command, &request);
    const To* const begin = destination.get();
    const To* end = begin + capacity;
    while (end != begin && end[-1] == filler<To>) {
        --end;
    }
    converted.ended = end != begin && end[-1] == To{};
    converted.text.assign(begin, converted.ended ? end - 1 : end);
    const To* const guard = destination.get() + capacity;
    converted.stayedInside = std::all_of(guard, guard + guardLength, [](To c) { return c == filler<To>; });
    return converted;
}

template <typename Char>
std::basic_string<Char> Checked(const Converted<Char>& converted) {
    if (converted.result != 0 || !converted.ended || !converted.stayedInside) {
        throw std::runtime_error("a conversion with sufficient capacity failed");
    }
    return converted.text;
}

} // namespace

Converted<WideChar> ToWideText(ITextConverter& converter, std::string_view source, size_t capacity) {
    return ConvertText<WideChar>(converter, 0x10101, source, capacity);
}

Converted<char> ToNarrowText(ITextConverter& converter, std::basic_string_view<WideChar> source, size_t capacity) {
    return ConvertText<char>(converter, 0x10100, source, capacity);
}

std::u16string WideOf(ITextConverter& converter, std::string_view source) {
    const auto text = Checked(ToWideText(converter, source, source.size() + 1));
    return {text.begin(), text.end()};
}

std::string NarrowOf(ITextConverter& converter, const std::u16string& source) {
    const std::basic_string<WideChar> wide(source.begin(), source.end());
    return Checked(ToNarrowText(converter, wide, 3 * source.size() + 1));
}

} // namespace siblingTest
