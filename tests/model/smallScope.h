// Compares the library with the model on every combination of a small scope.
//
// A combination has:
//   started or stopped; defender mode 1, 2 (unknown), 3, 4 or 5; exception mode 1, 2 or 3 (unknown);
//   report sink or none; flags 0, 4, 0x10 or 0x14;
//   action of the first rule's type: no row, 0 or 1 (the other types have the opposite);
//   one to N rules with different guids. A type is "web" or another word; all patterns of equal and different types;
//   allow list: empty, or for each key of the rules no entry, another id or the id that matches;
//   result of the query: 0, 1007 or another error;
//   answer: null, empty, not JSON, not an object, or for each rule: missing, no value, value 0, value not a number, no
//   "mid", no id, the one id that can match, two ids of which one can match.
//
// Names of other types are interchangeable, so one pattern covers all words. Answers are left out only where the
// library provably does not depend on them:
//   - It did not call QueryDot (mode 5, or flag 4): it never got an answer. One run covers all.
//   - The query failed, or the mode is 1: the host returns an address that nobody can read, instead of an answer. The
//     run ends as usual, so that the library did not read it. One run covers all answers but null.
// Logging is off, because a log record contains the answer.
#pragma once

#include <cstdint>
#include <iosfwd>

#include "model/branches.h"

namespace model {

struct ScopeCounts {
    uint64_t runs = 0;         // events on the library
    uint64_t combinations = 0; // that these runs cover
    uint64_t differences = 0;
};

// Runs events of exactly `rules` rules (1 to 3). Of the pairs of a type pattern and an allow list, takes those whose
// number is `share` modulo `shares`. Writes the first five differences to `out`.
ScopeCounts RunSmallScope(uint32_t rules, uint32_t share, uint32_t shares, BranchCounts& branches, std::ostream& out);

} // namespace model
