// A named text and positions in it.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "document/fault.h"

namespace mordhost {

// A position in a document, counted from 1. The column counts characters (Unicode code points), not bytes.
struct Location {
    std::string file;
    size_t line = 1;
    size_t column = 1;

    // "FILE:LINE:COLUMN"
    std::string Text() const;
};

// The error of an invalid document: what() is "FILE:LINE:COLUMN: REASON".
class DocumentError : public std::runtime_error {
public:
    DocumentError(const Location& where, const std::string& reason);
    DocumentError(const Location& where, Fault fault);

    // An error that another process has found, with its what().
    explicit DocumentError(const std::string& text) : std::runtime_error(text) {}

    // What is wrong; without code and offset if the first constructor was used.
    const Fault& Details() const { return m_fault; }

private:
    Fault m_fault;
};

// Optional at the start of a document. Columns do not count it.
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

class SourceText {
public:
    // `name` is the name for messages, `firstLine` the number of the first line within the file.
    SourceText(std::string name, std::string text, size_t firstLine = 1);

    const std::string& Name() const { return m_name; }
    std::string_view Text() const { return m_text; }

    // The position of the byte at `offset`, or of the end of the text if `offset` is beyond it. The first call for an
    // offset reads the text up to there; later calls take a bounded time. For use by one thread.
    Location At(size_t offset) const;

    // Throws a DocumentError with the position of the fault.
    [[noreturn]] void Refuse(Fault fault) const;

    // As above, with the code "invalid-value".
    [[noreturn]] void Refuse(size_t offset, const std::string& reason) const;

private:
    // A position that is remembered: every 4096 bytes there is one.
    struct Mark {
        size_t line = 0;   // counted from 0
        size_t column = 0; // counted from 0
    };

    // The position `from` is moved by the text from `begin` to `end`.
    Mark Moved(Mark from, size_t begin, size_t end) const;

    std::string m_name;
    std::string m_text;
    size_t m_firstLine;
    mutable std::vector<Mark> m_marks;
};

} // namespace mordhost
