// The calls that a test's host, records, sink and siblings received, in order, each as one line of text.
#pragma once

#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace hostKit {

class CallLog {
public:
    void Add(std::string call) {
        const std::lock_guard lock(m_lock);
        m_calls.push_back(std::move(call));
    }

    std::vector<std::string> All() const {
        const std::lock_guard lock(m_lock);
        return m_calls;
    }

    // All lines so far, which are taken out.
    std::vector<std::string> Take() {
        const std::lock_guard lock(m_lock);
        return std::exchange(m_calls, {});
    }

private:
    mutable std::mutex m_lock;
    std::vector<std::string> m_calls;
};

} // namespace hostKit
