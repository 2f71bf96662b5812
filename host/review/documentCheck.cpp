#include "review/documentCheck.h"

#include "document/jsonAccess.h"
#include "policy/libraryDocuments.h"
#include "policy/policyReader.h"
#include "review/answerCheck.h"
#include "review/libraryTrial.h"
#include "review/policyCheck.h"
#include "review/reportCheck.h"

namespace mordhost {

namespace {

constexpr const char* refused = "library-refuses";

void OfferAllowList(LibraryTrial& trial, const std::string& text, const JsonDocument& document, size_t offset,
                    Findings& findings) {
    if (!trial.TakesAllowList(text)) {
        findings.AddError(document, Fault{refused, offset, "the library refuses the allow list"});
    }
}

void OfferActions(LibraryTrial& trial, const std::string& text, const JsonDocument& document, size_t offset,
                  Findings& findings) {
    if (!trial.TakesActions(text)) {
        findings.AddError(document, Fault{refused, offset, "the library refuses the action table"});
    }
}

Findings CheckWholePolicy(SourceText source, const std::filesystem::path& libraries) {
    PolicyReading reading = ReadWholePolicy(std::move(source));
    const Policy& policy = reading.policy;
    if (reading.findings.Errors() > 0) {
        return std::move(reading.findings);
    }
    CheckPolicy(reading);
    if (policy.allowList || policy.actions) {
        LibraryTrial trial(libraries);
        const JsonDocument& document = *reading.documents.front();
        if (policy.allowList) {
            OfferAllowList(trial, policy.allowList->text, document, FindMember(document.Root(), "allow_list")->begin,
                           reading.findings);
        }
        if (policy.actions) {
            OfferActions(trial, policy.actions->text, document, FindMember(document.Root(), "actions")->begin,
                         reading.findings);
        }
    }
    return std::move(reading.findings);
}

} // namespace

Findings CheckDocument(SourceText source, DocumentKind kind, const std::filesystem::path& libraries) {
    if (kind == DocumentKind::policy) {
        return CheckWholePolicy(std::move(source), libraries);
    }
    Findings findings;
    JsonNode root;
    try {
        root = ParseJson(source);
    } catch (const DocumentError& error) {
        findings.AddSyntaxError(source, error);
        return findings;
    }
    const JsonDocument document(std::move(source), std::move(root));
    const std::string text(document.Source().Text());
    if (text.starts_with(byteOrderMark)) {
        findings.AddError(document,
                          Fault{"byte-order-mark", 0, "the document begins with a byte order mark, which is no JSON",
                                "strict JSON", "save the file without a byte order mark"});
    }
    switch (kind) {
    case DocumentKind::allowList:
        CheckAllowList(document, document.Root(), findings);
        if (findings.Errors() == 0) {
            LibraryTrial trial(libraries);
            OfferAllowList(trial, text, document, document.Root().begin, findings);
        }
        break;
    case DocumentKind::actionTable:
        CheckActions(document, document.Root(), findings);
        if (findings.Errors() == 0) {
            LibraryTrial trial(libraries);
            OfferActions(trial, text, document, document.Root().begin, findings);
        }
        break;
    case DocumentKind::answer:
        CheckAnswer(document, findings);
        break;
    case DocumentKind::report:
        CheckReport(document, findings);
        break;
    case DocumentKind::policy:
        break;
    }
    return findings;
}

} // namespace mordhost
