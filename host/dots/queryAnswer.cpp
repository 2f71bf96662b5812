#include "dots/queryAnswer.h"

#include <rapidjson/document.h>

#include "document/jsonText.h"

namespace mordhost {

namespace {

// A request, parsed. Its memory stands in the object itself, as long as it is no larger than usual.
class Request {
public:
    explicit Request(const char* text) : m_text(text) {
        m_document.ParseInsitu<rapidjson::kParseIterativeFlag>(m_text.data());
    }

    const auto& Document() const { return m_document; }

private:
    using Pool = rapidjson::MemoryPoolAllocator<>;

    std::string m_text; // which the document leads into
    char m_values[2048];
    char m_stack[1024];
    Pool m_valuePool{m_values, sizeof m_values};
    Pool m_stackPool{m_stack, sizeof m_stack};
    rapidjson::GenericDocument<rapidjson::UTF8<>, Pool, Pool> m_document{&m_valuePool, sizeof m_stack / 2,
                                                                         &m_stackPool};
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

std::optional<std::string> AnswerQuery(const DotStore& store, const char* request) {
    const Request parsed(request);
    const auto& document = parsed.Document();
    if (document.HasParseError() || !document.IsObject()) {
        return {};
    }
    const auto guids = document.FindMember("guid");
    if (guids == document.MemberEnd() || !guids->value.IsArray()) {
        return {};
    }
    std::string answer = "{";
    std::set<const std::string*> answered;
    for (const auto& guid : guids->value.GetArray()) {
        if (!guid.IsString()) {
            return {};
        }
        const std::string* const member = store.Find({guid.GetString(), guid.GetStringLength()});
        if (member != nullptr && answered.insert(member).second) {
            answer += answer.size() > 1 ? "," : "";
            answer += *member;
        }
    }
    return answer + '}';
}

} // namespace mordhost
