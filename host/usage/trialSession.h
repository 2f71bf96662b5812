// Decides a recording several times with different allow lists.
#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "decide/decisionSession.h"
#include "policy/memoryDotStore.h"

namespace mordhost {

// At most one per process, as DecisionSession. For use by one thread.
class TrialSession {
public:
    // `policy` must outlive this. Throws LoadError, DocumentError and RunError.
    TrialSession(const Policy& policy, const SessionOptions& options);

    // Makes all dots of the policy available again, and the entries of the policy and `added` the allow list.
    void Restart(const std::vector<AllowListEntry>& added);

    // Makes the entries of the policy and `added` the allow list for the following events.
    void SetAdded(const std::vector<AllowListEntry>& added);

    // As DecisionSession.
    const Decision& Decide(ConnectionEvent&& event) { return m_session.Decide(std::move(event)); }

    // The machines of the dot of `guid` that is left, or null. Valid until the next call of another function.
    const std::set<std::string>* Machines(const std::string& guid) const { return m_dots.Machines(guid); }

private:
    // A store that can start again with all dots.
    class Dots final : public DotStore {
    public:
        explicit Dots(const DotTable& table) : m_table(table) { Restart(); }
        void Restart() { m_store.emplace(m_table); }
        const std::set<std::string>* Machines(const std::string& guid) const { return m_store->Machines(guid); }

        Result Find(const std::vector<std::string_view>& guids, std::vector<const std::string*>& dots) override {
            return m_store->Find(guids, dots);
        }
        bool Delete(const std::string& guid) noexcept override { return m_store->Delete(guid); }
        size_t Size() const override { return m_store->Size(); }
        const std::string& Trouble() const override { return m_store->Trouble(); }

    private:
        const DotTable& m_table;
        std::optional<MemoryDotStore> m_store;
    };

    const Policy& m_policy;
    Dots m_dots;
    DecisionSession m_session;
};

// An allow list with these entries, as a document for the library.
std::string AllowListText(const std::vector<AllowListEntry>& entries);

} // namespace mordhost
