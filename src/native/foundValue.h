// A value that is searched for until it is found.
#pragma once

#include <atomic>

// Holds an address of this process: zero until a search finds one, then constant. Constant-initialised.
//
// Any thread may call. Threads that search at the same moment find the same value, so that no order between them is
// needed: the value is atomic, so that no thread reads half of it, and carries nothing else with it.
template <typename Value>
class FoundValue {
public:
    // Returns the value. While none is known, each call runs `search`, which returns zero when it fails.
    template <typename Search>
    Value Get(const Search& search) {
        Value value = m_value.load(std::memory_order_relaxed);
        if (value == Value{}) {
            value = search();
            if (value != Value{}) {
                m_value.store(value, std::memory_order_relaxed);
            }
        }
        return value;
    }

private:
    static_assert(std::atomic<Value>::is_always_lock_free);

    std::atomic<Value> m_value{};
};
