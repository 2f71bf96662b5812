#include "document/sourceExcerpt.h"

#include <algorithm>
#include <string_view>

namespace mordhost {

namespace {

constexpr size_t charactersBefore = 60;
constexpr size_t charactersAfter = 60; // after the first character of the token
constexpr size_t longestCharacter = 4; // in bytes of UTF-8

bool ContinuesCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

bool EndsLine(char byte) {
    return byte == '\n' || byte == '\r';
}

// The offset after the character at `at`. An ill-formed one has at most four bytes too.
size_t After(std::string_view text, size_t at) {
    const size_t last = std::min(text.size(), at + longestCharacter);
    do {
        ++at;
    } while (at < last && ContinuesCharacter(text[at]));
    return at;
}

// The offset of the character before `at`.
size_t Before(std::string_view text, size_t at) {
    const size_t first = at < longestCharacter ? 0 : at - longestCharacter;
    do {
        --at;
    } while (at > first && ContinuesCharacter(text[at]));
    return at;
}

// Whether the token at `begin` ends before the character at `at`.
bool TokenEnds(std::string_view text, size_t begin, size_t at) {
    constexpr std::string_view delimiters = " \t{}[]:,\"";
    const std::string_view first = text.substr(begin, 1);
    if (first == "\"") {
        size_t escapes = 0;
        while (at > begin + 2 + escapes && text[at - 2 - escapes] == '\\') {
            ++escapes;
        }
        return at > begin + 1 && text[at - 1] == '"' && escapes % 2 == 0;
    }
    return delimiters.find(first) != std::string_view::npos || delimiters.find(text[at]) != std::string_view::npos;
}

} // namespace

SourceExcerpt ExcerptAt(const SourceText& source, size_t begin) {
    const std::string_view text = source.Text();
    begin = std::min(begin, text.size());
    const size_t start = text.starts_with(byteOrderMark) ? byteOrderMark.size() : 0;
    SourceExcerpt excerpt;
    size_t first = begin;
    while (first > start && !EndsLine(text[first - 1]) && excerpt.caret < charactersBefore) {
        first = Before(text, first);
        ++excerpt.caret;
    }
    excerpt.isCutBefore = first > start && !EndsLine(text[first - 1]);
    size_t end = begin;
    size_t width = 0;
    bool isToken = true;
    for (size_t count = 0; end < text.size() && !EndsLine(text[end]) && count <= charactersAfter; ++count) {
        isToken = isToken && (count == 0 || !TokenEnds(text, begin, end));
        width += isToken ? 1 : 0;
        end = After(text, end);
    }
    excerpt.caretWidth = std::max<size_t>(width, 1);
    excerpt.isCutAfter = end < text.size() && !EndsLine(text[end]);
    excerpt.text = text.substr(first, end - first);
    return excerpt;
}

} // namespace mordhost
