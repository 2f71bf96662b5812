#include "model/eventGenerator.h"

#include "model/documents.h"
#include "model/operations.h"

namespace model {
namespace {

// `value` as a record delivers it: usually by the contract, otherwise with a violation. A text without a NUL fills its
// buffer completely, so nobody reads undefined bytes after a shorter text.
void AddText(Random& random, RecordScript& record, const char* key, const std::string& value) {
    TextScript text = DeliveredText(value);
    const auto size = static_cast<int32_t>(value.size());
    switch (random.Below(80)) {
    case 0:
        return; // absent
    case 1:
        text.firstResult = random.Pick({0, 1, -1, 200, 202});
        break;
    case 2:
        text.firstSize = random.Pick({0, -1, INT32_MIN});
        break;
    case 3:
        text.secondResult = random.Pick({1, -1, 201});
        break;
    case 4: // without its NUL
        if (size > 0) {
            text.bytes = value;
            text.firstSize = size;
        }
        break;
    case 5: // a size that is too small
        if (size > 0) {
            text.firstSize = static_cast<int32_t>(random.Between(1, static_cast<uint32_t>(size)));
        }
        break;
    case 6: // a size that is too large
        text.firstSize += static_cast<int32_t>(random.Between(1, 2000));
        break;
    case 7: // a NUL inside
        text.bytes = value + '\0' + "more" + '\0';
        text.firstSize = static_cast<int32_t>(text.bytes.size());
        break;
    case 8:
        text.secondSize = random.Pick({0, -1, 1, 100000, INT32_MAX});
        break;
    default:
        break;
    }
    record.texts[key] = text;
}

void AddNumber(Random& random, RecordScript& record, const char* key, int64_t value) {
    NumberScript number;
    number.value = value;
    switch (random.Below(25)) {
    case 0:
        return; // absent
    case 1:
        number.result = random.Pick({1, -1, 201});
        break;
    case 2:
        number.result = 1;
        number.writes = false;
        break;
    default:
        break;
    }
    record.numbers[key] = number;
}

int32_t RandomFlags(Random& random) {
    const uint32_t kind = random.Below(100);
    if (kind < 45) {
        return random.Pick({0, 0, 0, 1, 2, 8, 0x20});
    }
    if (kind < 78) {
        return 0x10;
    }
    if (kind < 92) {
        return random.Pick({4, 0x14, 5, 0x1F});
    }
    return static_cast<int32_t>(static_cast<uint32_t>(random.Next()));
}

RecordScript RandomEventRecord(Vocabulary& words) {
    Random& random = words.Source();
    RecordScript record;
    AddNumber(random, record, "flags", RandomFlags(random));
    // The system process, and ids that no process has.
    AddNumber(random, record, "pid", random.Pick({4, 4, 0, 0, -1}));
    AddText(random, record, "remote_addr_ip", words.Address());
    AddNumber(random, record, "remote_addr_port", random.Pick({0, 445, 49152, 65535, -1, INT32_MIN}));
    AddText(random, record, "local_addr_ip", words.Address());
    AddNumber(random, record, "local_addr_port", random.Pick({0, 445, 49152, 65535, -1, INT32_MAX}));
    AddNumber(random, record, "net_drv",
              random.Pick({int64_t{0}, int64_t{20001}, int64_t{-5}, int64_t{1} << 40, INT64_MAX, INT64_MIN}));
    return record;
}

void RandomQuery(Vocabulary& words, EventScript& event, const std::vector<std::string>& guids) {
    Random& random = words.Source();
    const uint32_t kind = random.Below(100);
    if (kind < 10) {
        event.queryResult = 1007;
    } else if (kind < 16) {
        event.queryResult = random.Pick({1, -1, 1006, 1008, 201, INT32_MIN});
    }
    const uint32_t nulls = event.queryResult == 0 ? 4 : 50;
    if (!random.Percent(nulls)) {
        event.answer = RandomAnswer(words, guids);
    }
    event.deleteResult = random.Pick({0, 0, 0, 1, -1, 1007});
    event.freeResult = random.Pick({0, 1});
    event.reportResult = random.Pick({0, 0, 1, -1});
}

// Operations that only a host may run during a call to it, in addition to the others. It does not replace itself.
Operation RandomCallFromWithin(Random& random) {
    switch (random.Below(6)) {
    case 0:
        return UninitOf();
    case 1:
        return SinkOf(random.Below(3));
    case 2:
        return ReadingOf(8);
    case 3:
        return TextOf(6, random.Pick({"", "OTHER", "m1"}));
    case 4:
        return NullDataOf(8);
    default:
        return NumberOf(7, 1);
    }
}

void RandomMeddling(Vocabulary& words, EventScript& event) {
    Random& random = words.Source();
    for (auto* const operations : {&event.duringQuery, &event.duringFree, &event.duringDelete, &event.duringReport}) {
        if (!random.Percent(40)) {
            continue;
        }
        for (uint32_t count = random.Between(1, 2); count > 0; --count) {
            if (random.Percent(12)) {
                operations->push_back(HandlingOf(RandomEvent(words, 1)));
            } else if (random.Percent(25)) {
                operations->push_back(RandomCallFromWithin(random));
            } else {
                operations->push_back(RandomOperationAtAnyTime(words));
            }
        }
    }
}

} // namespace

EventScript RandomEvent(Vocabulary& words, int depth) {
    Random& random = words.Source();
    EventScript event;
    event.event = RandomEventRecord(words);
    std::vector<std::string> guids;
    const uint32_t mostRules = random.Percent(70) ? 3 : words.IsLarge() ? 40 : 6;
    for (uint32_t count = random.Between(1, mostRules); count > 0; --count) {
        const std::string guid = words.Guid();
        const std::string type = words.Type();
        guids.push_back(guid);
        RecordScript& rule = event.rules.emplace_back();
        AddText(random, rule, "guid", guid);
        AddText(random, rule, "type", type);
    }
    event.replyBefore = random.Pick({0U, 1U, 2U, 0xDEADBEEFU});
    RandomQuery(words, event, guids);
    switch (random.Below(depth == 0 ? 120 : 1000)) {
    case 0:
        event.nullReply = true;
        break;
    case 1:
        event.nullEvent = true;
        break;
    case 2:
        event.nullRules = true;
        break;
    case 3:
        event.noRules = true;
        break;
    case 4: // several at once
        event.nullReply = random.Percent(30);
        event.nullEvent = random.Percent(50);
        event.nullRules = random.Percent(50);
        event.noRules = random.Percent(50);
        break;
    default:
        break;
    }
    if (depth == 0 && random.Percent(6)) {
        RandomMeddling(words, event);
    }
    return event;
}

Operation RandomOperationAtAnyTime(Vocabulary& words) {
    Random& random = words.Source();
    switch (random.Below(8)) {
    case 0:
    case 1:
        return NumberOf(8, random.Pick({3U, 3U, 3U, 1U, 1U, 4U, 4U, 5U, 0U, 2U, 6U, 77U, 0xFFFFFFFFU}));
    case 2:
        return NumberOf(9, random.Pick({1U, 1U, 1U, 2U, 0U, 3U, 77U, 0xFFFFFFFFU}));
    case 3:
        return TextOf(20, RandomActions(words));
    case 4:
    case 5:
        return AllowListOf(RandomAllowList(words));
    case 6:
        return ClearingOf();
    default:
        return random.Percent(60) ? StartOf() : StopOf();
    }
}

} // namespace model
