#include "review/ruleCover.h"

#include <gtest/gtest.h>

using namespace mordhost;

namespace {

Rule RuleFor(std::vector<PortRange> ports, const std::vector<std::string>& remote = {}) {
    Rule rule{"G", "x", std::move(ports), {}, {}};
    std::string reason;
    for (const std::string& range : remote) {
        rule.remoteAddresses.push_back(*ParseAddressRange(range, reason));
    }
    return rule;
}

} // namespace

TEST(RuleCover, ARuleWithoutAConditionCoversOneWithIt) {
    EXPECT_TRUE(Covers(RuleFor({}), RuleFor({})));
    EXPECT_TRUE(Covers(RuleFor({}), RuleFor({{1, 2}}, {"10.0.0.0/8"})));
    EXPECT_FALSE(Covers(RuleFor({{1, 2}}), RuleFor({})));
    EXPECT_FALSE(Covers(RuleFor({}, {"10.0.0.0/8"}), RuleFor({{1, 2}})));
}

TEST(RuleCover, EachPortRangeIsWithinOneOfTheWideRule) {
    EXPECT_TRUE(Covers(RuleFor({{1, 5}, {7, 9}}), RuleFor({{2, 5}, {7, 7}})));
    EXPECT_FALSE(Covers(RuleFor({{1, 5}}), RuleFor({{5, 6}})));
    EXPECT_FALSE(Covers(RuleFor({{1, 5}}), RuleFor({{0, 5}})));
    EXPECT_FALSE(Covers(RuleFor({{1, 5}}), RuleFor({{1, 1}, {6, 6}})));
    EXPECT_FALSE(Covers(RuleFor({{1, 5}, {6, 9}}), RuleFor({{5, 6}}))) << "takes two ranges to prove";
}

TEST(RuleCover, EachAddressRangeIsWithinOneOfTheWideRule) {
    EXPECT_TRUE(Covers(RuleFor({}, {"10.0.0.0/8"}), RuleFor({}, {"10.1.0.0/16", "10.0.0.7"})));
    EXPECT_FALSE(Covers(RuleFor({}, {"10.1.0.0/16"}), RuleFor({}, {"10.0.0.0/8"})));
    EXPECT_FALSE(Covers(RuleFor({}, {"10.0.0.0/16"}), RuleFor({}, {"10.0.0.0/8"})));
    EXPECT_FALSE(Covers(RuleFor({}, {"10.0.0.0/8"}), RuleFor({}, {"11.0.0.0/8"})));
    EXPECT_FALSE(Covers(RuleFor({}, {"0.0.0.0/0"}), RuleFor({}, {"2001:db8::/32"})));
    EXPECT_FALSE(Covers(RuleFor({{1, 1}}, {"10.0.0.0/8"}), RuleFor({{2, 2}}, {"10.0.0.0/8"})));
}
