#include "model/vocabulary.h"

namespace model {
namespace {

// The commonest come several times.
const std::vector<std::string> allGuids = {"g1", "g1", "g2",  "g2",  "g3",        "g",
                                           "G1", "",   "dns", "web", "g\xC3\xA9", "g\xFF"};
const std::vector<std::string> allTypes = {"web",  "web", "web", "dns", "dns",           "ssh",     "WEB",  "Web",
                                           "web ", "we",  "",    "g1",  "s\xC3\xA9\x01", "ssh\xFF", "\xC3("};
const std::vector<std::string> allMids = {"m1",  "m1", "m2",       "m2",   "m3",       "M1",          "m",
                                          "m10", "",   "\xC3\xA9", "\x7F", "\xFF\xFE", "\xED\xA0\x80"};

std::vector<std::string> Some(Random& random, const std::vector<std::string>& all, uint32_t count) {
    std::vector<std::string> some;
    while (some.size() < count) {
        some.push_back(random.Pick(all));
    }
    return some;
}

std::string PerhapsWithNul(Random& random, std::string text) {
    if (random.Percent(4)) {
        text += '\0';
        text += random.Pick({"", "x", "m1"});
    }
    return text;
}

// Around the sizes of stack buffers, and above 16 bits.
std::string LongWord(Random& random) {
    const size_t length = random.Percent(6) ? 66000 : random.Pick({300U, 1022U, 1023U, 2047U, 2048U, 4100U});
    std::string word = random.Pick({"m", "\xC3\xA9", "\xFF", "\""});
    word.resize(length, random.Pick({'x', 'y', '\xE9'}));
    return word;
}

} // namespace

Vocabulary::Vocabulary(Random& random)
    : m_random(random), m_isLarge(random.Below(120) == 0), m_guids(Some(random, allGuids, 3)),
      m_types(Some(random, allTypes, 2)), m_mids(Some(random, allMids, 3)) {
    switch (random.Below(150)) {
    case 0:
        m_guids[0] = LongWord(random);
        break;
    case 1:
        m_types[0] = LongWord(random);
        break;
    case 2:
        m_mids[0] = LongWord(random);
        break;
    default:
        break;
    }
}

std::string Vocabulary::Word(const std::vector<std::string>& favourites, const std::vector<std::string>& all,
                             char numbered, uint32_t count) {
    if (m_isLarge && m_random.Percent(70)) {
        return numbered + std::to_string(m_random.Below(count));
    }
    return m_random.Pick(m_random.Percent(85) ? favourites : all);
}

std::string Vocabulary::Guid() {
    return Word(m_guids, allGuids, 'g', 40);
}

std::string Vocabulary::Type() {
    return Word(m_types, allTypes, 't', 4);
}

std::string Vocabulary::Mid() {
    return PerhapsWithNul(m_random, Word(m_mids, allMids, 'm', 160));
}

std::string Vocabulary::DocumentGuid() {
    return PerhapsWithNul(m_random, Guid());
}

std::string Vocabulary::DocumentType() {
    return PerhapsWithNul(m_random, Type());
}

std::string Vocabulary::DocumentKey() {
    return m_random.Percent(50) ? DocumentGuid() : DocumentType();
}

std::string Vocabulary::Address() {
    return m_random.Pick({"10.0.0.2", "10.0.0.2", "::1", "fe80::1%eth0", "", "a\"b\\c/d", "\b\f\n\r\t\x01\x1F\x7F",
                          "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80", "\xFF\xC3(\x80",
                          "\xE2\x80\xA8\xE2\x80\xA9\xED\xA0\x80\xED\xB0\x80"});
}

} // namespace model
