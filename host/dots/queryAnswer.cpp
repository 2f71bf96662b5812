#include "dots/queryAnswer.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include <rapidjson/reader.h>

#include "document/inPlaceJson.h"
#include "document/jsonText.h"

namespace mordhost {

std::string AnswerMember(const std::string& guid, const std::set<std::string>& mids) {
    JsonLine midObject;
    for (const std::string& mid : mids) {
        midObject.Number(mid, 1);
    }
    JsonLine dot;
    dot.Number("value", 1).Raw("mid", midObject.Take());
    return JsonText(guid) + ':' + dot.Take();
}

// Answers guid by guid, as the parser comes across them. Each call returns whether the text is a request so far.
class QueryAnswerer::Handler : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Handler> {
public:
    explicit Handler(QueryAnswerer& answerer) : m_to(answerer) {}

    bool HasGuids() const { return m_hasGuids; }

    bool StartObject() { return m_depth++ == 0; }
    bool EndObject(rapidjson::SizeType) { return true; }
    bool Key(const char* text, rapidjson::SizeType size, bool) {
        return !std::exchange(m_hasGuids, true) && std::string_view(text, size) == "guid";
    }
    bool StartArray() { return m_depth++ == 1; }
    bool EndArray(rapidjson::SizeType) { return true; }
    bool String(const char* text, rapidjson::SizeType size, bool) {
        if (m_depth != 2) {
            return false;
        }
        const std::string* const member = m_to.m_store.Find({text, size});
        std::vector<const std::string*>& given = m_to.m_given;
        if (member != nullptr && std::find(given.begin(), given.end(), member) == given.end()) {
            m_to.m_answer += given.empty() ? "" : ",";
            m_to.m_answer += *member;
            given.push_back(member);
        }
        return true;
    }
    bool Default() { return false; } // any other value

private:
    QueryAnswerer& m_to;
    int m_depth = 0;
    bool m_hasGuids = false;
};

const std::string* QueryAnswerer::Answer(const char* request) {
    m_request = request;
    m_answer = "{";
    m_given.clear();
    InPlaceJson stream(m_request);
    Handler handler(*this);
    rapidjson::Reader reader;
    if (reader.Parse<rapidjson::kParseInsituFlag>(stream, handler).IsError() || !handler.HasGuids()) {
        return nullptr;
    }
    m_answer += '}';
    return &m_answer;
}

} // namespace mordhost
