// Random JSON as text: the same document in ever different spellings, and texts that are nearly JSON.
#pragma once

#include <string>
#include <string_view>

#include "model/random.h"

namespace model {

class JsonText {
public:
    explicit JsonText(Random& random) : m_random(random), m_spaced(random.Percent(40)) {}

    // White space as it may stand between any two tokens, often none.
    std::string Space();

    // `bytes` as a JSON string: some characters escaped that need not be, in one of the ways that there are.
    std::string Quoted(std::string_view bytes);

    // `"name" : value`, with white space.
    std::string Member(std::string_view name, const std::string& value);

    // A value of any kind but the one given by its first character ('{', '[', '"', or '0' for a 32-bit integer).
    std::string ValueButNot(char kind);

    // A value of any kind, perhaps nested.
    std::string AnyValue(int depth = 0);

    // A number that fits a signed 32-bit integer and is not 0; one that is 0; one that is no such integer.
    std::string GoodNumber();
    std::string Zero();
    std::string NumberOutside();

private:
    std::string Escaped(unsigned char byte);

    Random& m_random;
    bool m_spaced;
};

// Puts `items`, each JSON already, between the brackets.
std::string Enclosed(JsonText& json, char open, const std::vector<std::string>& items, char close);

// Changes a text so that it is probably JSON no more.
std::string Spoiled(Random& random, std::string text);

// A text without any document in it: empty, or white space only.
std::string BlankText(Random& random);

} // namespace model
