#include "model/caseGenerator.h"

#include "model/documents.h"
#include "model/eventGenerator.h"
#include "model/largeCase.h"
#include "model/operations.h"

namespace model {
namespace {

SiblingState RandomSiblings(Random& random, bool logs) {
    SiblingState siblings;
    siblings.settlesLogging = !random.Percent(4);
    siblings.writesLog = logs && random.Percent(6); // otherwise Init leaves the log as it is, which is faster
    siblings.machineIdResult = random.Percent(4) ? random.Pick({1, -1}) : 0;
    siblings.machineId = random.Percent(4) ? "" : random.Pick({"HOST-A", "HOST-B", "m1"});
    return siblings;
}

// Steps of the life of the object, not of its decisions.
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

// The first steps of a host; each is missing now and then.
void AddSetUp(Vocabulary& words, bool isFirst, std::vector<Operation>& steps) {
    Random& random = words.Source();
    if (random.Percent(3)) {
        steps.push_back(RandomOperationAtAnyTime(words));
    }
    if (isFirst ? random.Percent(40) : random.Percent(97)) {
        if (!isFirst && random.Percent(60)) {
            steps.push_back(UninitOf());
        }
        steps.push_back(InitOf(random.Percent(97) ? 0 : random.Below(3)));
    }
    if (random.Percent(93)) {
        steps.push_back(SinkOf(random.Percent(92) ? 0 : 2));
    }
    if (random.Percent(94)) {
        steps.push_back(random.Percent(92) ? StartOf() : StopOf());
    }
    if (random.Percent(90)) {
        steps.push_back(AllowListOf(RandomAllowList(words)));
    }
    if (random.Percent(60)) {
        steps.push_back(TextOf(20, RandomActions(words)));
    }
    if (random.Percent(60)) {
        steps.push_back(NumberOf(8, random.Pick({3U, 3U, 3U, 3U, 1U, 1U, 4U, 4U, 5U, 0U, 2U, 6U, 77U})));
    }
    if (random.Percent(50)) {
        steps.push_back(NumberOf(9, random.Pick({1U, 1U, 2U, 0U, 3U, 77U})));
    }
}

} // namespace

TestCase MakeCase(uint64_t seed, uint64_t number, uint64_t place, bool logs) {
    const uint64_t start = Random(seed).Next();
    Random random(start ^ Random(number).Next());
    if (number % casesOfALargeOne == casesOfALargeOne / 2) {
        return LargeCase(random, logs);
    }
    Vocabulary words(random);
    TestCase made;
    made.siblings = RandomSiblings(random, logs);
    if (place < 4) {
        made.siblings.writesLog = logs; // so that the rest of the receiver's cases is logged
        made.siblings.machineIdResult = random.Percent(12) ? 1 : 0; // until it has an id, a receiver asks for it
        made.siblings.machineId = random.Percent(10) ? "" : made.siblings.machineId;
    }
    AddSetUp(words, place == 0, made.operations);
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
