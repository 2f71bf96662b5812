#include "review/similarIds.h"

namespace mordhost {

std::string WithoutCaseAndBlanks(const std::string& id) {
    std::string form;
    for (const char c : id) {
        if (c >= 'A' && c <= 'Z') {
            form += static_cast<char>(c - 'A' + 'a');
        } else if (c != ' ' && (c < '\t' || c > '\r')) {
            form += c;
        }
    }
    return form;
}

const std::string* SimilarIds::Add(const std::string& id) {
    if (!m_known.insert(id).second) {
        return nullptr;
    }
    const auto [first, isNew] = m_first.emplace(WithoutCaseAndBlanks(id), id);
    return isNew ? nullptr : &first->second;
}

} // namespace mordhost
