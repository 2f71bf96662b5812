#include "policy/dotQuery.h"

#include <algorithm>
#include <utility>
#include <vector>

#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "document/inPlaceJson.h"

namespace mordhost {

namespace {

using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

// Collects the guids of a request. The functions return whether the text is a request so far.
class RequestHandler : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, RequestHandler> {
public:
    explicit RequestHandler(std::vector<std::string_view>& guids) : m_guids(guids) {}

    bool HasGuids() const { return m_hasGuids; }

    bool StartObject() { return m_depth++ == 0; }
    bool EndObject(rapidjson::SizeType) { return true; }
    bool Key(const char* text, rapidjson::SizeType size, bool) {
        return !std::exchange(m_hasGuids, true) && std::string_view(text, size) == "guid";
    }
    bool StartArray() { return m_depth++ == 1; }
    bool EndArray(rapidjson::SizeType) { return true; }
    bool String(const char* text, rapidjson::SizeType size, bool) {
        m_guids.emplace_back(text, size);
        return m_depth == 2;
    }
    bool Default() { return false; } // any other value

private:
    std::vector<std::string_view>& m_guids;
    int m_depth = 0;
    bool m_hasGuids = false;
};

} // namespace

std::string DotValue(const std::set<std::string>& mids) {
    rapidjson::StringBuffer text;
    Writer json(text);
    json.StartObject();
    json.Key("value");
    json.Int(1);
    json.Key("mid");
    json.StartObject();
    for (const std::string& mid : mids) {
        json.Key(mid.data(), static_cast<rapidjson::SizeType>(mid.size()));
        json.Int(1);
    }
    json.EndObject();
    json.EndObject();
    return {text.GetString(), text.GetSize()};
}

// Keeps its memory from query to query.
struct DotQuery::State {
    DotStore& store;
    std::string request;                 // overwritten by the parser, which puts the guids into it
    std::vector<std::string_view> guids; // of the request
    std::vector<const std::string*> dots;
    rapidjson::StringBuffer text;
    Writer json;

    explicit State(DotStore& theStore) : store(theStore) {}

    bool ReadRequest(const char* theRequest) {
        request = theRequest;
        guids.clear();
        InPlaceJson stream(request);
        RequestHandler handler(guids);
        rapidjson::Reader reader;
        return !reader.Parse<rapidjson::kParseInsituFlag>(stream, handler).IsError() && handler.HasGuids();
    }

    void WriteAnswer() {
        text.Clear();
        json.Reset(text);
        json.StartObject();
        for (auto dot = dots.begin(); dot != dots.end(); ++dot) {
            if (*dot != nullptr && std::find(dots.begin(), dot, *dot) == dot) {
                const std::string_view guid = guids[static_cast<size_t>(dot - dots.begin())];
                json.Key(guid.data(), static_cast<rapidjson::SizeType>(guid.size()));
                json.RawValue("", 0, rapidjson::kObjectType); // copies character by character, which is slow
                std::copy((*dot)->begin(), (*dot)->end(), text.Push((*dot)->size()));
            }
        }
        json.EndObject();
    }
};

DotQuery::DotQuery(DotStore& store) : m_state(std::make_unique<State>(store)) {}

DotQuery::~DotQuery() = default;

DotStore::Result DotQuery::Answer(const char* request, std::string_view& answer) {
    State& state = *m_state;
    if (!state.ReadRequest(request)) {
        return DotStore::Result::failed;
    }
    const DotStore::Result result = state.store.Find(state.guids, state.dots);
    if (result == DotStore::Result::answered) {
        state.WriteAnswer();
        answer = {state.text.GetString(), state.text.GetSize()};
    }
    return result;
}

} // namespace mordhost
