// A defender mode with an end.
#include "decide/modeSchedule.h"

#include <gtest/gtest.h>

#include "frame/values.h"
#include "kit/system/temporaryDirectory.h"
#include "policy/policyReader.h"
#include "policy/timestamp.h"

using namespace mordhost;

namespace {

Policy PolicyWithMode(const std::string& mode) {
    const kit::TemporaryDirectory directory;
    return ReadPolicy(directory.Write("p.json", R"({"rules": [], "defender_mode": )" + mode + "}"));
}

ConnectionEvent EventAt(const std::string& time) {
    ConnectionEvent event;
    event.time = time;
    return event;
}

const std::string emergency = R"({"mode": "emergency", "until": "2026-11-20T12:00:00Z"})";

} // namespace

TEST(ModeSchedule, TheTimeOfTheEventDecides) {
    const Policy policy = PolicyWithMode(emergency);
    const ModeSchedule schedule(policy, [] { return *ParseTimestamp("2030-01-01T00:00:00Z"); });
    EXPECT_EQ(schedule.ModeFor(EventAt("2026-11-20T11:59:59.999Z")), MODE_EMERGENCY);
    EXPECT_EQ(schedule.ModeFor(EventAt("2026-11-20T12:00:00Z")), MODE_ACTION_TABLE);
    EXPECT_EQ(schedule.ModeFor(EventAt("2027-01-01T00:00:00Z")), MODE_ACTION_TABLE);
    EXPECT_EQ(schedule.ModeFor(EventAt("2026-11-20T11:00:00Z")), MODE_EMERGENCY) << "events may come in any order";
}

TEST(ModeSchedule, TheClockDecidesForAnEventWithoutATime) {
    const Policy policy = PolicyWithMode(emergency);
    auto now = *ParseTimestamp("2026-11-20T11:59:59Z");
    const ModeSchedule schedule(policy, [&now] { return now; });
    EXPECT_EQ(schedule.ModeFor(EventAt("")), MODE_EMERGENCY);
    now += std::chrono::seconds(1);
    EXPECT_EQ(schedule.ModeFor(EventAt("")), MODE_ACTION_TABLE);
}

TEST(ModeSchedule, ThenIsTheModeAfterTheEnd) {
    const Policy policy =
        PolicyWithMode(R"({"mode": "allow-after-decision", "until": "2026-11-20T12:00:00Z", "then": "all-forbid"})");
    const ModeSchedule schedule(policy);
    EXPECT_EQ(schedule.ModeFor(EventAt("2026-11-20T11:00:00Z")), MODE_ALLOW_AFTER_DECISION);
    EXPECT_EQ(schedule.ModeFor(EventAt("2026-11-20T13:00:00Z")), MODE_ALL_FORBID);
}

TEST(ModeSchedule, AModeWithoutAnEndAlwaysApplies) {
    const Policy policy = PolicyWithMode("\"emergency\"");
    EXPECT_EQ(ModeSchedule(policy).ModeFor(EventAt("2999-01-01T00:00:00Z")), MODE_EMERGENCY);
    EXPECT_EQ(ModeSchedule(Policy()).ModeFor(EventAt("")), std::nullopt);
}

TEST(ModeSchedule, AnEndIsRefusedWhereItMakesNoSense) {
    for (const std::string mode : {R"({"mode": "all-forbid", "until": "2026-11-20T12:00:00Z"})",
                                   R"({"mode": "emergency"})", R"({"mode": "emergency", "until": "2026-11-20"})",
                                   R"({"mode": "emergency", "until": 5})", R"({"until": "2026-11-20T12:00:00Z"})",
                                   R"({"mode": "emergency", "until": "2026-11-20T12:00:00Z", "after": "emergency"})",
                                   R"({"mode": "emergency", "until": "2026-11-20T12:00:00Z", "then": "none"})"}) {
        EXPECT_THROW(PolicyWithMode(mode), DocumentError) << mode;
    }
}
