// Suggested allow-list entries on the standard output.
#pragma once

#include <ostream>

#include "output/format.h"
#include "usage/draft.h"
#include "usage/suggestion.h"

namespace mordhost {

// Write the entries and a summary in the format. The JSON document is an allow list with further members, which the
// library ignores.
void WriteSuggestions(std::ostream& out, const Suggestions& suggestions, OutputFormat format);
void WriteDraft(std::ostream& out, const Draft& draft, OutputFormat format);

} // namespace mordhost
