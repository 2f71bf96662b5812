// Findings as JSON, JSON Lines and SARIF 2.1.0. The output is ASCII: all other characters are escaped.
#include <set>
#include <string_view>

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include "output/cleanText.h"
#include "output/findingFormats.h"

namespace mordhost {

namespace {

using Plain = rapidjson::Writer<rapidjson::StringBuffer, rapidjson::UTF8<>, rapidjson::ASCII<>>;
using Pretty = rapidjson::PrettyWriter<rapidjson::StringBuffer, rapidjson::UTF8<>, rapidjson::ASCII<>>;

template <typename Json>
void Text(Json& json, const char* name, const std::string& value) {
    const std::string formed = WellFormed(value);
    json.Key(name);
    json.String(formed.data(), static_cast<rapidjson::SizeType>(formed.size()));
}

template <typename Json>
void Number(Json& json, const char* name, size_t value) {
    json.Key(name);
    json.Uint64(value);
}

template <typename Json>
void WriteFinding(Json& json, const Finding& finding) {
    json.StartObject();
    Text(json, "severity", NameOf(finding.severity));
    Text(json, "code", finding.code);
    Text(json, "file", finding.where.file);
    Number(json, "line", finding.where.line);
    Number(json, "column", finding.where.column);
    Text(json, "pointer", finding.pointer);
    Text(json, "message", finding.message);
    Text(json, "expected", finding.expected);
    Text(json, "fix", finding.fix);
    Text(json, "source", finding.excerpt.text);
    Number(json, "caret", finding.excerpt.caret);
    Number(json, "caret_width", finding.excerpt.caretWidth);
    json.EndObject();
}

template <typename Json>
void WriteCounts(Json& json, const CheckResult& result) {
    Number(json, "errors", result.errors);
    Number(json, "warnings", result.warnings);
}

// A file name as a URI reference.
std::string UriOf(const std::string& file) {
    constexpr auto digits = "0123456789ABCDEF";
    constexpr std::string_view kept = "-._~/";
    std::string uri;
    for (const char c : WellFormed(file)) {
        const auto byte = static_cast<unsigned char>(c);
        const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        if (isLetter || kept.find(c) != std::string_view::npos) {
            uri += c;
        } else if (c == '\\') {
            uri += '/';
        } else {
            uri += {'%', digits[byte >> 4U], digits[byte & 15U]};
        }
    }
    return uri;
}

void WriteMessage(Pretty& json, const char* name, const std::string& text) {
    json.Key(name);
    json.StartObject();
    Text(json, "text", text);
    json.EndObject();
}

void WriteSarifLocation(Pretty& json, const Finding& finding) {
    json.StartObject();
    json.Key("physicalLocation");
    json.StartObject();
    json.Key("artifactLocation");
    json.StartObject();
    Text(json, "uri", UriOf(finding.where.file));
    json.EndObject();
    json.Key("region");
    json.StartObject();
    Number(json, "startLine", finding.where.line);
    Number(json, "startColumn", finding.where.column);
    Number(json, "endColumn", finding.where.column + finding.excerpt.caretWidth);
    json.EndObject();
    json.EndObject();
    json.Key("logicalLocations");
    json.StartArray();
    json.StartObject();
    Text(json, "fullyQualifiedName", finding.pointer);
    json.EndObject();
    json.EndArray();
    json.EndObject();
}

void WriteSarifResult(Pretty& json, const Finding& finding) {
    json.StartObject();
    Text(json, "ruleId", finding.code);
    Text(json, "level", NameOf(finding.severity));
    WriteMessage(json, "message", finding.message + (finding.fix.empty() ? "" : ": " + finding.fix));
    json.Key("locations");
    json.StartArray();
    WriteSarifLocation(json, finding);
    json.EndArray();
    json.EndObject();
}

void WriteSarifTool(Pretty& json, const CheckResult& result) {
    std::set<std::string> codes;
    for (const Finding& finding : result.findings) {
        codes.insert(finding.code);
    }
    json.Key("tool");
    json.StartObject();
    json.Key("driver");
    json.StartObject();
    Text(json, "name", "mordhost check");
    json.Key("rules");
    json.StartArray();
    for (const std::string& code : codes) {
        json.StartObject();
        Text(json, "id", code);
        json.EndObject();
    }
    json.EndArray();
    json.EndObject();
    json.EndObject();
}

void WriteOut(std::ostream& out, const rapidjson::StringBuffer& buffer) {
    // The delete character, which RapidJSON does not escape, can only be within a string.
    std::string_view rest(buffer.GetString(), buffer.GetSize());
    for (size_t place; (place = rest.find('\x7F')) != rest.npos; rest.remove_prefix(place + 1)) {
        out << rest.substr(0, place) << "\\u007F";
    }
    out << rest << '\n';
}

} // namespace

void WriteFindingsAsJson(std::ostream& out, const CheckResult& result) {
    rapidjson::StringBuffer buffer;
    Pretty json(buffer);
    json.StartObject();
    Text(json, "file", result.subject);
    json.Key("findings");
    json.StartArray();
    for (const Finding& finding : result.findings) {
        WriteFinding(json, finding);
    }
    json.EndArray();
    WriteCounts(json, result);
    json.EndObject();
    WriteOut(out, buffer);
}

void WriteFindingsAsJsonLines(std::ostream& out, const CheckResult& result) {
    rapidjson::StringBuffer buffer;
    for (const Finding& finding : result.findings) {
        buffer.Clear();
        Plain json(buffer);
        WriteFinding(json, finding);
        WriteOut(out, buffer);
    }
    buffer.Clear();
    Plain json(buffer);
    json.StartObject();
    json.Key("summary");
    json.StartObject();
    Text(json, "file", result.subject);
    WriteCounts(json, result);
    json.EndObject();
    json.EndObject();
    WriteOut(out, buffer);
}

void WriteFindingsAsSarif(std::ostream& out, const CheckResult& result) {
    rapidjson::StringBuffer buffer;
    Pretty json(buffer);
    json.StartObject();
    Text(json, "version", "2.1.0");
    json.Key("runs");
    json.StartArray();
    json.StartObject();
    WriteSarifTool(json, result);
    Text(json, "columnKind", "unicodeCodePoints");
    json.Key("results");
    json.StartArray();
    for (const Finding& finding : result.findings) {
        WriteSarifResult(json, finding);
    }
    json.EndArray();
    json.EndObject();
    json.EndArray();
    json.EndObject();
    WriteOut(out, buffer);
}

} // namespace mordhost
