#include "recording.h"

#include <fstream>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "frame/values.h"
#include "policy/connectionEvent.h"
#include "policy/timestamp.h"

namespace bench {

namespace {

using mordhost::ConnectionEvent;

constexpr uint32_t eventsOfAMatch = 100;
constexpr uint16_t firstServicePort = 20000; // the port of the first rule that matches once
constexpr auto networkFailure = "outage";
constexpr auto brokenAnswer = "garbled";
constexpr uint32_t machines = 200;

// The services that all recordings have, each with the rules for its port.
struct Service {
    uint16_t port;
    std::vector<std::string> types;
    uint32_t dotMids; // machine ids of each dot, none of them allowed; 0: no dot is held
};

const std::vector<Service>& Services() {
    static const std::vector<Service> services = {
        {22, {"ssh"}, 0},      {443, {"web", "web"}, 3},
        {445, {"smb"}, 4},     {631, {"print"}, 0},
        {1433, {"ledger"}, 2}, {3306, {"notes"}, 0}, // the action table allows its type
        {3389, {"rdp"}, 6},    {8443, {"web", "smb", "notes", "web"}, 1},
    };
    return services;
}

std::string MachineId(uint32_t number) {
    char text[40];
    std::snprintf(text, sizeof text, "%08x%08x%08x%08x", number * 2654435761U, number * 2246822519U,
                  number * 3266489917U, number);
    return text;
}

std::string Guid(uint32_t number) {
    char text[40];
    std::snprintf(text, sizeof text, "%08x-52f1-4c07-9b1d-6a0c8e%06x", number * 2654435761U, number);
    return text;
}

using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

void Text(Writer& json, const std::string& text) {
    json.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

// The rules of the policy, and the machine ids of their dots by guid.
struct Rules {
    struct Rule {
        std::string type;
        uint16_t port;
        std::vector<std::string> mids; // of its dot; empty: no dot is held
    };
    std::vector<Rule> rules; // the guid of each is Guid of its index

    explicit Rules(uint32_t matches) {
        for (const Service& service : Services()) {
            for (const std::string& type : service.types) {
                const auto guid = static_cast<uint32_t>(rules.size());
                rules.push_back({type, service.port, Mids(1000000 + guid * 16, service.dotMids)});
            }
        }
        for (uint32_t i = 0; i < matches; ++i) {
            rules.push_back({"service", static_cast<uint16_t>(firstServicePort + i), Mids(i % machines, 1)});
        }
    }

    static std::vector<std::string> Mids(uint32_t first, uint32_t count) {
        std::vector<std::string> mids;
        for (uint32_t i = 0; i < count; ++i) {
            mids.push_back(MachineId(first + i));
        }
        return mids;
    }
};

void WriteAllowList(Writer& json) {
    json.StartObject();
    json.Key("mid_list");
    json.StartArray();
    for (uint32_t i = 0; i < machines; ++i) {
        json.StartObject();
        json.Key("mid");
        Text(json, MachineId(i));
        json.Key("protocol");
        json.StartArray();
        for (const char* const type : {"service", "smb", "rdp"}) {
            json.String(type);
        }
        json.EndArray();
        json.EndObject();
    }
    json.EndArray();
    json.EndObject();
}

void WriteRules(Writer& json, const Rules& rules) {
    json.StartArray();
    for (uint32_t i = 0; i < rules.rules.size(); ++i) {
        json.StartObject();
        json.Key("guid");
        Text(json, Guid(i));
        json.Key("type");
        Text(json, rules.rules[i].type);
        json.Key("local_ports");
        json.StartArray();
        json.Uint(rules.rules[i].port);
        json.EndArray();
        json.EndObject();
    }
    json.EndArray();
}

void WriteDots(Writer& json, const Rules& rules) {
    json.StartObject();
    for (uint32_t i = 0; i < rules.rules.size(); ++i) {
        if (rules.rules[i].mids.empty()) {
            continue;
        }
        json.Key(Guid(i).c_str());
        json.StartArray();
        for (const std::string& mid : rules.rules[i].mids) {
            Text(json, mid);
        }
        json.EndArray();
    }
    json.EndObject();
}

std::string PolicyText(uint32_t matches) {
    const Rules rules(matches);
    rapidjson::StringBuffer text;
    Writer json(text);
    json.StartObject();
    json.Key("machine_id");
    json.String("BENCH");
    json.Key("defender_mode");
    json.String("action-table");
    json.Key("exception_mode");
    json.String("allow");
    json.Key("actions");
    json.StartObject();
    json.Key("notes");
    json.Int(1);
    json.Key("smb");
    json.Int(0);
    json.EndObject();
    json.Key("allow_list");
    WriteAllowList(json);
    json.Key("rules");
    WriteRules(json, rules);
    json.Key("dots");
    WriteDots(json, rules);
    json.Key("failures");
    json.StartObject();
    json.Key(networkFailure);
    json.String("network-error");
    json.Key(brokenAnswer);
    json.String("broken-answer");
    json.EndObject();
    json.EndObject();
    return {text.GetString(), text.GetSize()};
}

// Draws the events one after the other.
class Events {
public:
    explicit Events(uint32_t matches) : m_matches(matches) {}

    ConnectionEvent Next() {
        ConnectionEvent event;
        const uint32_t number = m_next++;
        using namespace std::chrono;
        event.time = mordhost::Timestamp(sys_days(2026y / 11 / 20) + milliseconds(number * 7ULL));
        event.name = "connection-" + std::to_string(number);
        event.flags = Draw(20) == 0 ? uint32_t{EVENT_FLAG_REPLY_TWO} : 0;
        event.pid = 4200000 + Draw(20); // above the highest id of Linux
        static constexpr const char* processes[] = {"/usr/sbin/sshd", "/usr/lib/postgresql/15/bin/postgres",
                                                    "/usr/sbin/apache2", "/usr/bin/python3.11"};
        if (Draw(10) != 0) { // one in ten was not identified in time
            event.process = processes[Draw(4)];
        }
        const bool v6 = Draw(10) == 0;
        event.remoteAddress = v6 ? "2001:db8::" + std::to_string(1 + Draw(5000))
                                 : "10.1." + std::to_string(Draw(250)) + '.' + std::to_string(1 + Draw(250));
        event.localAddress = v6 ? "2001:db8::1:1" : "10.1.0.20";
        event.remotePort = static_cast<uint16_t>(32768 + Draw(28000));
        event.netDrv = 6018044;
        const uint32_t kind = Draw(100);
        if (number % eventsOfAMatch == eventsOfAMatch - 1 && m_matched < m_matches) {
            event.localPort = static_cast<uint16_t>(firstServicePort + m_matched++);
            return event;
        }
        event.localPort = Port(kind);
        if (kind < 20) {
            event.flags = EVENT_FLAG_DISCONNECT;
            event.name = "dis" + event.name.substr(3);
        } else if (kind < 30) {
            event.name = networkFailure;
        } else if (kind < 32) {
            event.name = brokenAnswer;
        }
        return event;
    }

private:
    uint32_t Draw(uint32_t bound) { return static_cast<uint32_t>(m_random() % bound); }

    uint16_t Port(uint32_t kind) {
        if (kind >= 32 && kind < 36) {
            return 9;
        }
        if (kind >= 36 && kind < 56) {
            return Draw(2) == 0 ? 443 : 8443;
        }
        static constexpr uint16_t single[] = {22, 445, 631, 1433, 3306, 3389};
        return single[Draw(6)];
    }

    const uint32_t m_matches;
    uint32_t m_matched = 0;
    uint32_t m_next = 1;
    std::minstd_rand m_random{20261120};
};

} // namespace

void WriteRecording(const std::filesystem::path& folder, uint32_t eventCount) {
    const uint32_t matches = std::min<uint32_t>(eventCount / eventsOfAMatch, 40000);
    std::ofstream policy(folder / policyFileName, std::ios::binary);
    policy << PolicyText(matches) << '\n';
    std::ofstream lines(folder / eventsFileName, std::ios::binary);
    Events events(matches);
    for (uint32_t i = 0; i < eventCount; ++i) {
        lines << EventLine(events.Next()) << '\n';
    }
    policy.close();
    lines.close();
    if (!policy || !lines) {
        throw std::runtime_error("cannot write the recording into " + folder.string());
    }
}

} // namespace bench
