// A fault of a document, with everything that a message about it shows.
#pragma once

#include <cstddef>
#include <string>

#include "document/sourceExcerpt.h"
#include "document/sourceText.h"

namespace mordhost {

enum class Severity { error, warning };

struct Finding {
    Severity severity = Severity::error;
    std::string code; // in kebab-case
    Location where;
    std::string pointer; // JSON pointer to the value from the root of its file; empty for the root
    SourceExcerpt excerpt;
    std::string message;
    std::string expected; // may be empty, as `fix`
    std::string fix;
};

} // namespace mordhost
