#include "text/textConvert.h"

#include <algorithm>
#include <array>
#include <limits>
#include <memory>

#include "frame/factory.h"
#include "platform/platform.h"

namespace {

constexpr uint32_t utf8CodePage = 65001;

// Destination sizes that every conversion fits in: a byte gives at most one UTF-16 unit, a unit at most three bytes.
// The converter relies on these exact sizes; the slack belongs to its contract.
constexpr size_t WideCapacity(size_t narrowLength) {
    return 2 * narrowLength + 4;
}
constexpr size_t NarrowCapacity(size_t wideLength) {
    return 4 * wideLength;
}

// Up to this capacity the destination of a narrow text is on the stack.
constexpr size_t narrowStackCapacity = 4096;

// The request carries 32-bit lengths and capacities. A longer source is truncated to the length whose capacity still
// fits.
constexpr size_t longestSource = (std::numeric_limits<uint32_t>::max() - 4) / 4;

ITextConverter* FindConverter() {
    ITextConverter* converter = nullptr;
    if (const platform::ModuleHandle module = platform::GetModuleHandleW(WIDE("ZelkBase.dll"))) {
        if (const auto factory = FindFactory(module)) {
            factory(&SID_TextConverter, reinterpret_cast<void**>(&converter));
        }
    }
    return converter;
}

// Looks the converter up at the first call; a failure lasts for the process. The reference is never released.
ITextConverter* Converter() {
    static ITextConverter* const converter = FindConverter();
    return converter;
}

// Returns the first NUL from `at` on, or `end`. Scans several characters per step.
template <typename Char>
const Char* FindNul(const Char* at, const Char* end) {
    constexpr ptrdiff_t block = 8;
    for (; end - at >= block; at += block) {
        unsigned nuls = 0;
        for (ptrdiff_t i = 0; i < block; ++i) {
            nuls |= at[i] == Char{} ? 1 : 0;
        }
        if (nuls != 0) {
            break;
        }
    }
    return std::find(at, end, Char{});
}

// Holds a reference on the converter during one call.
class ConverterReference {
public:
    explicit ConverterReference(ITextConverter* converter) : m_converter(converter) { m_converter->AddRef(); }
    ~ConverterReference() { m_converter->Release(); }
    ConverterReference(const ConverterReference&) = delete;
    ConverterReference& operator=(const ConverterReference&) = delete;

    ITextConverter* operator->() const { return m_converter; }

private:
    ITextConverter* m_converter;
};

// Converts into `onStack`, or into `onHeap` if `capacity` is larger. `command` selects the direction. Returns the text
// up to its first NUL, and never beyond the destination, whatever the converter wrote.
//
// Not inlined: GCC warns about allocation sizes that a 32-bit process cannot have; they end in std::bad_alloc here.
template <typename To, size_t stackCapacity, typename From>
[[gnu::noinline]] std::basic_string_view<To> Convert(uint32_t command, const From* source, size_t length,
                                                     size_t capacity, std::array<To, stackCapacity>& onStack,
                                                     std::unique_ptr<To[]>& onHeap) {
    To* destination = onStack.data();
    if (capacity > stackCapacity) {
        onHeap.reset(new To[capacity]);
        destination = onHeap.get();
    }
    ITextConverter* const shared = Converter();
    if (shared == nullptr) {
        return {};
    }
    *destination = To{}; // the result is empty if the converter writes nothing

    const ConverterReference converter(shared);
    TextConversionRequest request{};
    request.codePage = utf8CodePage;
    request.sourceLength = static_cast<uint32_t>(length);
    request.destinationCapacity = static_cast<uint32_t>(capacity);
    request.source = source;
    request.destination = destination;
    converter->Convert(command, &request);
    return {destination, FindNul<To>(destination, destination + capacity)};
}

} // namespace

// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): see the header
WideText::WideText(const char* text) {
    if (text == nullptr || *text == '\0') {
        return;
    }
    const size_t length = std::min(std::char_traits<char>::length(text), longestSource);
    m_view = Convert(CONVERT_NARROW_TO_WIDE, text, length, WideCapacity(length), m_onStack, m_onHeap);
}

std::basic_string<WideChar> Utf8ToWide(const char* text) {
    return std::basic_string<WideChar>(WideText(text).View());
}

std::string WideToUtf8(const WideChar* text) {
    if (text == nullptr || *text == WideChar{}) {
        return {};
    }
    const size_t length = std::min(std::char_traits<WideChar>::length(text), longestSource);
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): clearing it would cost more than the heap
    std::array<char, narrowStackCapacity> onStack;
    std::unique_ptr<char[]> onHeap;
    return std::string(Convert(CONVERT_WIDE_TO_NARROW, text, length, NarrowCapacity(length), onStack, onHeap));
}
