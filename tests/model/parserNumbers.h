// The two numbers that a record about a refused document holds. They are the JSON library's own, so they are asked of
// it; whether a document is refused is decided elsewhere, without it.
#pragma once

#include <cstddef>
#include <string>

namespace model {

struct ParserNumbers {
    unsigned code;
    size_t offset;
};

// `code` is 0 for a text that the JSON library accepts.
ParserNumbers NumbersOf(const std::string& text);

} // namespace model
