#include "document/jsonNode.h"

#include <algorithm>
#include <string_view>

#include <rapidjson/error/en.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

namespace mordhost {

namespace {

constexpr size_t deepest = 64;

// Builds the tree from the events of the parser. A value begins after the white space, comma and colon that follow the
// previous token. All values except objects and arrays end at the position of the parser at the time of the event.
class TreeBuilder {
public:
    using Ch = char; // RapidJSON requires this name

    TreeBuilder(std::string_view text, const rapidjson::MemoryStream& stream, size_t start)
        : m_text(text), m_stream(stream), m_start(start), m_last(start) {}

    JsonNode TakeRoot() { return std::move(m_root); }
    bool TooDeep() const { return m_tooDeep; }
    size_t Last() const { return m_last; }

    bool Null() {
        Scalar(JsonNode::Kind::null);
        return true;
    }
    bool Bool(bool value) {
        Scalar(JsonNode::Kind::boolean).truth = value;
        return true;
    }
    bool Int(int) { return Number(); }
    bool Uint(unsigned) { return Number(); }
    bool Int64(int64_t) { return Number(); }
    bool Uint64(uint64_t) { return Number(); }
    bool Double(double) { return Number(); }
    bool RawNumber(const char*, rapidjson::SizeType, bool) { return Number(); }
    bool String(const char* text, rapidjson::SizeType size, bool) {
        Scalar(JsonNode::Kind::string).text.assign(text, size);
        return true;
    }
    bool Key(const char* text, rapidjson::SizeType size, bool) {
        const size_t begin = NextToken();
        m_open.back()->members.push_back({std::string(text, size), begin, {}});
        m_last = Position();
        return true;
    }
    bool StartObject() { return Open(JsonNode::Kind::object); }
    bool StartArray() { return Open(JsonNode::Kind::array); }
    bool EndObject(rapidjson::SizeType) { return Close(); }
    bool EndArray(rapidjson::SizeType) { return Close(); }

private:
    size_t Position() const { return m_start + m_stream.Tell(); }

    size_t NextToken() const {
        const size_t token = m_text.find_first_not_of(" \t\r\n,:", m_last);
        return token == std::string_view::npos ? m_text.size() : token;
    }

    JsonNode& Place() {
        if (m_open.empty()) {
            return m_root;
        }
        JsonNode& parent = *m_open.back();
        return parent.kind == JsonNode::Kind::object ? parent.members.back().value : parent.elements.emplace_back();
    }

    JsonNode& Scalar(JsonNode::Kind kind) {
        JsonNode& node = Place();
        node.kind = kind;
        node.begin = NextToken();
        m_last = node.end = Position();
        return node;
    }

    bool Number() {
        JsonNode& node = Scalar(JsonNode::Kind::number);
        node.text = m_text.substr(node.begin, node.end - node.begin);
        return true;
    }

    bool Open(JsonNode::Kind kind) {
        m_last = NextToken() + 1;
        if (m_open.size() == deepest) {
            m_tooDeep = true;
            return false;
        }
        JsonNode& node = Place();
        node.kind = kind;
        node.begin = m_last - 1;
        m_open.push_back(&node); // stays valid: the parent does not grow while this is open
        return true;
    }

    bool Close() {
        m_last = m_open.back()->end = NextToken() + 1;
        m_open.pop_back();
        return true;
    }

    std::string_view m_text;
    const rapidjson::MemoryStream& m_stream;
    size_t m_start; // offset of the stream in the text
    size_t m_last;  // offset after the last token
    JsonNode m_root;
    std::vector<JsonNode*> m_open;
    bool m_tooDeep = false;
};

[[noreturn]] void RefuseEncoding(const SourceText& source, const char* encoding) {
    std::string reason("the text is ");
    reason += encoding;
    reason += ", and JSON is UTF-8: save the file as UTF-8";
    source.Refuse({"encoding", 0, reason, "UTF-8"});
}

// Reports UTF-16 and UTF-32 by name. The parser would only report an invalid value.
void RequireUtf8(const SourceText& source) {
    const std::string_view text = source.Text();
    const std::string_view start = text.substr(0, 4);
    if (start.starts_with(std::string_view("\xFF\xFE\0\0", 4)) || start == std::string_view("\0\0\xFE\xFF", 4)) {
        RefuseEncoding(source, "UTF-32");
    }
    // Without a byte order mark: the first two characters of JSON are ASCII, so that every second byte is 0.
    const auto isZero = [start](size_t place) { return start[place] == '\0'; };
    const bool everySecond =
        start.size() == 4 && isZero(0) == isZero(2) && isZero(1) == isZero(3) && isZero(0) != isZero(1);
    if (start.starts_with("\xFF\xFE") || start.starts_with("\xFE\xFF") || everySecond) {
        RefuseEncoding(source, "UTF-16");
    }
}

[[noreturn]] void RefuseError(const SourceText& source, size_t offset, rapidjson::ParseErrorCode code) {
    const std::string_view rest = source.Text().substr(std::min(offset, source.Text().size()));
    if (rest.starts_with('\0')) {
        source.Refuse({"nul-byte", offset, "the text contains a NUL byte: the file is not a text, or it is damaged"});
    }
    if (code == rapidjson::kParseErrorStringInvalidEncoding) {
        source.Refuse({"encoding", offset, "the string is not UTF-8: save the file as UTF-8", "UTF-8"});
    }
    source.Refuse({"syntax", offset, rapidjson::GetParseError_En(code), "strict JSON"});
}

} // namespace

const char* KindName(JsonNode::Kind kind) {
    switch (kind) {
    case JsonNode::Kind::null:
        return "null";
    case JsonNode::Kind::boolean:
        return "a boolean";
    case JsonNode::Kind::number:
        return "a number";
    case JsonNode::Kind::string:
        return "a string";
    case JsonNode::Kind::array:
        return "an array";
    case JsonNode::Kind::object:
        return "an object";
    }
    return "";
}

JsonNode ParseJson(const SourceText& source) {
    RequireUtf8(source);
    const std::string_view text = source.Text();
    const size_t start = text.starts_with(byteOrderMark) ? byteOrderMark.size() : 0;
    rapidjson::MemoryStream stream(text.data() + start, text.size() - start);
    TreeBuilder builder(text, stream, start);
    rapidjson::Reader reader;
    constexpr unsigned flags = rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag;
    const rapidjson::ParseResult result = reader.Parse<flags>(stream, builder);
    if (builder.TooDeep()) {
        source.Refuse(
            {"nesting", builder.Last() - 1, "values are nested more than " + std::to_string(deepest) + " deep"});
    }
    if (result.IsError()) {
        RefuseError(source, start + result.Offset(), result.Code());
    }
    // The parser treats a NUL byte as the end of the text.
    if (start + stream.Tell() < text.size()) {
        RefuseError(source, start + stream.Tell(), rapidjson::kParseErrorNone);
    }
    return builder.TakeRoot();
}

} // namespace mordhost
