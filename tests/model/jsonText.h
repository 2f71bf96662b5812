// Random JSON texts: documents in varying spellings, and malformed texts.
#pragma once

#include <string>
#include <string_view>

#include "model/random.h"

namespace model {

// Writes at the end of a text.
class JsonText {
public:
    JsonText(Random& random, std::string& out) : m_random(random), m_out(out), m_spaced(random.Percent(40)) {}

    // White space between two tokens, often none.
    void Space();

    // `bytes` as a JSON string; some characters have unnecessary escapes.
    void Quoted(std::string_view bytes);

    // `"name" :`, with white space.
    void Name(std::string_view name);

    // A value of any kind but the one given by its first character ('{', '[', '"', or '0' for a 32-bit integer).
    void ValueButNot(char kind);

    // A value of any kind, possibly nested, occasionally very deeply.
    void AnyValue(int depth = 0);

    // A number that fits a signed 32-bit integer and is not 0; one that is 0; one that is no such integer.
    void GoodNumber();
    void Zero();
    void NumberOutside();

    // `count` items between brackets, each written by `item`, which gets its number.
    template <typename Item>
    void Enclosed(char open, uint32_t count, char close, const Item& item) {
        m_out += open;
        Space();
        for (uint32_t i = 0; i < count; ++i) {
            if (i != 0) {
                m_out += ',';
                Space();
            }
            item(i);
            Space();
        }
        m_out += close;
    }

private:
    void Escaped(unsigned char byte);
    void DeepValue();

    Random& m_random;
    std::string& m_out;
    bool m_spaced;
};

// Changes a text so that it is probably not JSON any more.
std::string Spoiled(Random& random, std::string text);

// A text without any document in it: empty, or white space only.
std::string BlankText(Random& random);

} // namespace model
