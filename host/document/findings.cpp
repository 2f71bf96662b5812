#include "document/findings.h"

#include <algorithm>

#include "document/jsonPointer.h"
#include "document/warningCodes.h"

namespace mordhost {

namespace {

constexpr size_t mostKept = 10000;
constexpr size_t longestText = 1000; // in bytes, of a message and of a pointer

// Cuts a text that quotes a very long value.
std::string Shortened(std::string text) {
    if (text.size() > longestText) {
        size_t end = longestText;
        while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) {
            --end;
        }
        text.resize(end);
        text += "\xE2\x80\xA6"; // "…"
    }
    return text;
}

} // namespace

void Findings::AddError(const JsonDocument& document, const DocumentError& error) {
    AddError(document, error.Details());
}

void Findings::AddSyntaxError(const SourceText& source, const DocumentError& error) {
    Add(Severity::error, source, "", error.Details());
}

void Findings::AddError(const JsonDocument& document, const Fault& fault) {
    Add(Severity::error, document.Source(), PointerAt(document.Root(), fault.begin), fault);
}

void Findings::Warn(const JsonDocument& document, const Fault& fault) {
    if (std::find(warningCodes.begin(), warningCodes.end(), fault.code) == warningCodes.end()) {
        throw std::logic_error("the code " + fault.code + " is not listed");
    }
    Add(Severity::warning, document.Source(), PointerAt(document.Root(), fault.begin), fault);
}

void Findings::Add(Severity severity, const SourceText& source, const std::string& pointer, const Fault& fault) {
    ++(severity == Severity::error ? m_errors : m_warnings);
    // The first error is always kept, because it is thrown.
    if (m_added.size() >= mostKept && (severity == Severity::warning || m_errors > 1)) {
        return;
    }
    m_added.push_back(
        {m_part == inPolicy ? fault.begin : m_part,
         m_part == inPolicy ? 0 : fault.begin,
         {severity, fault.code, source.At(fault.begin), Shortened(pointer), ExcerptAt(source, fault.begin),
          Shortened(fault.message), Shortened(fault.expected), Shortened(fault.fix)}});
}

const std::vector<Finding>& Findings::InOrder() {
    std::stable_sort(m_added.begin(), m_added.end(), [](const Ordered& one, const Ordered& other) {
        return std::pair(one.part, one.begin) < std::pair(other.part, other.begin);
    });
    m_inOrder.clear();
    for (const Ordered& added : m_added) {
        m_inOrder.push_back(added.finding);
    }
    return m_inOrder;
}

void Findings::ThrowFirstError() {
    for (const Finding& finding : InOrder()) {
        if (finding.severity == Severity::error) {
            throw DocumentError(finding.where, finding.message);
        }
    }
}

} // namespace mordhost
