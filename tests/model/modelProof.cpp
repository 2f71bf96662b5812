// modelProof RULES SHARE SHARES: compares the library with the model on every combination of the small scope with RULES
// rules that belongs to the share. Prints differences and a result line. Exit codes: 0 no difference, 1 a difference, 2
// wrong use, 3 a run without end.
#include <charconv>
#include <chrono>
#include <cstring>
#include <iostream>

#include "model/smallScope.h"

namespace {

bool Read(const char* text, uint32_t& number) {
    const char* const end = text + std::strlen(text);
    const auto [stop, error] = std::from_chars(text, end, number);
    return error == std::errc() && stop == end;
}

} // namespace

int main(int count, char** arguments) {
    uint32_t rules = 0;
    uint32_t share = 0;
    uint32_t shares = 0;
    if (count != 4 || !Read(arguments[1], rules) || !Read(arguments[2], share) || !Read(arguments[3], shares) ||
        rules < 1 || rules > 3 || share >= shares) {
        std::cerr << "modelProof RULES SHARE SHARES\n";
        return 2;
    }
    const auto begin = std::chrono::steady_clock::now();
    model::BranchCounts branches;
    const auto counts = model::RunSmallScope(rules, share, shares, branches, std::cout);
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - begin;
    std::cout << "rules " << rules << ", share " << share << " of " << shares << ": " << counts.combinations
              << " combinations, " << counts.runs << " runs, " << counts.differences << " differences, "
              << static_cast<int>(passed.count()) << " s\n";
    return counts.differences == 0 ? 0 : 1;
}
