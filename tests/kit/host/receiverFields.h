// The receiver's fields, for tests.
#pragma once

#include <atomic>
#include <mutex>
#include <string>
#include <vector>

#include "mordRev/src/mordRev.h"

struct MordRevFields {
    explicit MordRevFields(CMordRecv& object) : receiver(object) {}

    bool& Inited() const { return receiver.m_inited; }
    IDotHost*& Host() const { return receiver.m_host; }
    std::atomic<bool>& Started() const { return receiver.m_started; }
    const AllowTable& AllowedMids() const { return receiver.m_allowList.Table(); }
    void SetAllowedMids(const AllowTable& list) const {
        std::vector<AllowedPair> pairs;
        for (const auto& [protocol, mids] : list) {
            for (const std::string& mid : mids) {
                pairs.emplace_back(protocol, mid);
            }
        }
        receiver.m_allowList.Clear();
        receiver.m_allowList.Fill(pairs);
    }
    std::timed_mutex& Lock() const { return receiver.m_lock; }
    std::atomic<IReportSink*>& ReportSink() const { return receiver.m_reportSink; }
    std::string& Mid() const { return receiver.m_mid; }
    std::atomic<uint32_t>& Mode() const { return receiver.m_defenderMode; }
    std::atomic<uint32_t>& ExceptionMode() const { return receiver.m_exceptionMode; }
    ActionTable& Actions() const { return receiver.m_actionTable; }
    std::string& SpareText() const { return receiver.m_spareText; }
    int32_t ReferenceCount() const { return receiver.m_refCount; }
    bool HasMidService() const { return static_cast<bool>(receiver.m_midService); }

    CMordRecv& receiver;
};
