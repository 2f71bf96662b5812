// A value that is cached once a search has found it.
#pragma once

#include <atomic>

// Caches an address of this process: zero until a search finds it, then constant. Constant-initialised, so that it
// works before and after the static initialisers run.
//
// Any thread may call, without a lock. Concurrent searches find the same value, so the order of their stores does not
// matter, and relaxed access suffices: the value is atomic so that no thread reads half of it, and it publishes no
// other data.
template <typename Value>
class CachedAddress {
public:
    // Returns the value. Each call runs `search` until one has found it; a search that fails returns zero, which is not
    // cached. Passes on what `search` throws.
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
