#include "model/largeCase.h"

#include "model/operations.h"

namespace model {
namespace {

// Long enough for an answer of 256 rules to take more than 64 KiB.
std::string Id(const std::string& name) {
    return name + std::string(240, 'x');
}

std::string ListEntry(const std::string& mid, const std::string& key) {
    return R"({"mid":")" + mid + R"(","protocol":[")" + key + R"("]})";
}

std::string AnswerMember(const std::string& guid, const std::string& mids) {
    return "\"" + guid + R"(":{"value":1,"mid":{)" + mids + "}}";
}

std::string MidMember(const std::string& mid) {
    return "\"" + mid + "\":1";
}

template <typename Item>
std::string Joined(uint32_t count, const Item& item) {
    std::string all;
    for (uint32_t i = 0; i < count; ++i) {
        all += (i == 0 ? "" : ",") + item(i);
    }
    return all;
}

// List number `round` of `pairs` different pairs: all under the key "t", one under each of many keys, or several under
// each of some. Half of the ids occur in the lists of all rounds.
std::string List(Random& random, uint32_t round, uint32_t pairs) {
    const uint32_t keys = random.Pick({1U, pairs, 2U, 30U});
    return "{\"mid_list\":[" +
           Joined(pairs,
                  [&](uint32_t i) {
                      const std::string mid = "m" + std::to_string(i) + (i % 2 == 0 ? "" : "r" + std::to_string(round));
                      return ListEntry(mid, i % keys == 0 ? "t" : "t" + std::to_string(i % keys));
                  }) +
           "]}";
}

// Asks for ids of this round, of the round before, and of no round.
EventScript Probe(Random& random, uint32_t round, uint32_t pairs) {
    const uint32_t first = random.Below(pairs);
    std::string mids;
    switch (random.Below(4)) {
    case 0: // of every round, and under "t" in each list
        mids = MidMember("m0");
        break;
    case 1:
        mids = MidMember("m1r" + std::to_string(round)) + "," + MidMember("m" + std::to_string(first));
        break;
    case 2:
        mids = MidMember("m" + std::to_string(first | 1U) + "r" + std::to_string(round - 1));
        break;
    default: // a thousand ids and more, of which the last can match
        mids = Joined(1000, [](uint32_t i) { return MidMember("n" + std::to_string(i)); }) + "," +
               MidMember("m" + std::to_string(first & ~1U));
        break;
    }
    const std::string type = random.Pick({"t", "t", "t1", "t17"});
    return EventOf(random.Pick({0, 0x10}), {RuleRecord("other", type), RuleRecord("g", type)},
                   "{" + AnswerMember("g", mids) + "}");
}

// As many rules, each with a guid of its own and a different id. The list allows that of rule `allowed`, if there is
// one: it alone decides.
void AddManyRules(Random& random, uint32_t rules, uint32_t allowed, std::vector<Operation>& steps) {
    const std::string list = "{\"mid_list\":[" + ListEntry(Id("m" + std::to_string(allowed)), "dns") + "," +
                             ListEntry(Id("m" + std::to_string(allowed)), "g" + std::to_string(allowed)) + "]}";
    steps.push_back(AllowListOf(list));
    std::vector<RecordScript> records;
    for (uint32_t i = 0; i < rules; ++i) {
        records.push_back(RuleRecord("g" + std::to_string(i), random.Percent(20) ? "web" : "dns"));
    }
    const std::string answer =
        "{" +
        Joined(
            rules,
            [](uint32_t i) { return AnswerMember("g" + std::to_string(i), MidMember(Id("m" + std::to_string(i)))); }) +
        "}";
    steps.push_back(HandlingOf(EventOf(random.Pick({0, 0x10}), records, answer)));
}

} // namespace

TestCase LargeCase(Random& random, bool logs) {
    TestCase made;
    made.siblings.writesLog = logs && random.Percent(30);
    std::vector<Operation>& steps = made.operations;
    steps = {InitOf(0), SinkOf(0), StartOf(), NumberOf(8, random.Pick({2U, 3U, 77U})), TextOf(20, R"({"none":1})")};
    const uint32_t rounds = random.Between(5, 7);
    uint32_t pairs = 0;
    for (uint32_t round = 1; round <= rounds; ++round) {
        pairs = random.Between(1000, 1400);
        steps.push_back(AllowListOf(List(random, round, pairs)));
        steps.push_back(HandlingOf(Probe(random, round, pairs)));
    }
    // A rule of many ids, the last of which matches.
    const std::string ids = Joined(1300, [](uint32_t i) { return MidMember("n" + std::to_string(i)); });
    steps.push_back(AllowListOf("{\"mid_list\":[" + ListEntry("n1299", "t") + "," + ListEntry("z", "t") + "]}"));
    steps.push_back(HandlingOf(EventOf(0, {RuleRecord("g", "t")}, "{" + AnswerMember("g", ids) + "}")));

    const uint32_t rules = random.Pick({300U, 512U, 520U, 600U});
    AddManyRules(random, rules, random.Pick({256U, 257U, rules - 1, random.Between(256, rules - 1)}), steps);
    AddManyRules(random, random.Pick({256U, 257U, 300U, 512U}), 10000, steps);
    return made;
}

} // namespace model
