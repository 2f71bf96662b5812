// What a dot store holds for the rules of an event.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "policy/dotStore.h"

namespace mordhost {

// Passes all calls on to a store and remembers the answer to the last query. For use by one thread.
class HeldDots final : public DotStore {
public:
    // Does not own the store.
    explicit HeldDots(DotStore& store) : m_store(store) {}

    Result Find(const std::vector<std::string_view>& guids, std::vector<const std::string*>& dots) override;
    bool Delete(const std::string& guid) noexcept override { return m_store.Delete(guid); }
    size_t Size() const override { return m_store.Size(); }
    const std::string& Trouble() const override { return m_store.Trouble(); }

    // Forgets the last answer. Call it before each event: an event need not cause a query.
    void Forget() { m_wasAsked = false; }

    // Whether the store was asked, and answered, since the last Forget.
    bool WasAsked() const { return m_wasAsked; }

    // The machine ids of the dot of `guid` in the last answer, in the order of the store; none without a dot.
    std::vector<std::string> MachinesOf(const std::string& guid) const;

private:
    DotStore& m_store;
    bool m_wasAsked = false;
    std::vector<std::pair<std::string, std::string>> m_dots; // guid and DotValue; longer than m_count, to reuse memory
    size_t m_count = 0;
};

} // namespace mordhost
