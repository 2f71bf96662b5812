#include "explain/heldDots.h"

#include <rapidjson/reader.h>

namespace mordhost {

namespace {

// Collects the names of the members of "mid".
class MidHandler : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, MidHandler> {
public:
    bool StartObject() {
        ++m_depth;
        return true;
    }
    bool EndObject(rapidjson::SizeType) {
        --m_depth;
        return true;
    }
    bool Key(const char* text, rapidjson::SizeType size, bool) {
        if (m_depth == 1) {
            m_isMid = std::string_view(text, size) == "mid";
        } else if (m_depth == 2 && m_isMid) {
            mids.emplace_back(text, size);
        }
        return true;
    }

    std::vector<std::string> mids;

private:
    int m_depth = 0;
    bool m_isMid = false;
};

} // namespace

DotStore::Result HeldDots::Find(const std::vector<std::string_view>& guids, std::vector<const std::string*>& dots) {
    m_wasAsked = false;
    const Result result = m_store.Find(guids, dots);
    m_count = 0;
    for (size_t i = 0; result == Result::answered && i < guids.size(); ++i) {
        if (dots[i] == nullptr) {
            continue;
        }
        if (m_count == m_dots.size()) {
            m_dots.emplace_back();
        }
        m_dots[m_count].first = guids[i];
        m_dots[m_count].second = *dots[i];
        ++m_count;
    }
    m_wasAsked = result == Result::answered;
    return result;
}

std::vector<std::string> HeldDots::MachinesOf(const std::string& guid) const {
    for (size_t i = 0; m_wasAsked && i < m_count; ++i) {
        if (m_dots[i].first == guid) {
            MidHandler handler;
            rapidjson::Reader reader;
            rapidjson::StringStream stream(m_dots[i].second.c_str());
            reader.Parse<rapidjson::kParseIterativeFlag>(stream, handler);
            return std::move(handler.mids);
        }
    }
    return {};
}

} // namespace mordhost
