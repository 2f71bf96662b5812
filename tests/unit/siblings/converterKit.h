// Conversions through ITextConverter, as texts.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "frame/interfaces.h"
#include "unit/siblings/siblingLibrary.h"

namespace siblingTest {

// What a conversion left behind.
template <typename Char>
struct Converted {
    int32_t result;
    std::basic_string<Char> text; // the characters before the NUL that ends the output
    bool ended;                   // there was such a NUL
    bool stayedInside;            // nothing behind the capacity was written

    bool operator==(const Converted&) const = default;
};

// Converts all of `source`, NULs included, into a destination of `capacity` characters on the heap that held something
// else before. The end of the output is told by the last character that differs from that.
Converted<WideChar> ToWideText(ITextConverter& converter, std::string_view source, size_t capacity);
Converted<char> ToNarrowText(ITextConverter& converter, std::basic_string_view<WideChar> source, size_t capacity);

// The same with room for everything; only the text.
std::u16string WideOf(ITextConverter& converter, std::string_view source);
std::string NarrowOf(ITextConverter& converter, const std::u16string& source);

} // namespace siblingTest
