// Keyed hashes of texts from outside.
//
// An attacker can write answers and allow lists that slow down the tables over them. The hash is a keyed,
// collision-resistant one: without the key nobody can prepare colliding texts. Two given texts of up to 64 bytes
// collide for about one key in 10^9. Each process draws its own keys.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

// The key of one hash function. Random bits; `last` is odd.
struct HashKey {
    std::array<uint32_t, 16> words; // one for each word of a block
    std::array<uint32_t, 2> length;
    std::array<uint32_t, 2> chain;
    uint64_t last; // odd
};

// Returns the hash of `text`. The high bits are the most random: a table with a power of two as size must index with
// them. Pure; any thread may call.
uint32_t HashText(std::string_view text, const HashKey& key);

// The keys of the process, one for each kind of text, so that the exclusive or of two hashes of different kinds is a
// hash of both.
struct HashKeys {
    HashKey mid;
    HashKey protocol;
    HashKey guid;
};

// Draws keys from the system's random source (platform::FillRandom). If that fails, derives them from the clocks, the
// thread and addresses of the process instead. Such keys still differ between processes and calls, but an attacker who
// knows the machine can guess them and prepare slow texts. Decisions never depend on the keys. The fallback is not
// logged. Any thread may call.
HashKeys DrawHashKeys() noexcept;

// Returns the keys of the process. The first call, from the constructor of the receiver, draws them; they never change.
// Any thread may call.
const HashKeys& ProcessHashKeys() noexcept;
