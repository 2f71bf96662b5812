#include "policy/plainEvent.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <string_view>
#include <utility>

#include <rapidjson/reader.h>

#include "document/inPlaceJson.h"
#include "document/ipAddress.h"
#include "policy/timestamp.h"

namespace mordhost {

namespace {

// In the order in which EventLine writes them.
enum class Field {
    time,
    name,
    flags,
    pid,
    process,
    remoteAddress,
    remotePort,
    localAddress,
    localPort,
    netDrv,
    none,
};

constexpr std::string_view fieldNames[] = {
    "time",
    "name",
    "flags",
    "pid",
    "process",
    "remote_addr_ip",
    "remote_addr_port",
    "local_addr_ip",
    "local_addr_port",
    "net_drv",
};

template <typename Held, typename Number>
bool Take(std::optional<Held>& value, Number number) {
    value = static_cast<Held>(number);
    return std::in_range<Held>(number);
}

bool TakeAddress(std::optional<std::string>& address, std::string_view text) {
    if (!address) {
        address.emplace();
    }
    address->assign(text);
    return ParseIpAddress(text).has_value();
}

// Whether the text is ASCII without NUL.
bool IsPlain(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<signed char>(c) > 0; });
}

// Writes the values to the event. The functions return whether the event is plain so far.
class EventHandler {
public:
    using Ch = char; // RapidJSON requires this name

    explicit EventHandler(ConnectionEvent& event) : m_event(event) {}

    bool StartObject() { return !std::exchange(m_open, true); }
    bool EndObject(rapidjson::SizeType) { return true; }

    bool Key(const char* text, rapidjson::SizeType size, bool) {
        const std::string_view name(text, size);
        // The next field in the usual order first.
        const auto* known = m_expected != std::end(fieldNames) && *m_expected == name
                                ? m_expected
                                : std::find(std::begin(fieldNames), std::end(fieldNames), name);
        m_expected = known == std::end(fieldNames) ? known : known + 1;
        m_field = static_cast<Field>(known - std::begin(fieldNames));
        const unsigned bit = 1U << static_cast<unsigned>(m_field);
        const bool repeated = (m_seen & bit) != 0;
        m_seen |= bit;
        return m_field != Field::none && !repeated;
    }

    bool String(const char* text, rapidjson::SizeType size, bool) {
        const std::string_view value(text, size);
        switch (m_field) {
        case Field::time:
            m_event.time = value;
            return IsTimestamp(value);
        case Field::name:
            m_event.name = value;
            return IsPlain(value);
        case Field::process:
            m_event.process = value;
            return IsPlain(value);
        case Field::remoteAddress:
            return TakeAddress(m_event.remoteAddress, value);
        case Field::localAddress:
            return TakeAddress(m_event.localAddress, value);
        default:
            return false;
        }
    }

    bool Int(int number) { return Number(number); }
    bool Uint(unsigned number) { return Number(number); }
    bool Int64(int64_t number) { return Number(number); }
    bool Uint64(uint64_t number) { return Number(number); }

    bool Null() { return false; }
    bool Bool(bool) { return false; }
    bool Double(double) { return false; }
    bool RawNumber(const char*, rapidjson::SizeType, bool) { return false; }
    bool StartArray() { return false; }
    bool EndArray(rapidjson::SizeType) { return false; }

private:
    template <typename Word>
    bool Number(Word number) {
        switch (m_field) {
        case Field::flags:
            return Take(m_event.flags, number);
        case Field::pid:
            return Take(m_event.pid, number);
        case Field::remotePort:
            return Take(m_event.remotePort, number);
        case Field::localPort:
            return Take(m_event.localPort, number);
        case Field::netDrv:
            return Take(m_event.netDrv, number);
        default:
            return false;
        }
    }

    ConnectionEvent& m_event;
    bool m_open = false;
    Field m_field = Field::none;
    const std::string_view* m_expected = std::begin(fieldNames);
    unsigned m_seen = 0;
};

// Removes all values and keeps the memory of the texts, except of the addresses.
void Clear(ConnectionEvent& event) {
    event.flags.reset();
    event.pid.reset();
    event.remoteAddress.reset();
    event.remotePort.reset();
    event.localAddress.reset();
    event.localPort.reset();
    event.netDrv.reset();
    event.time.clear();
    event.name.clear();
    event.process.clear();
    event.program.reset();
}

} // namespace

bool ReadPlainEvent(std::string& line, ConnectionEvent& event) {
    Clear(event);
    EventHandler handler(event);
    rapidjson::Reader reader;
    InPlaceJson stream(line);
    // The recursive parser is safe, because the handler refuses nested values. It treats a NUL byte as the end of the
    // text, hence the comparison of sizes.
    return !reader.Parse<rapidjson::kParseInsituFlag>(stream, handler).IsError() && stream.Tell() == line.size();
}

} // namespace mordhost
