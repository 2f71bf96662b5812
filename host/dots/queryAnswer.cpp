#include "dots/queryAnswer.h"

#include <set>

#include <rapidjson/document.h>

#include "document/jsonText.h"

namespace mordhost {

namespace {

std::string AnswerForDot(const std::set<std::string>& mids) {
    JsonLine midObject;
    for (const std::string& mid : mids) {
        midObject.Number(mid, 1);
    }
    JsonLine answer;
    answer.Number("value", 1).Raw("mid", midObject.Take());
    return answer.Take();
}

} // namespace

std::optional<std::string> AnswerQuery(const DotStore& store, const char* request) {
    rapidjson::Document document;
    document.Parse<rapidjson::kParseIterativeFlag>(request);
    if (document.HasParseError() || !document.IsObject()) {
        return {};
    }
    const auto guids = document.FindMember("guid");
    if (guids == document.MemberEnd() || !guids->value.IsArray()) {
        return {};
    }
    JsonLine answer;
    std::set<std::string> answered;
    for (const auto& element : guids->value.GetArray()) {
        if (!element.IsString()) {
            return {};
        }
        const std::string guid(element.GetString(), element.GetStringLength());
        const std::set<std::string>* const mids = store.Find(guid);
        if (mids != nullptr && answered.insert(guid).second) {
            answer.Raw(guid, AnswerForDot(*mids));
        }
    }
    return answer.Take();
}

} // namespace mordhost
