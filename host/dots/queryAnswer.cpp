#include "dots/queryAnswer.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include <rapidjson/reader.h>

#include "document/inPlaceJson.h"
#include "document/jsonText.h"

namespace mordhost {

namespace {

// Answers guid by guid, as the parser comes across them.
class Answering : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Answering> {
public:
    Answering(const DotStore& store, std::string& answer) : m_store(store), m_answer(answer) { m_answer = '{'; }

    // Whether the text was a request; its answer is whole then.
    bool End() {
        m_answer += '}';
        return m_hasGuids;
    }

    bool StartObject() { return m_depth++ == 0; } // no object stands within a request
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
        const std::string* const member = m_store.Find({text, size});
        if (member != nullptr && std::find(m_given.begin(), m_given.end(), member) == m_given.end()) {
            m_answer += m_given.empty() ? "" : ",";
            m_answer += *member;
            m_given.push_back(member);
        }
        return true;
    }
    bool Default() { return false; } // any other value

private:
    const DotStore& m_store;
    std::string& m_answer;
    std::vector<const std::string*> m_given;
    int m_depth = 0;
    bool m_hasGuids = false;
};

} // namespace

std::string AnswerMember(const std::string& guid, const std::set<std::string>& mids) {
    JsonLine midObject;
    for (const std::string& mid : mids) {
        midObject.Number(mid, 1);
    }
    JsonLine dot;
    dot.Number("value", 1).Raw("mid", midObject.Take());
    return JsonText(guid) + ':' + dot.Take();
}

bool AnswerQuery(const DotStore& store, const char* request, std::string& answer) {
    std::string text(request);
    InPlaceJson stream(text);
    Answering answering(store, answer);
    rapidjson::Reader reader;
    return !reader.Parse<rapidjson::kParseInsituFlag>(stream, answering).IsError() && answering.End();
}

} // namespace mordhost
