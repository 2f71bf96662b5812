// Hashes of texts that come from outside.
//
// Answers and allow lists may be written by whoever wants the tables over them to be slow. The hash is one of the keyed
// kind that is made for this (HalfSipHash, with one round for each word and three at the end), under keys that each
// process draws for itself: who does not know them cannot prepare texts that collide.
#pragma once

#include <cstdint>
#include <string_view>

struct HashKey {
    uint32_t low;
    uint32_t high;
};

uint32_t HashText(std::string_view text, HashKey key);

// The keys of this process, one for each kind of text, so that hashes of two kinds can be combined by exclusive or.
struct HashKeys {
    HashKey mid;
    HashKey protocol;
    HashKey guid;
};

// Drawn from the system at the first call, and the same ever after. Any thread may call.
const HashKeys& ProcessHashKeys();
