// Random policies and recordings for comparisons.
#pragma once

#include <random>
#include <string>
#include <vector>

#include "policy/connectionEvent.h"

namespace mordhostTest {

// The policies set everything that the library would otherwise keep from an earlier policy.
class RandomComparison {
public:
    explicit RandomComparison(uint64_t seed) : m_random(seed) {}

    std::string Policy() {
        std::string rules;
        for (const char* const guid : {"A", "B", "C"}) {
            rules += rules.empty() ? "" : ", ";
            rules += std::string(R"({"guid": ")") + guid + R"(", "type": )" + Pick({R"("a")", R"("b")", R"("web")"}) +
                     (Below(2) == 0 ? R"(, "local_ports": [)" + std::to_string(1 + Below(3)) + "]}" : "}");
        }
        return R"({"machine_id": "HERE", "rules": [)" + rules + R"(], "defender_mode": )" +
               Pick({R"("action-table")", R"("action-table")", R"("action-table")", R"("all-forbid")",
                     R"("allow-after-decision")", R"("emergency")"}) +
               R"(, "exception_mode": )" + Pick({R"("allow")", R"("block")"}) + R"(, "allow_list": {"mid_list": [)" +
               Entry("M") + ", " + Entry("N") + R"(]}, "actions": {"a": )" + Pick({"0", "1"}) + R"(, "b": )" +
               Pick({"0", "1"}) + R"(}, "failures": {"fails": )" +
               Pick({R"("network-error")", R"("query-error")", R"("broken-answer")"}) + R"(}, "dots": {)" + Dots() +
               "}}";
    }

    std::vector<mordhost::ConnectionEvent> Events() {
        std::vector<mordhost::ConnectionEvent> events(static_cast<size_t>(1 + Below(12)));
        size_t line = 0;
        for (mordhost::ConnectionEvent& event : events) {
            event.line = line += static_cast<size_t>(1 + Below(2));
            event.localPort = static_cast<uint16_t>(1 + Below(4));
            event.localAddress = "192.0.2.1";
            event.remoteAddress = "192.0.2.12";
            event.time = "2026-11-20T11:16:55.413Z";
            event.name = Below(8) == 0 ? "fails" : "";
            event.flags = Below(8) == 0 ? 0x04 : Below(4) == 0 ? 0x10 : 0;
        }
        return events;
    }

private:
    int Below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(m_random); }
    std::string Pick(const std::vector<std::string>& texts) {
        return texts[static_cast<size_t>(Below(static_cast<int>(texts.size())))];
    }
    std::string Entry(const std::string& machine) {
        return R"({"mid": ")" + machine + R"(", "protocol": [)" +
               Pick({R"("a")", R"("b", "A")", R"("a", "b", "A", "B", "C")", R"("C")"}) + "]}";
    }
    std::string Dots() {
        std::string dots;
        for (const char* const guid : {"A", "B", "C"}) {
            if (Below(4) != 0) {
                dots += (dots.empty() ? "\"" : ", \"") + std::string(guid) +
                        "\": " + Pick({R"(["M"])", R"(["N", "M"])", R"(["X"])", "[]"});
            }
        }
        return dots;
    }

    std::mt19937_64 m_random;
};

} // namespace mordhostTest
