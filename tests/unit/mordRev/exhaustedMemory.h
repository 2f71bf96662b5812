// Memory that runs out: each allocation of an operation fails in turn, alone and for good, until the operation passes.
// std::bad_alloc passes out of the operation, and everything is as it must be afterwards.
#pragma once

#include <initializer_list>
#include <mutex>
#include <new>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "kit/heap/countedHeap.h"

namespace exhausted {

// Longer than any string keeps without an allocation.
inline const std::string longText = "a text that is too long to be kept without an allocation: ";

// How an operation ended of which an allocation failed.
struct Failure {
    bool thrown; // as std::bad_alloc
    kit::AllocationKind kind;
    bool lasting;
};

// Without records every failure passes out, but that of the one allocation that must not throw.
inline void ExpectThrown(const Failure& failure) {
    if (failure.kind != kit::AllocationKind::Calloc) {
        EXPECT_TRUE(failure.thrown);
    } else if (!failure.lasting) {
        EXPECT_FALSE(failure.thrown);
    }
}

// What the runtime itself has to allocate once, on Windows: the receiver's lock at its first use, and the lock of the
// reserve from which exceptions are taken when there is no memory for them. Without the latter the runtime cannot
// throw.
inline void WarmUp(std::timed_mutex& lock) {
    const std::lock_guard first(lock);
    try {
        const kit::FailingAllocations failing(1, false);
        throw std::bad_alloc();
    } catch (const std::bad_alloc&) {
        return;
    }
}

// Lets the `nth` allocation of `operation` fail, and all further ones with `lasting`. The kind is None when it did not
// come to that.
template <typename Operation>
Failure FailOne(size_t nth, bool lasting, const Operation& operation) {
    Failure failure{false, kit::AllocationKind::None, lasting};
    kit::FailingAllocations failing(nth, lasting);
    try {
        operation();
    } catch (const std::bad_alloc&) {
        failure.thrown = true;
    }
    failing.Stop();
    failure.kind = failing.Failed();
    return failure;
}

// The whole sweep, of failures alone and of lasting ones as `ways` tells. `before` puts everything into its first
// state, which holds the same memory each time: what a failure left behind would be seen there. `lock` must be free
// after each failure; `after` is told how the operation ended. Returns how many failures there were.
template <typename Operation, typename Before, typename After>
size_t Sweep(std::timed_mutex& lock, const Operation& operation, const Before& before, const After& after,
             std::initializer_list<bool> ways = {false, true}) {
    size_t failures = 0;
    for (const bool lasting : ways) {
        long held = 0;
        for (size_t nth = 1; nth < 100000; ++nth) {
            before();
            if (nth == 2) {
                held = kit::BlocksHeld(); // the first round has warmed up what is kept for good
            } else if (nth > 2) {
                EXPECT_EQ(kit::BlocksHeld(), held) << "held after allocation " << nth - 1 << " had failed";
            }
            const Failure failure = FailOne(nth, lasting, operation);
            EXPECT_TRUE(lock.try_lock());
            lock.unlock();
            if (failure.kind == kit::AllocationKind::None) {
                break;
            }
            ++failures;
            SCOPED_TRACE("allocation " + std::to_string(nth) + (lasting ? " and all further" : " alone"));
            after(failure);
            if (testing::Test::HasFailure()) {
                return failures;
            }
        }
    }
    std::thread([&lock] {
        EXPECT_TRUE(lock.try_lock()) << "for another thread";
        lock.unlock();
    }).join();
    return failures;
}

} // namespace exhausted
