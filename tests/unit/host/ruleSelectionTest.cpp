#include "policy/ruleSelection.h"

#include <random>

#include <gtest/gtest.h>

using namespace mordhost;

namespace {

AddressRange RangeOf(const std::string& text) {
    std::string reason;
    return ParseAddressRange(text, reason).value();
}

ConnectionEvent Event(const std::string& remote, const std::string& local, uint16_t port) {
    ConnectionEvent event;
    event.remoteAddress = remote;
    event.localAddress = local;
    event.localPort = port;
    return event;
}

std::vector<size_t> Selected(const std::vector<Rule>& rules, const ConnectionEvent& event) {
    return RuleSelector(rules).Select(event);
}

bool Applies(const Rule& rule, const ConnectionEvent& event) {
    return !Selected({rule}, event).empty();
}

} // namespace

TEST(RuleSelection, ARuleWithoutConditionsAppliesToEverything) {
    EXPECT_TRUE(Applies({}, {}));
    EXPECT_TRUE(Applies({}, Event("10.0.0.1", "10.0.0.2", 445)));
}

TEST(RuleSelection, APortRangeIncludesBothItsEnds) {
    Rule rule;
    rule.localPorts = {{445, 445}, {8000, 8080}};
    for (const uint16_t port : std::initializer_list<uint16_t>{445, 8000, 8040, 8080}) {
        EXPECT_TRUE(Applies(rule, Event("10.0.0.1", "10.0.0.2", port))) << port;
    }
    for (const uint16_t port : std::initializer_list<uint16_t>{0, 444, 446, 7999, 8081, 65535}) {
        EXPECT_FALSE(Applies(rule, Event("10.0.0.1", "10.0.0.2", port))) << port;
    }
}

TEST(RuleSelection, APortIsTheLocalPort) {
    Rule rule;
    rule.localPorts = {{445, 445}};
    ConnectionEvent event = Event("10.0.0.1", "10.0.0.2", 80);
    event.remotePort = 445;
    EXPECT_FALSE(Applies(rule, event));
}

TEST(RuleSelection, EachEndHasItsRanges) {
    Rule rule;
    rule.remoteAddresses = {RangeOf("10.0.0.0/8"), RangeOf("fd00::/8")};
    EXPECT_TRUE(Applies(rule, Event("10.9.9.9", "192.0.2.1", 1)));
    EXPECT_TRUE(Applies(rule, Event("fd12::1", "::1", 1)));
    EXPECT_FALSE(Applies(rule, Event("192.0.2.1", "10.9.9.9", 1)));
    rule.localAddresses = {RangeOf("192.0.2.1")};
    EXPECT_TRUE(Applies(rule, Event("10.9.9.9", "192.0.2.1", 1)));
    EXPECT_FALSE(Applies(rule, Event("10.9.9.9", "192.0.2.2", 1)));
}

TEST(RuleSelection, AllKindsOfConditionsMustBeMet) {
    Rule rule;
    rule.localPorts = {{445, 445}};
    rule.remoteAddresses = {RangeOf("10.0.0.0/8")};
    EXPECT_TRUE(Applies(rule, Event("10.0.0.1", "10.0.0.2", 445)));
    EXPECT_FALSE(Applies(rule, Event("10.0.0.1", "10.0.0.2", 446)));
    EXPECT_FALSE(Applies(rule, Event("11.0.0.1", "10.0.0.2", 445)));
}

TEST(RuleSelection, AConditionOnAnAbsentValueIsNotMet) {
    Rule byPort;
    byPort.localPorts = {{0, 65535}};
    EXPECT_FALSE(Applies(byPort, {}));
    Rule byAddress;
    byAddress.remoteAddresses = {RangeOf("0.0.0.0/0"), RangeOf("::/0")};
    EXPECT_FALSE(Applies(byAddress, {}));
}

TEST(RuleSelection, AMappedAddressMeetsARangeOfVersion4) {
    Rule rule;
    rule.remoteAddresses = {RangeOf("127.0.0.0/8")};
    EXPECT_TRUE(Applies(rule, Event("::ffff:127.0.0.9", "::ffff:127.0.0.1", 445)));
}

TEST(RuleSelection, SelectedRulesAreInTheirOrder) {
    std::vector<Rule> rules(4);
    rules[0].localPorts = {{445, 445}};
    rules[1].localPorts = {{80, 80}};
    rules[3].localPorts = {{400, 500}};
    EXPECT_EQ(Selected(rules, Event("10.0.0.1", "10.0.0.2", 445)), (std::vector<size_t>{0, 2, 3}));
    EXPECT_EQ(Selected({}, Event("10.0.0.1", "10.0.0.2", 445)), std::vector<size_t>());
}

TEST(RuleSelection, ARuleThatNamesAPortTwiceIsSelectedOnce) {
    Rule rule;
    rule.localPorts = {{445, 445}, {139, 139}, {445, 445}};
    EXPECT_EQ(Selected({rule}, Event("10.0.0.1", "10.0.0.2", 445)), std::vector<size_t>{0});
    rule.localPorts.push_back({400, 500});
    EXPECT_EQ(Selected({rule}, Event("10.0.0.1", "10.0.0.2", 445)), std::vector<size_t>{0});
}

TEST(RuleSelection, ASelectorCanBeReused) {
    std::vector<Rule> rules(3);
    rules[1].localPorts = {{1, 1}};
    rules[2].localPorts = {{0, 0}};
    RuleSelector selector(rules);
    EXPECT_EQ(selector.Select(Event("10.0.0.1", "10.0.0.2", 1)), (std::vector<size_t>{0, 1}));
    EXPECT_EQ(selector.Select({}), std::vector<size_t>{0}) << "no port is not port 0";
    EXPECT_EQ(selector.Select(Event("10.0.0.1", "10.0.0.2", 0)), (std::vector<size_t>{0, 2}));
}

// Compares the selection among many rules of all kinds with the selection of each rule alone.
TEST(RuleSelection, ARuleAppliesIndependentlyOfOthers) {
    std::minstd_rand random(20261122);
    const auto draw = [&random](unsigned bound) { return static_cast<uint16_t>(random() % bound); };
    std::vector<Rule> rules(300);
    for (Rule& rule : rules) {
        for (int ports = draw(4); ports > 0; --ports) {
            const uint16_t first = draw(20);
            rule.localPorts.push_back({first, static_cast<uint16_t>(first + (draw(3) == 0 ? draw(5) : 0))});
        }
        if (draw(4) == 0) {
            rule.remoteAddresses.push_back(RangeOf("10.0.0.0/" + std::to_string(8 + draw(16))));
        }
        if (draw(4) == 0) {
            rule.localAddresses.push_back(RangeOf("10.0.0.2"));
        }
    }
    RuleSelector selector(rules);
    for (uint16_t port = 0; port < 30; ++port) {
        for (const char* remote : {"10.0.0.1", "10.0.1.1", "10.200.0.1", "192.0.2.1"}) {
            const ConnectionEvent event = Event(remote, port % 2 == 0 ? "10.0.0.2" : "10.0.0.3", port);
            std::vector<size_t> alone;
            for (size_t i = 0; i < rules.size(); ++i) {
                if (Applies(rules[i], event)) {
                    alone.push_back(i);
                }
            }
            ASSERT_EQ(selector.Select(event), alone) << port << ' ' << remote;
        }
    }
}
