// The allow list: the table with its index, and the document that fills it.
//
// The document is organised by machine: {"mid_list": [{"mid": "MID-1", "protocol": ["KEY-1", "KEY-2"]}, …]}. The table
// is organised by protocol.
#include "mordRev/src/allowList.h"

#include <algorithm>

#include "logging/logMacros.h"
#include "mordRev/src/json.h"
#include "mordRev/src/mordRev.h"
#include "mordRev/src/seededHash.h"

// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): m_inline is set as far as there are ids
AllowQuery::AllowQuery(const std::string& protocol, MidSet mids) : m_protocol(protocol), m_mids(mids) {
    FilteredHash* pairs = m_inline.data();
    if (mids.size() > m_inline.size()) {
        m_heap.resize(mids.size());
        pairs = m_heap.data();
    }
    const uint32_t protocolHash = AllowList::HashOfProtocol(protocol);
    std::transform(mids.begin(), mids.end(), pairs,
                   [protocolHash](std::string_view mid) { return AllowList::HashOfPair(protocolHash, mid); });
    m_pairs = pairs;
}

uint32_t AllowList::HashOfProtocol(const std::string& protocol) {
    return HashText(protocol, ProcessHashKeys().protocol);
}

FilteredHash AllowList::HashOfPair(uint32_t protocolHash, std::string_view mid) {
    return FilteredHash(protocolHash ^ HashText(mid, ProcessHashKeys().mid));
}

// Inserts in the order of the table, so that each element goes behind the last one without a comparison.
void AllowList::Fill(std::vector<AllowedPair>& pairs) {
    std::sort(pairs.begin(), pairs.end());
    const auto end = std::unique(pairs.begin(), pairs.end());
    const auto count = static_cast<size_t>(end - pairs.begin());
    m_pairs.reserve(count);
    m_index.Reserve(count);

    auto entry = m_table.end();
    uint32_t protocolHash = 0;
    for (auto pair = pairs.begin(); pair != end; ++pair) {
        auto place = AllowedMids::iterator();
        if (entry == m_table.end() || entry->first != pair->Protocol()) {
            AllowedMids first;
            place = first.emplace(pair->Mid()).first;
            entry = m_table.emplace_hint(m_table.end(), pair->Protocol(), std::move(first));
            protocolHash = HashOfProtocol(entry->first);
        } else {
            place = entry->second.emplace_hint(entry->second.end(), pair->Mid());
        }
        m_index.Add(HashOfPair(protocolHash, pair->Mid()), static_cast<uint32_t>(m_pairs.size()));
        m_pairs.push_back({&entry->second, &*place});
    }
}

void AllowList::Clear() noexcept {
    m_table.clear();
    m_index.Clear();
    m_pairs = std::vector<Pair>(); // not {}, which would keep the memory
}

const std::string* AllowList::Match(const AllowQuery& query) const {
    // Most ids are not in the list, and most queries end here. The loop takes the same few steps for every id: a longer
    // hold of the receiver's lock puts other threads to sleep more often.
    bool mayMatch = false;
    for (size_t i = 0; i < query.m_mids.size(); ++i) {
        mayMatch |= m_index.MayHold(query.m_pairs[i]);
    }
    const auto allowed = mayMatch ? m_table.find(query.m_protocol) : m_table.end();
    if (allowed == m_table.end()) {
        return nullptr;
    }
    const std::string* match = nullptr;
    for (size_t i = 0; i < query.m_mids.size(); ++i) {
        const uint32_t found = m_index.Find(query.m_pairs[i], [&](uint32_t number) {
            return m_pairs[number].mids == &allowed->second && *m_pairs[number].mid == query.m_mids[i];
        });
        if (found != HashIndex::none && (match == nullptr || *m_pairs[found].mid < *match)) {
            match = m_pairs[found].mid;
        }
    }
    return match;
}

namespace {

// Appends the pairs of one entry of "mid_list". Skips an entry without a string "mid" and an array "protocol", and
// every element of "protocol" that is not a string.
void AppendEntry(std::vector<AllowedPair>& pairs, const JsonValue& entry) {
    const JsonValue* const mid = FindMember(entry, "mid");
    if (mid == nullptr || !mid->IsString()) {
        return;
    }
    const JsonValue* const protocols = FindMember(entry, "protocol");
    if (protocols == nullptr || !protocols->IsArray()) {
        return;
    }
    for (const JsonValue& protocol : protocols->GetArray()) {
        if (protocol.IsString()) {
            const std::string_view key = protocol.GetString(); // up to its first NUL, like the machine id
            // Pairs of one key share its text, which makes their comparison faster.
            const bool isSame = !pairs.empty() && pairs.back().Protocol() == key;
            pairs.emplace_back(isSame ? pairs.back().Protocol() : key, mid->GetString());
        }
    }
}

} // namespace

bool CMordRecv::SetAllowList(const char* text) {
    const std::lock_guard lock(m_lock);
    std::string copy = text == nullptr ? "" : text; // parsed in place; a null text is refused like an empty one
    JsonDocument document;
    const auto parsed = ParseJsonInPlace(document, copy.data(), copy.size());
    const JsonValue* const midList = parsed.IsError() ? nullptr : FindMember(document, "mid_list");
    if (parsed.IsError()) {
        LOG_ERROR(WIDE("error_code") << static_cast<uint32_t>(parsed.Code()) << WIDE("error_offset")
                                     << static_cast<uint32_t>(parsed.Offset()));
    } else if (midList == nullptr) {
        LOG_ERROR(WIDE("format error"));
    } else {
        m_allowList.Clear(); // the old list is lost from here on, by design
        if (!midList->IsArray()) {
            LOG_TRACE(WIDE("mid list is empty")); // sic: a value of another kind logs this, an empty array does not
        } else {
            std::vector<AllowedPair> pairs; // views of texts in the document
            pairs.reserve(midList->Size());
            for (const JsonValue& entry : midList->GetArray()) {
                AppendEntry(pairs, entry);
            }
            m_allowList.Fill(pairs);
        }
    }
    const bool result = midList != nullptr;
    LOG_TRACE(WIDE("parse allow list, ret") << result);
    return result;
}

bool CMordRecv::ClearAllowList() {
    const std::lock_guard lock(m_lock);
    LOG_TRACE(WIDE("ClearAllowList_mids start"));
    m_allowList.Clear();
    return true;
}
