// Finds ids that differ only in case or blanks. The library compares ids byte by byte.
#pragma once

#include <string>
#include <unordered_map>
#include <unordered_set>

namespace mordhost {

// The id with its ASCII letters in lower case and without blanks.
std::string WithoutCaseAndBlanks(const std::string& id);

class SimilarIds {
public:
    // Adds an id. Returns an id that was added before and differs from this one in the case of ASCII letters or in
    // blanks only; null if there is none, or if this id was added before. Valid as long as this.
    const std::string* Add(const std::string& id);

private:
    std::unordered_map<std::string, std::string> m_first; // the first id of each form without case and blanks
    std::unordered_set<std::string> m_known;
};

} // namespace mordhost
