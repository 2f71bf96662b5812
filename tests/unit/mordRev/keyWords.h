// The words of hash keys in a row.
#pragma once

#include <cstdint>
#include <vector>

#include "mordRev/src/seededHash.h"

constexpr size_t wordsOfKey = 22; // the last factor comes at the end, its low half first

inline std::vector<uint32_t> Words(const HashKeys& keys) {
    std::vector<uint32_t> words;
    for (const HashKey* const key : {&keys.mid, &keys.protocol, &keys.guid}) {
        words.insert(words.end(), key->words.begin(), key->words.end());
        words.insert(words.end(), key->length.begin(), key->length.end());
        words.insert(words.end(), key->chain.begin(), key->chain.end());
        words.push_back(static_cast<uint32_t>(key->last));
        words.push_back(static_cast<uint32_t>(key->last >> 32));
    }
    return words;
}
