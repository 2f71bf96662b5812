// A strict JSON reader, written for clarity: one function for each kind of value, a tree with the members in document
// order. It shares nothing with the library under test.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace model {

struct JsonMember;

struct JsonValue {
    enum class Kind { Null, Boolean, Number, String, Array, Object };

    Kind kind = Kind::Null;

    // Of a number: its value, when it is written without fraction and exponent and fits a signed 32-bit integer.
    std::optional<int32_t> integer;

    std::string text;                // of a string: its bytes, escapes decoded, NULs included; of a number: as written
    std::vector<JsonValue> elements; // of an array
    std::vector<JsonMember> members; // of an object, duplicates included

    bool Is(Kind wanted) const { return kind == wanted; }

    // The value of the first member with exactly this name, or null. Null for all but objects.
    const JsonValue* Find(std::string_view name) const;
};

struct JsonMember {
    std::string name;
    JsonValue value;
};

// The document in `text`, which holds no NUL; no value if it is not well-formed JSON.
//
// Strict means: no comments, no trailing commas, no NaN, no byte order mark, no control character inside a string, only
// white space around the root. Bytes from 0x80 up are unchanged. Two liberties and one limit are those of the
// parser that the documents are made for: an escaped low surrogate may occur alone (and gives three bytes), while a
// high one needs its partner; a number that no double can hold is refused, as is a positive exponent above 308 plus the
// number of digits behind the point that a double has room for.
std::optional<JsonValue> ReadJson(std::string_view text);

} // namespace model
