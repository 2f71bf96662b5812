// The host's answer to a query.
#pragma once

#include <string>
#include <utility>

#include "frame/interfaces.h"

// Owns the buffer that IDotHost::QueryDot delivers, null or not. It goes back to the host by GiveBack, unless it is
// kept; where an exception passes before either, the end of the scope gives it back.
class DotAnswer {
public:
    explicit DotAnswer(IDotHost* host) : m_host(host) {}
    ~DotAnswer() { GiveBack(); }
    DotAnswer(const DotAnswer&) = delete;
    DotAnswer& operator=(const DotAnswer&) = delete;

    // Where QueryDot stores its answer; null before.
    char** Out() { return &m_text; }
    const char* Text() const { return m_text; }

    // The text, which must not be null, for a reader that outlives the buffer.
    std::string Copy() const;

    // Calls FreeResult, once in the life of the object: a host that throws there is not asked again. Its exception
    // passes; at the end of the scope it ends the process.
    void GiveBack() {
        char* const text = std::exchange(m_text, nullptr);
        if (IDotHost* const host = std::exchange(m_host, nullptr)) {
            host->FreeResult(text);
        }
    }

    // The buffer never goes back.
    void Keep() { m_host = nullptr; }

private:
    IDotHost* m_host;
    char* m_text = nullptr;
};
