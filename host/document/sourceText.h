// A text with a name, and the places in it.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

namespace mordhost {

// A place in a document, counted from 1. The column counts characters (code points of UTF-8), not bytes.
struct Location {
    std::string file;
    size_t line = 1;
    size_t column = 1;

    // "FILE:LINE:COLUMN"
    std::string Text() const;
};

// A document that is refused: what() is "FILE:LINE:COLUMN: REASON".
class DocumentError : public std::runtime_error {
public:
    DocumentError(const Location& where, const std::string& reason);
};

// A document may begin with it; it counts as no character.
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

class SourceText {
public:
    // `name` is what messages call the text, `firstLine` the number of its first line within the file.
    SourceText(std::string name, std::string text, size_t firstLine = 1);

    const std::string& Name() const { return m_name; }
    std::string_view Text() const { return m_text; }

    // The place of the byte at `offset`; an offset behind the end counts as the end.
    Location At(size_t offset) const;

    // Throws the DocumentError that `reason` gives at `offset`.
    [[noreturn]] void Refuse(size_t offset, const std::string& reason) const;

private:
    std::string m_name;
    std::string m_text;
    size_t m_firstLine;
};

} // namespace mordhost
