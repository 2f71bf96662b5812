#include "policy/ruleSelection.h"

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

TEST(RuleSelection, ThePortIsTheLocalOne) {
    Rule rule;
    rule.localPorts = {{445, 445}};
    ConnectionEvent event = Event("10.0.0.1", "10.0.0.2", 80);
    event.remotePort = 445;
    EXPECT_FALSE(Applies(rule, event));
}

TEST(RuleSelection, EachEndHasRangesOfItsOwn) {
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

TEST(RuleSelection, TheRulesThatApplyStandInTheirOrder) {
    std::vector<Rule> rules(4);
    rules[0].localPorts = {{445, 445}};
    rules[1].localPorts = {{80, 80}};
    rules[3].localPorts = {{400, 500}};
    EXPECT_EQ(SelectRules(rules, Event("10.0.0.1", "10.0.0.2", 445)), (std::vector<size_t>{0, 2, 3}));
    EXPECT_EQ(SelectRules({}, Event("10.0.0.1", "10.0.0.2", 445)), std::vector<size_t>());
}
