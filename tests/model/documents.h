// Random documents, usually well-formed, occasionally with one of the possible faults.
#pragma once

#include <string>
#include <vector>

#include "model/vocabulary.h"

namespace model {

std::string RandomAllowList(Vocabulary& words);
std::string RandomActions(Vocabulary& words);

// An answer to a query for `guids`.
std::string RandomAnswer(Vocabulary& words, const std::vector<std::string>& guids);

} // namespace model
