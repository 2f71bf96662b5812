// The host's answer to a query.
#pragma once

#include "frame/interfaces.h"

// Owns the buffer that IDotHost::QueryDot delivers. It goes back to the host through FreeResult, null or not, when the
// scope ends or earlier by GiveBack, unless it is kept.
class DotAnswer {
public:
    explicit DotAnswer(IDotHost* host) : m_host(host) {}
    ~DotAnswer() { GiveBack(); }
    DotAnswer(const DotAnswer&) = delete;
    DotAnswer& operator=(const DotAnswer&) = delete;

    // Where QueryDot stores its answer; null before.
    char** Out() { return &m_text; }
    const char* Text() const { return m_text; }

    void GiveBack() {
        if (m_host != nullptr) {
            m_host->FreeResult(m_text);
        }
        Keep();
    }

    // The buffer never goes back.
    void Keep() {
        m_host = nullptr;
        m_text = nullptr;
    }

private:
    IDotHost* m_host;
    char* m_text = nullptr;
};
