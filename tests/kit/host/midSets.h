// Machine ids as tests hand them to the tables of an answer, and look at them.
#pragma once

#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "mordRev/src/queryResultTable.h"

namespace kit {

// The ids of an entry as texts of their own.
inline std::set<std::string> TextsOf(MidSet mids) {
    return {mids.begin(), mids.end()};
}

// Owns texts, and the views of them that a table takes.
struct OwnedMids {
    OwnedMids(std::string guidText, std::vector<std::string> midTexts)
        : guid(std::move(guidText)), texts(std::move(midTexts)), views(texts.begin(), texts.end()) {}
    OwnedMids(const OwnedMids&) = delete;
    OwnedMids& operator=(const OwnedMids&) = delete;

    const std::string guid;
    const std::vector<std::string> texts;
    const std::vector<std::string_view> views;
};

// Adds an entry as an answer does.
inline void InsertMids(QueryResultTable& table, std::string guid, std::vector<std::string> mids) {
    const auto owned = std::make_shared<const OwnedMids>(std::move(guid), std::move(mids));
    table.Insert(owned->guid, owned->views, owned);
}

// For operations that take ids: IsMatchmid(key, Views({"A", "B"}).views, …). They are good as long as the object.
inline OwnedMids Views(std::vector<std::string> mids) {
    return {std::string(), std::move(mids)};
}

} // namespace kit
