// Hashes of texts that come from outside.
//
// Answers and allow lists may be written by whoever wants the tables over them to be slow. The hash is of a kind that
// leaves no way to prepare texts that collide for whoever does not know its key: of all keys, about one in a
// thousand million lets two given texts of up to 64 bytes collide. Each process draws its keys for itself.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

struct HashKey {
    std::array<uint32_t, 16> words; // one for each word of a block
    std::array<uint32_t, 2> length;
    std::array<uint32_t, 2> chain;
    uint64_t last; // odd
};

// The high bits of a hash say most: a table of a power of two is to take its places from there.
uint32_t HashText(std::string_view text, const HashKey& key);

// The keys of this process, one for each kind of text, so that hashes of two kinds can be combined by exclusive or.
struct HashKeys {
    HashKey mid;
    HashKey protocol;
    HashKey guid;
};

// Draws keys from the system's source of randomness (platform::FillRandom). When that fails, they are made of the
// clock, the thread and the addresses of this process instead: they still differ between processes and between draws,
// but whoever knows the machine well can guess them, and prepare texts that make look-ups slow. Decisions never depend
// on the keys. Any thread may call.
HashKeys DrawHashKeys() noexcept;

// The keys of this process: drawn at the first call, which is the creation of the receiver, and constant from then on.
// Any thread may call.
const HashKeys& ProcessHashKeys() noexcept;
