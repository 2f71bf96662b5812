#include "model/documents.h"

#include <algorithm>

#include "model/jsonText.h"

namespace model {
namespace {

// `members` as the root of a document, in any order; or, rarely, another root, a spoiled text or none at all.
std::string Document(Random& random, JsonText& json, std::vector<std::string> members) {
    const uint32_t kind = random.Below(100);
    if (kind < 2) {
        return BlankText(random);
    }
    if (kind < 4) {
        std::string text = json.Space();
        text += json.ValueButNot('{');
        return text;
    }
    std::string text = json.Space();
    text += Enclosed(json, '{', members, '}');
    text += json.Space();
    return kind < 11 ? Spoiled(random, text) : text;
}

void Shuffle(Random& random, std::vector<std::string>& items) {
    for (size_t i = items.size(); i > 1; --i) {
        std::swap(items[i - 1], items[random.Below(static_cast<uint32_t>(i))]);
    }
}

// A member beside those that belong there, or one of them a second time.
std::string SpareMember(Random& random, JsonText& json, std::initializer_list<const char*> known) {
    const char* const name = random.Pick(known);
    return json.Member(name, json.AnyValue());
}

// `most` or less, and rarely none.
uint32_t Few(Random& random, uint32_t most) {
    return random.Percent(6) ? 0 : random.Between(1, most);
}

std::string AllowListEntry(Vocabulary& words, JsonText& json) {
    Random& random = words.Source();
    if (random.Percent(4)) {
        return json.ValueButNot('{');
    }
    std::vector<std::string> members;
    if (!random.Percent(3)) {
        members.push_back(json.Member("mid", random.Percent(4) ? json.ValueButNot('"') : json.Quoted(words.Mid())));
    }
    if (!random.Percent(3)) {
        std::vector<std::string> keys;
        for (uint32_t count = Few(random, 4); count > 0; --count) {
            keys.push_back(random.Percent(5) ? json.ValueButNot('"') : json.Quoted(words.DocumentKey()));
        }
        members.push_back(
            json.Member("protocol", random.Percent(4) ? json.ValueButNot('[') : Enclosed(json, '[', keys, ']')));
    }
    while (random.Percent(9)) {
        members.push_back(SpareMember(random, json, {"mid", "protocol", "Mid", "note", ""}));
    }
    Shuffle(random, members);
    return Enclosed(json, '{', members, '}');
}

std::string MidsOfRule(Vocabulary& words, JsonText& json) {
    Random& random = words.Source();
    std::vector<std::string> members;
    for (uint32_t count = Few(random, 4); count > 0; --count) {
        const std::string mid = words.Mid();
        members.push_back(json.Member(mid, random.Percent(80) ? "1" : json.AnyValue()));
    }
    return Enclosed(json, '{', members, '}');
}

std::string AnswerForRule(Vocabulary& words, JsonText& json) {
    Random& random = words.Source();
    if (random.Percent(3)) {
        return json.ValueButNot('{');
    }
    std::vector<std::string> members;
    if (!random.Percent(3)) {
        const uint32_t kind = random.Below(100);
        members.push_back(json.Member("value", kind < 4    ? json.ValueButNot('0')
                                               : kind < 12 ? json.Zero()
                                                           : json.GoodNumber()));
    }
    if (!random.Percent(3)) {
        members.push_back(json.Member("mid", random.Percent(3) ? json.ValueButNot('{') : MidsOfRule(words, json)));
    }
    while (random.Percent(9)) {
        members.push_back(SpareMember(random, json, {"mid", "value", "Value", "note", ""}));
    }
    Shuffle(random, members);
    return Enclosed(json, '{', members, '}');
}

} // namespace

std::string RandomAllowList(Vocabulary& words) {
    Random& random = words.Source();
    JsonText json(random);
    std::vector<std::string> entries;
    for (uint32_t count = Few(random, 6); count > 0; --count) {
        entries.push_back(AllowListEntry(words, json));
    }
    std::vector<std::string> members;
    if (!random.Percent(3)) {
        members.push_back(
            json.Member("mid_list", random.Percent(4) ? json.ValueButNot('[') : Enclosed(json, '[', entries, ']')));
    }
    while (random.Percent(9)) {
        members.push_back(SpareMember(random, json, {"mid_list", "Mid_list", "mid", ""}));
    }
    Shuffle(random, members);
    return Document(random, json, members);
}

std::string RandomActions(Vocabulary& words) {
    Random& random = words.Source();
    JsonText json(random);
    std::vector<std::string> members;
    for (uint32_t count = Few(random, 5); count > 0; --count) {
        const std::string key = words.DocumentType();
        const uint32_t kind = random.Below(100);
        members.push_back(json.Member(key, kind < 12   ? json.ValueButNot('0')
                                           : kind < 40 ? json.Zero()
                                                       : json.GoodNumber()));
    }
    return Document(random, json, members);
}

std::string RandomAnswer(Vocabulary& words, const std::vector<std::string>& guids) {
    Random& random = words.Source();
    JsonText json(random);
    std::vector<std::string> members;
    for (uint32_t count = Few(random, 5); count > 0; --count) {
        const std::string guid = random.Percent(70) ? random.Pick(guids) : words.DocumentGuid();
        const std::string value = AnswerForRule(words, json);
        members.push_back(json.Member(guid, value));
    }
    return Document(random, json, members);
}

} // namespace model
