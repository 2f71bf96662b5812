// Findings as text, as workflow commands, and in the Test Anything Protocol.
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "output/cleanText.h"
#include "output/findingFormats.h"

namespace mordhost {

namespace {

constexpr auto cutSign = "\xE2\x80\xA6"; // "…"

void WriteExcerpt(std::ostream& out, const SourceExcerpt& excerpt) {
    const std::string before = excerpt.isCutBefore ? cutSign : "";
    out << "    " << before << CleanText(excerpt.text) << (excerpt.isCutAfter ? cutSign : "") << '\n'
        << "    " << std::string(excerpt.caret + (excerpt.isCutBefore ? 1 : 0), ' ') << '^'
        << std::string(excerpt.caretWidth - 1, '~') << '\n';
}

void WriteLine(std::ostream& out, const char* name, const std::string& value) {
    if (!value.empty()) {
        out << "    " << name << ": " << CleanText(value) << '\n';
    }
}

// The value of a workflow command, in which some characters are escaped.
std::string Escaped(const std::string& value, std::string_view characters) {
    constexpr auto digits = "0123456789ABCDEF";
    std::string escaped;
    for (const char c : CleanText(value)) {
        if (characters.find(c) == std::string_view::npos) {
            escaped += c;
        } else {
            const auto byte = static_cast<unsigned char>(c);
            escaped += {'%', digits[byte >> 4U], digits[byte & 15U]};
        }
    }
    return escaped;
}

// The text as a quoted scalar of YAML, which is a string of JSON.
std::string Quoted(const std::string& text) {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> json(buffer);
    const std::string clean = CleanText(text);
    json.String(clean.data(), static_cast<rapidjson::SizeType>(clean.size()));
    return {buffer.GetString(), buffer.GetSize()};
}

// The description of a test. A number sign would begin a directive.
std::string Description(const std::string& text) {
    std::string description;
    for (const char c : CleanText(text)) {
        description += c == '#' || c == '\\' ? std::string{'\\', c} : std::string{c};
    }
    return description;
}

} // namespace

void WriteFindingsAsText(std::ostream& out, const CheckResult& result) {
    for (const Finding& finding : result.findings) {
        out << CleanText(finding.where.Text()) << ": " << NameOf(finding.severity) << ": " << CleanText(finding.message)
            << " [" << finding.code << "]\n";
        WriteExcerpt(out, finding.excerpt);
        WriteLine(out, "pointer", finding.pointer);
        WriteLine(out, "expected", finding.expected);
        WriteLine(out, "fix", finding.fix);
    }
    if (result.findings.size() < result.errors + result.warnings) {
        out << "and " << result.errors + result.warnings - result.findings.size() << " more\n";
    }
    out << CleanText(result.subject) << ": " << result.errors << (result.errors == 1 ? " error, " : " errors, ")
        << result.warnings << (result.warnings == 1 ? " warning\n" : " warnings\n");
}

void WriteFindingsAsGithub(std::ostream& out, const CheckResult& result) {
    for (const Finding& finding : result.findings) {
        out << "::" << NameOf(finding.severity) << " file=" << Escaped(finding.where.file, "%:,")
            << ",line=" << finding.where.line << ",col=" << finding.where.column << ",title=" << finding.code
            << "::" << Escaped(finding.message, "%") << '\n';
    }
}

void WriteFindingsAsTap(std::ostream& out, const CheckResult& result) {
    out << "TAP version 13\n1.." << std::max<size_t>(result.findings.size(), 1) << '\n';
    if (result.findings.empty()) {
        out << "ok 1 - " << Description(result.subject) << '\n';
    }
    size_t number = 0;
    for (const Finding& finding : result.findings) {
        out << (Fails(result, finding) ? "not ok " : "ok ") << ++number << " - "
            << Description(finding.where.Text() + ": " + NameOf(finding.severity) + ": " + finding.message) << '\n'
            << "  ---\n"
            << "  severity: " << NameOf(finding.severity) << '\n'
            << "  code: " << finding.code << '\n'
            << "  file: " << Quoted(finding.where.file) << '\n'
            << "  line: " << finding.where.line << '\n'
            << "  column: " << finding.where.column << '\n'
            << "  pointer: " << Quoted(finding.pointer) << '\n'
            << "  message: " << Quoted(finding.message) << '\n'
            << "  ...\n";
    }
}

} // namespace mordhost
