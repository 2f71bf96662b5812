// The host's answer to a query, as it stands in the text: {"GUID": {"value": 1, "mid": {"MID-1": …, "MID-2": …}}, …}.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// What an answer says of one rule: a member of the root.
struct AnsweredRule {
    enum class Value { malformed, zero, good }; // malformed: missing, or no number that fits 32 signed bits

    // The members of "mid", which stand side by side in QueryAnswer::mids.
    struct Mids {
        size_t first;
        size_t count;
    };

    std::string_view guid;
    Value value = Value::malformed;
    std::optional<Mids> mids = std::nullopt; // none: "mid" is missing, or no object
};

// Owns the text that the views point into, and so must stay where it is. A NUL stands behind each of these texts.
struct QueryAnswer {
    explicit QueryAnswer(std::string document) : text(std::move(document)) {}
    QueryAnswer(const QueryAnswer&) = delete;
    QueryAnswer& operator=(const QueryAnswer&) = delete;

    // Reads `text` up to its first NUL and destroys it on the way. False when it is no JSON. A root that is no object
    // is one without members. Of the members of a rule with the same name the first counts.
    bool Read();

    std::string text;
    std::vector<AnsweredRule> rules;    // in document order, which is also that of mids
    std::vector<std::string_view> mids; // of all rules
};
