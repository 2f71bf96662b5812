#include "output/cleanText.h"

#include <algorithm>

#include "output/boundedText.h"

namespace mordhost {

namespace {

// The length of the well-formed character at the start of `text`; 0 if there is none.
size_t CharacterLength(std::string_view text) {
    const auto byte = [text](size_t place) { return static_cast<unsigned char>(text[place]); };
    const unsigned char lead = byte(0);
    const size_t length = lead < 0x80 ? 1 : lead < 0xC2 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF5 ? 4 : 0;
    if (length == 0 || length > text.size()) {
        return 0;
    }
    for (size_t place = 1; place < length; ++place) {
        if ((byte(place) & 0xC0U) != 0x80U) {
            return 0;
        }
    }
    const bool isOverlong = (lead == 0xE0 && byte(1) < 0xA0) || (lead == 0xF0 && byte(1) < 0x90);
    const bool isSurrogate = lead == 0xED && byte(1) >= 0xA0;
    const bool isTooLarge = lead == 0xF4 && byte(1) >= 0x90;
    const bool isNoCharacter = lead == 0xEF && byte(1) == 0xBF && byte(2) >= 0xBE;
    return isOverlong || isSurrogate || isTooLarge || isNoCharacter ? 0 : length;
}

} // namespace

std::string WellFormed(std::string_view text) {
    std::string formed;
    while (!text.empty()) {
        const size_t length = CharacterLength(text);
        formed += length == 0 ? "?" : text.substr(0, length);
        text.remove_prefix(std::max<size_t>(length, 1));
    }
    return formed;
}

std::string CleanText(std::string_view text) {
    std::string clean;
    AppendClean(clean, text);
    return clean;
}

void AppendClean(std::string& out, std::string_view text) {
    const bool isPlain = std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c < '\x7F'; });
    if (isPlain) {
        out += text;
        return;
    }
    std::string formed = WellFormed(text);
    std::replace(formed.begin(), formed.end(), '\t', ' ');
    out += Printable(formed);
}

} // namespace mordhost
