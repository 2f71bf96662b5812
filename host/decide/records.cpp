#include "decide/records.h"

#include <string_view>

#include "frame/values.h"

namespace mordhost {

namespace {

constexpr int32_t notHeld = 1;

// The protocol of GetString: a first call returns the size, a second one the text.
int32_t DeliverText(const std::string* text, char* buffer, int32_t* size) {
    if (text == nullptr) {
        return notHeld;
    }
    const auto needed = static_cast<int32_t>(text->size() + 1);
    if (buffer == nullptr || *size < needed) {
        *size = needed;
        return RECORD_BUFFER_NEEDED;
    }
    std::memcpy(buffer, text->c_str(), text->size() + 1);
    *size = needed;
    return RECORD_DELIVERED;
}

template <typename Number, typename Held>
int32_t DeliverNumber(const std::optional<Held>& held, Number* value) {
    if (!held) {
        return notHeld;
    }
    *value = static_cast<Number>(*held);
    return RECORD_DELIVERED;
}

const std::string* Held(const std::optional<std::string>& text) {
    return text ? &*text : nullptr;
}

} // namespace

int32_t EventRecord::GetInt32(const char* name, int32_t* value) {
    const std::string_view key = name;
    if (key == "flags") {
        return DeliverNumber(m_event.flags, value);
    }
    if (key == "pid") {
        return DeliverNumber(m_event.pid, value);
    }
    if (key == "remote_addr_port") {
        return DeliverNumber(m_event.remotePort, value);
    }
    if (key == "local_addr_port") {
        return DeliverNumber(m_event.localPort, value);
    }
    return notHeld;
}

int32_t EventRecord::GetInt64(const char* name, int64_t* value) {
    return std::string_view(name) == "net_drv" ? DeliverNumber(m_event.netDrv, value) : notHeld;
}

int32_t EventRecord::GetString(const char* name, char* buffer, int32_t* size) {
    const std::string_view key = name;
    const std::string* text = nullptr;
    if (key == "remote_addr_ip") {
        text = Held(m_event.remoteAddress);
    } else if (key == "local_addr_ip") {
        text = Held(m_event.localAddress);
    }
    return DeliverText(text, buffer, size);
}

int32_t RuleRecord::GetInt32(const char*, int32_t*) {
    return notHeld;
}

int32_t RuleRecord::GetInt64(const char*, int64_t*) {
    return notHeld;
}

int32_t RuleRecord::GetString(const char* name, char* buffer, int32_t* size) {
    const std::string_view key = name;
    return DeliverText(key == "guid" ? &m_rule.guid : key == "type" ? &m_rule.type : nullptr, buffer, size);
}

} // namespace mordhost
