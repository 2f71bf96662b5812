// Checks a document before it is in force.
#pragma once

#include <filesystem>

#include "document/findings.h"

namespace mordhost {

enum class DocumentKind { policy, allowList, actionTable, answer, report };

// Checks the document and, for a policy, the files that it names. If it finds no error, it also offers the allow list
// and the action table to the library in the directory `libraries`; what the library refuses is the error
// "library-refuses". Throws LoadError and RunError if there is such a document and the library cannot be used.
Findings CheckDocument(SourceText source, DocumentKind kind, const std::filesystem::path& libraries);

} // namespace mordhost
