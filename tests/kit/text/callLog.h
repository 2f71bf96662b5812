// The calls that a test's host, records, sink and siblings received, in order, each as one line of text.
#pragma once

#include <functional>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace kit {

class CallLog {
public:
    // Called for each line before it is kept, on the thread that made the call: a test looks at the state of that
    // moment, or delays the call. Set while nothing calls.
    std::function<void(const std::string& call)> onAdd;

    void Add(std::string call) {
        if (onAdd) {
            onAdd(call);
        }
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

} // namespace kit
