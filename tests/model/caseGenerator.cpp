#include "model/caseGenerator.h"

#include "model/documents.h"
#include "model/eventGenerator.h"
#include "model/operations.h"

namespace model {
namespace {

SiblingState RandomSiblings(Random& random, bool logs) {
    SiblingState siblings;
    siblings.logs = logs;
    siblings.settlesLogging = !random.Percent(4);
    siblings.tellsSettings = random.Percent(6); // without them a start leaves the logger as it is, and costs less
    siblings.machineIdResult = random.Percent(4) ? random.Pick({1, -1}) : 0;
    siblings.machineId = random.Percent(4) ? "" : random.Pick({"HOST-A", "HOST-B", "m1"});
    return siblings;
}

// Steps that belong to the life of the object rather than to its decisions.
void AddLifecycleSteps(Vocabulary& words, bool logs, std::vector<Operation>& steps) {
    Random& random = words.Source();
    switch (random.Below(10)) {
    case 0:
        steps.push_back(InitOf(random.Below(3)));
        break;
    case 1:
    case 2:
        steps.push_back(UninitOf());
        if (random.Percent(70)) {
            steps.push_back(InitOf(random.Pick({0U, 0U, 1U, 1U, 1U, 2U})));
        }
        break;
    case 3:
        steps.push_back(ReadingOf(static_cast<uint32_t>(random.Next())));
        break;
    case 4:
        steps.push_back(SiblingsOf(RandomSiblings(random, logs)));
        break;
    case 5:
        steps.push_back(TextOf(6, random.Pick({"", "", "OTHER", "m1", "\xC3\xA9\xFF"})));
        break;
    case 6:
        steps.push_back(NullDataOf(random.Pick({6U, 8U, 9U, 20U, 1U})));
        break;
    case 7:
        steps.push_back(ZeroSizeOf(random.Pick({6U, 8U, 9U, 20U, 1U}), 5));
        break;
    case 8:
        steps.push_back(NumberOf(random.Pick({0U, 1U, 7U, 10U, 19U, 21U, 0xFFFFFFFFU}), 1));
        break;
    default:
        steps.push_back(SinkOf(random.Pick({0U, 0U, 1U, 1U, 2U})));
        break;
    }
}

// What a host usually does first; each step is missing now and then.
void AddSetUp(Vocabulary& words, std::vector<Operation>& steps) {
    Random& random = words.Source();
    if (random.Percent(3)) {
        steps.push_back(RandomOperationAtAnyTime(words));
    }
    if (random.Percent(97)) {
        steps.push_back(InitOf(random.Percent(97) ? 0 : random.Below(3)));
    }
    if (random.Percent(93)) {
        steps.push_back(SinkOf(0));
    }
    if (random.Percent(94)) {
        steps.push_back(StartOf());
    }
    if (random.Percent(90)) {
        steps.push_back(AllowListOf(RandomAllowList(words)));
    }
    if (random.Percent(60)) {
        steps.push_back(TextOf(20, RandomActions(words)));
    }
    if (random.Percent(60)) {
        steps.push_back(NumberOf(8, random.Pick({3U, 3U, 1U, 1U, 4U, 4U, 5U, 0U, 2U, 6U, 77U})));
    }
    if (random.Percent(50)) {
        steps.push_back(NumberOf(9, random.Pick({1U, 1U, 2U, 0U, 3U, 77U})));
    }
}

} // namespace

TestCase MakeCase(uint64_t seed, uint64_t number, bool logs) {
    const uint64_t start = Random(seed).Next();
    Random random(start ^ Random(number).Next());
    Vocabulary words(random);
    TestCase made;
    made.siblings = RandomSiblings(random, logs);
    AddSetUp(words, made.operations);
    for (uint32_t events = random.Between(1, 3); events > 0; --events) {
        made.operations.push_back(HandlingOf(RandomEvent(words, 0)));
        for (uint32_t steps = random.Percent(50) ? random.Between(1, 3) : 0; steps > 0; --steps) {
            if (random.Percent(40)) {
                AddLifecycleSteps(words, logs, made.operations);
            } else {
                made.operations.push_back(RandomOperationAtAnyTime(words));
            }
        }
    }
    return made;
}

} // namespace model
