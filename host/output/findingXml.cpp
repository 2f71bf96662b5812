// Findings as the XML of JUnit.
#include <algorithm>

#include "output/cleanText.h"
#include "output/findingFormats.h"

namespace mordhost {

namespace {

std::string Xml(const std::string& text) {
    std::string xml;
    for (const char c : CleanText(text)) {
        switch (c) {
        case '&':
            xml += "&amp;";
            break;
        case '<':
            xml += "&lt;";
            break;
        case '>':
            xml += "&gt;";
            break;
        case '"':
            xml += "&quot;";
            break;
        default:
            xml += c;
        }
    }
    return xml;
}

} // namespace

void WriteFindingsAsJunit(std::ostream& out, const CheckResult& result) {
    const auto failures =
        static_cast<size_t>(std::count_if(result.findings.begin(), result.findings.end(),
                                          [&result](const Finding& finding) { return Fails(result, finding); }));
    const size_t cases = std::max<size_t>(result.findings.size(), 1);
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites>\n"
        << "  <testsuite name=\"mordhost check " << Xml(result.subject) << "\" tests=\"" << cases << "\" failures=\""
        << failures << "\" errors=\"0\" skipped=\"0\" time=\"0\">\n";
    if (result.findings.empty()) {
        out << "    <testcase name=\"no finding\" classname=\"" << Xml(result.subject) << "\" time=\"0\"/>\n";
    }
    for (const Finding& finding : result.findings) {
        const std::string text = Xml(finding.where.Text()) + ": " + NameOf(finding.severity) + ": " +
                                 Xml(finding.message) + '\n' + "pointer: " + Xml(finding.pointer) + '\n' +
                                 "expected: " + Xml(finding.expected) + '\n' + "fix: " + Xml(finding.fix);
        out << "    <testcase name=\"" << Xml(finding.code + ' ' + finding.pointer) << "\" classname=\""
            << Xml(finding.where.file) << "\" time=\"0\">\n";
        if (Fails(result, finding)) {
            out << "      <failure message=\"" << Xml(finding.message) << "\" type=\"" << finding.code << "\">" << text
                << "</failure>\n";
        } else {
            out << "      <system-out>" << text << "</system-out>\n";
        }
        out << "    </testcase>\n";
    }
    out << "  </testsuite>\n</testsuites>\n";
}

} // namespace mordhost
