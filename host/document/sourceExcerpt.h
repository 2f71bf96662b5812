// A part of a source line, for messages.
#pragma once

#include <cstddef>
#include <string>

#include "document/sourceText.h"

namespace mordhost {

// At most 121 characters of a line around a token. Each line end, and the end of the text, ends the line.
struct SourceExcerpt {
    std::string text;         // as in the document, with its control characters
    bool isCutBefore = false; // whether the line begins before `text`
    bool isCutAfter = false;  // whether the line continues after `text`
    size_t caret = 0;         // the number of characters of `text` before the token
    size_t caretWidth = 1;    // the number of characters of the token in `text`, at least 1
};

// The excerpt for the token at the offset `begin`. A token is a string, a number or a word; any other character is a
// token. The time depends on the size of the excerpt only.
SourceExcerpt ExcerptAt(const SourceText& source, size_t begin);

} // namespace mordhost
