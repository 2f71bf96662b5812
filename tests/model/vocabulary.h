// The few words of a random case, so that its rules, answers and lists often match.
#pragma once

#include <string>
#include <vector>

#include "model/random.h"

namespace model {

class Vocabulary {
public:
    // Chooses the favourites of a case, which most words then are. Now and then one of them is very long, and now and
    // then a case has many more words than usual, and documents that hold as many.
    explicit Vocabulary(Random& random);

    // As a rule record delivers them: without a NUL, but otherwise any bytes, the empty text included.
    std::string Guid();
    std::string Type();

    // As a document may hold them: now and then with a NUL inside.
    std::string Mid();
    std::string DocumentGuid();
    std::string DocumentType();
    std::string DocumentKey(); // what the allow list is organised by: a guid or a type

    // What goes into a report and must be escaped or passed through there.
    std::string Address();

    bool IsLarge() const { return m_isLarge; }

    Random& Source() { return m_random; }

private:
    std::string Word(const std::vector<std::string>& favourites, const std::vector<std::string>& all, char numbered,
                     uint32_t count);

    Random& m_random;
    bool m_isLarge;
    std::vector<std::string> m_guids;
    std::vector<std::string> m_types;
    std::vector<std::string> m_mids;
};

} // namespace model
