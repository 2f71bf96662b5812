// A policy that this process decides by.
#pragma once

#include <filesystem>

#include "compare/policySide.h"
#include "decide/decisionSession.h"
#include "output/decisionRecord.h"
#include "policy/memoryDotStore.h"

namespace mordhost {

// At most one per process, because the library has one object.
class LocalSide final : public PolicySide {
public:
    // `policy` must outlive this. Throws as DecisionSession does.
    LocalSide(const Policy& policy, const std::filesystem::path& libraries, const std::string& hostVersion);

    void Begin(const EventBatch& batch) override { m_batch = &batch; }
    const std::vector<Brief>& Finish() override;
    const std::vector<Detail>& Details(const std::vector<size_t>& wanted) override;

private:
    void Keep(size_t index, const Decision& decision);

    const Policy& m_policy;
    MemoryDotStore m_store;
    DecisionSession m_session;
    const DecisionRecords m_records;
    const EventBatch* m_batch = nullptr;
    std::vector<Brief> m_briefs;
    ConnectionEvent m_event;           // a member, to reuse its memory
    std::vector<Decision> m_decisions; // of the batch, without events and log records; longer than it
    std::vector<Detail> m_details;
};

} // namespace mordhost
