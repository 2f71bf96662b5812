// Collects the findings about documents.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "document/finding.h"
#include "document/jsonDocument.h"

namespace mordhost {

class Findings {
public:
    // Calls `act`. If it throws a DocumentError about `document`, adds it as an error and returns false.
    template <typename Act>
    bool Collect(const JsonDocument& document, Act act) {
        try {
            act();
            return true;
        } catch (const DocumentError& error) {
            AddError(document, error);
            return false;
        }
    }

    void AddError(const JsonDocument& document, const DocumentError& error);

    // Adds the error of a text that is not JSON. It ends the document.
    void AddSyntaxError(const SourceText& source, const DocumentError& error);

    void AddError(const JsonDocument& document, const Fault& fault);
    // The code must be one of warningCodes; throws std::logic_error otherwise.
    void Warn(const JsonDocument& document, const Fault& fault);

    // The findings until the next call are about a file that is named at this offset of the policy. Offset `inPolicy`
    // ends that.
    void SetPart(size_t nameOffset) { m_part = nameOffset; }
    static constexpr size_t inPolicy = static_cast<size_t>(-1);

    // The findings in document order: those of a named file are at the place of its name. Only the first 10,000 that
    // were added; a longer list has no use, and the memory for it has no bound.
    const std::vector<Finding>& InOrder();

    // The numbers of all findings, including those that InOrder omits.
    size_t Errors() const { return m_errors; }
    size_t Warnings() const { return m_warnings; }

    // Throws the first error in document order as a DocumentError, if there is an error.
    void ThrowFirstError();

private:
    void Add(Severity severity, const SourceText& source, const std::string& pointer, const Fault& fault);

    struct Ordered {
        size_t part = 0;
        size_t begin = 0;
        Finding finding;
    };

    std::vector<Ordered> m_added;
    std::vector<Finding> m_inOrder;
    size_t m_part = inPolicy;
    size_t m_errors = 0;
    size_t m_warnings = 0;
};

} // namespace mordhost
