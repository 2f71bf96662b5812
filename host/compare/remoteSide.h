// A policy that a second process decides by.
#pragma once

#include <filesystem>

#include "compare/policySide.h"
#include "compare/sideMessages.h"
#include "document/sourceText.h"
#include "system/childProcess.h"

namespace mordhost {

class RemoteSide final : public PolicySide {
public:
    // Starts `program`, a mordhost. Throws RunError.
    explicit RemoteSide(const std::filesystem::path& program);

    // Passes the policy and the directory of the libraries to the second process. Call it before the first batch. A
    // second call replaces the policy, but the library keeps what the new one does not set. Throws RunError, and the
    // DocumentError or LoadError of the second process.
    void Start(const SourceText& policy, const std::filesystem::path& libraries);

    // Waits until the second process has removed its temporary directory.
    ~RemoteSide() override;

    void Begin(const EventBatch& batch) override;
    const std::vector<Brief>& Finish() override;
    const std::vector<Detail>& Details(const std::vector<size_t>& wanted) override;

private:
    void StartRequest(SideRequest request);
    void Send();
    void Receive();

    ChildProcess m_process;
    std::string m_out; // members, to reuse their memory
    std::string m_in;
    std::vector<Brief> m_briefs;
    std::vector<Detail> m_details;
};

} // namespace mordhost
