#include "compare/remoteSide.h"

#include <cstring>

#include "compare/eventBytes.h"
#include "decide/libraries.h"
#include "system/filePath.h"

namespace mordhost {

RemoteSide::RemoteSide(const std::filesystem::path& program) : m_process(program, {secondProcessArgument}) {}

void RemoteSide::Start(const SourceText& policy, const std::filesystem::path& libraries) {
    StartRequest(SideRequest::start);
    ByteWriter out(m_out);
    out.Put(policy.Name());
    out.Put(policy.Text());
    out.Put(Utf8Of(libraries));
    Send();
    Receive();
    ByteReader in(m_in);
    const auto answer = static_cast<StartAnswer>(in.Get<uint8_t>());
    if (answer == StartAnswer::started) {
        return;
    }
    const std::string message(in.Text());
    if (answer == StartAnswer::refused) {
        throw DocumentError(message);
    }
    if (answer == StartAnswer::notLoadable) {
        throw LoadError(message);
    }
    throw RunError(message);
}

RemoteSide::~RemoteSide() {
    constexpr std::chrono::seconds patience(3);
    m_process.CloseInput();
    m_process.WaitForEnd(patience);
}

void RemoteSide::Begin(const EventBatch& batch) {
    StartRequest(SideRequest::decide);
    ByteWriter out(m_out);
    out.Put(static_cast<uint32_t>(batch.count));
    for (size_t i = 0; i < batch.count; ++i) {
        PutEvent(out, batch.events[i]);
    }
    m_briefs.resize(batch.count);
    Send();
}

const std::vector<Brief>& RemoteSide::Finish() {
    Receive();
    ByteReader in(m_in);
    for (Brief& brief : m_briefs) {
        GetBrief(in, brief);
    }
    return m_briefs;
}

const std::vector<Detail>& RemoteSide::Details(const std::vector<size_t>& wanted) {
    StartRequest(SideRequest::details);
    ByteWriter out(m_out);
    out.Put(static_cast<uint32_t>(wanted.size()));
    for (const size_t index : wanted) {
        out.Put(static_cast<uint32_t>(index));
    }
    Send();
    Receive();
    ByteReader in(m_in);
    m_details.resize(wanted.size());
    for (Detail& detail : m_details) {
        detail.record.assign(in.Text());
        detail.setting.assign(in.Text());
        detail.missing.clear();
        for (uint32_t count = in.Get<uint32_t>(); count > 0; --count) {
            detail.missing.emplace_back(in.Text());
        }
    }
    return m_details;
}

void RemoteSide::StartRequest(SideRequest request) {
    m_out.assign(sizeof(uint32_t), '\0'); // the length, which Send writes
    m_out += static_cast<char>(request);
}

void RemoteSide::Send() {
    const auto size = static_cast<uint32_t>(m_out.size() - sizeof(uint32_t));
    std::memcpy(m_out.data(), &size, sizeof size);
    if (!m_process.Write(m_out)) {
        throw RunError("the second process of mordhost has ended");
    }
}

void RemoteSide::Receive() {
    char bytes[sizeof(uint32_t)];
    uint32_t size = 0;
    bool received = m_process.Read(bytes, sizeof bytes);
    if (received) {
        std::memcpy(&size, bytes, sizeof size);
        m_in.resize(size);
        received = m_process.Read(m_in.data(), size);
    }
    if (!received) {
        throw RunError("the second process of mordhost has ended");
    }
}

} // namespace mordhost
