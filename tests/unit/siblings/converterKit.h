// Conversions through ITextConverter.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "frame/interfaces.h"
#include "unit/siblings/siblingLibrary.h"

namespace siblingTest {

// The result and the output of a conversion.
template <typename Char>
struct Converted {
    int32_t result;
    std::basic_string<Char> text; // the characters before the NUL that ends the output
    bool ended;                   // there is such a NUL
    bool stayedInside;            // the converter wrote nothing behind the capacity

    bool operator==(const Converted&) const = default;
};

// Converts all of `source`, NULs included, into a heap buffer of `capacity` characters that holds a filler. The output
// ends at the last character that differs from the filler.
Converted<WideChar> ToWideText(ITextConverter& converter, std::string_view source, size_t capacity);
Converted<char> ToNarrowText(ITextConverter& converter, std::basic_string_view<WideChar> source, size_t capacity);

// Converts with sufficient capacity. Throws std::runtime_error if the conversion fails.
std::u16string WideOf(ITextConverter& converter, std::string_view source);
std::string NarrowOf(ITextConverter& converter, const std::u16string& source);

} // namespace siblingTest
