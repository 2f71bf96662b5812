#include "output/findingFormats.h"

namespace mordhost {

const char* NameOf(Severity severity) {
    return severity == Severity::error ? "error" : "warning";
}

bool Fails(const CheckResult& result, const Finding& finding) {
    return result.isStrict || finding.severity == Severity::error;
}

void WriteFindings(std::ostream& out, const CheckResult& result, OutputFormat format) {
    switch (format) {
    case OutputFormat::text:
        return WriteFindingsAsText(out, result);
    case OutputFormat::json:
        return WriteFindingsAsJson(out, result);
    case OutputFormat::jsonl:
        return WriteFindingsAsJsonLines(out, result);
    case OutputFormat::junit:
        return WriteFindingsAsJunit(out, result);
    case OutputFormat::tap:
        return WriteFindingsAsTap(out, result);
    case OutputFormat::sarif:
        return WriteFindingsAsSarif(out, result);
    case OutputFormat::github:
        return WriteFindingsAsGithub(out, result);
    }
}

} // namespace mordhost
