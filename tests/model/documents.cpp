#include "model/documents.h"

#include <array>
#include <utility>

#include "model/jsonText.h"

namespace model {
namespace {

// The members of an object in any order: required ones and, as `spare`, additional ones.
class Members {
public:
    static constexpr uint32_t spare = 100;

    void Add(uint32_t member) {
        if (m_count < m_members.size()) {
            m_members[m_count++] = member;
        }
    }
    void AddSpares(Random& random, uint32_t percent) {
        while (random.Percent(percent)) {
            Add(spare);
        }
    }
    void Shuffle(Random& random) {
        for (uint32_t i = m_count; i > 1; --i) {
            std::swap(m_members[i - 1], m_members[random.Below(i)]);
        }
    }

    uint32_t Count() const { return m_count; }
    uint32_t operator[](uint32_t place) const { return m_members[place]; }

private:
    std::array<uint32_t, 12> m_members{};
    uint32_t m_count = 0;
};

// A document with the root object that `root` writes; rarely another root, a malformed text or an empty one.
template <typename Root>
std::string Document(Random& random, const Root& root) {
    const uint32_t kind = random.Below(100);
    if (kind < 2) {
        return BlankText(random);
    }
    std::string text;
    text.reserve(400);
    JsonText json(random, text);
    json.Space();
    if (kind < 4) {
        json.ValueButNot('{');
        return text;
    }
    root(json);
    json.Space();
    return kind < 11 ? Spoiled(random, std::move(text)) : text;
}

// An additional member, or a duplicate of a required one.
void SpareMember(Random& random, JsonText& json, std::initializer_list<const char*> known) {
    json.Name(random.Pick(known));
    json.AnyValue();
}

// `most` or less, and rarely none.
uint32_t Few(Random& random, uint32_t most) {
    return random.Percent(6) ? 0 : random.Between(1, most);
}

// The same for large documents.
uint32_t FewOrMany(Vocabulary& words, uint32_t most, uint32_t many) {
    Random& random = words.Source();
    return words.IsLarge() && random.Percent(60) ? random.Between(most, many) : Few(random, most);
}

void AllowListEntry(Vocabulary& words, JsonText& json) {
    Random& random = words.Source();
    if (random.Percent(4)) {
        json.ValueButNot('{');
        return;
    }
    enum { Mid, Protocol };
    Members members;
    if (!random.Percent(3)) {
        members.Add(Mid);
    }
    if (!random.Percent(3)) {
        members.Add(Protocol);
    }
    members.AddSpares(random, 9);
    members.Shuffle(random);
    json.Enclosed('{', members.Count(), '}', [&](uint32_t place) {
        if (members[place] == Mid) {
            json.Name("mid");
            if (random.Percent(4)) {
                json.ValueButNot('"');
            } else {
                json.Quoted(words.Mid());
            }
        } else if (members[place] == Protocol) {
            json.Name("protocol");
            if (random.Percent(4)) {
                json.ValueButNot('[');
                return;
            }
            json.Enclosed('[', FewOrMany(words, 4, 12), ']', [&](uint32_t) {
                if (random.Percent(5)) {
                    json.ValueButNot('"');
                } else {
                    json.Quoted(words.DocumentKey());
                }
            });
        } else {
            SpareMember(random, json, {"mid", "protocol", "Mid", "note", ""});
        }
    });
}

void MidsOfRule(Vocabulary& words, JsonText& json) {
    Random& random = words.Source();
    const uint32_t count = words.IsLarge() && random.Percent(15) ? random.Between(120, 400) : Few(random, 4);
    json.Enclosed('{', count, '}', [&](uint32_t) {
        json.Name(words.Mid());
        if (random.Percent(80)) {
            json.GoodNumber();
        } else {
            json.AnyValue();
        }
    });
}

void AnswerForRule(Vocabulary& words, JsonText& json) {
    Random& random = words.Source();
    if (random.Percent(3)) {
        json.ValueButNot('{');
        return;
    }
    enum { Value, Mid };
    Members members;
    if (!random.Percent(3)) {
        members.Add(Value);
    }
    if (!random.Percent(3)) {
        members.Add(Mid);
    }
    members.AddSpares(random, 9);
    members.Shuffle(random);
    json.Enclosed('{', members.Count(), '}', [&](uint32_t place) {
        if (members[place] == Value) {
            json.Name("value");
            const uint32_t kind = random.Below(100);
            if (kind < 4) {
                json.ValueButNot('0');
            } else if (kind < 12) {
                json.Zero();
            } else {
                json.GoodNumber();
            }
        } else if (members[place] == Mid) {
            json.Name("mid");
            if (random.Percent(3)) {
                json.ValueButNot('{');
            } else {
                MidsOfRule(words, json);
            }
        } else {
            SpareMember(random, json, {"mid", "value", "Value", "note", ""});
        }
    });
}

// Without a fault: most faults end the scan of the answer, so few large ones would be read.
void GoodAnswerForRule(Vocabulary& words, JsonText& json) {
    json.Enclosed('{', 2, '}', [&](uint32_t place) {
        if (place == 0) {
            json.Name("value");
            json.GoodNumber();
        } else {
            json.Name("mid");
            MidsOfRule(words, json);
        }
    });
}

} // namespace

std::string RandomAllowList(Vocabulary& words) {
    Random& random = words.Source();
    return Document(random, [&](JsonText& json) {
        enum { MidList };
        Members members;
        if (!random.Percent(3)) {
            members.Add(MidList);
        }
        members.AddSpares(random, 9);
        members.Shuffle(random);
        json.Enclosed('{', members.Count(), '}', [&](uint32_t place) {
            if (members[place] != MidList) {
                SpareMember(random, json, {"mid_list", "Mid_list", "mid", ""});
                return;
            }
            json.Name("mid_list");
            if (random.Percent(4)) {
                json.ValueButNot('[');
            } else {
                json.Enclosed('[', FewOrMany(words, 6, 60), ']', [&](uint32_t) { AllowListEntry(words, json); });
            }
        });
    });
}

std::string RandomActions(Vocabulary& words) {
    Random& random = words.Source();
    return Document(random, [&](JsonText& json) {
        json.Enclosed('{', Few(random, 5), '}', [&](uint32_t) {
            json.Name(words.DocumentType());
            const uint32_t kind = random.Below(100);
            if (kind < 6) {
                json.AnyValue();
            } else if (kind < 13) {
                json.ValueButNot('0');
            } else if (kind < 40) {
                json.Zero();
            } else {
                json.GoodNumber();
            }
        });
    });
}

std::string RandomAnswer(Vocabulary& words, const std::vector<std::string>& guids) {
    Random& random = words.Source();
    return Document(random, [&](JsonText& json) {
        json.Enclosed('{', FewOrMany(words, 5, 40), '}', [&](uint32_t) {
            json.Name(random.Percent(words.IsLarge() ? 20 : 70) ? random.Pick(guids) : words.DocumentGuid());
            if (words.IsLarge() && !random.Percent(5)) {
                GoodAnswerForRule(words, json);
            } else {
                AnswerForRule(words, json);
            }
        });
    });
}

} // namespace model
