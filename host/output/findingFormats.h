// Writes findings in the formats of OutputFormat.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "document/finding.h"
#include "output/format.h"

namespace mordhost {

// The result of a check.
struct CheckResult {
    std::string subject; // the name of the checked file
    std::vector<Finding> findings;
    size_t errors = 0; // the numbers of all findings; `findings` may have fewer
    size_t warnings = 0;
    bool isStrict = false; // whether a warning is a failure
};

// Writes the result. Everything that comes from a document is written without control characters.
void WriteFindings(std::ostream& out, const CheckResult& result, OutputFormat format);

// One function per group of formats.
void WriteFindingsAsText(std::ostream& out, const CheckResult& result);
void WriteFindingsAsGithub(std::ostream& out, const CheckResult& result);
void WriteFindingsAsTap(std::ostream& out, const CheckResult& result);
void WriteFindingsAsJunit(std::ostream& out, const CheckResult& result);
void WriteFindingsAsJson(std::ostream& out, const CheckResult& result);
void WriteFindingsAsJsonLines(std::ostream& out, const CheckResult& result);
void WriteFindingsAsSarif(std::ostream& out, const CheckResult& result);

// "error" or "warning".
const char* NameOf(Severity severity);

// Whether the finding makes the check fail.
bool Fails(const CheckResult& result, const Finding& finding);

} // namespace mordhost
