// Random documents: mostly good ones, with every fault that a document can have now and then.
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
