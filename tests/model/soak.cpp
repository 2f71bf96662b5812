// modelSoak SEED CASES: the library and the model, side by side on so many random cases of a seed, every tenth without
// logging. Says how many came out differently, and ends with 1 when one did or a branch was taken too seldom.
#include <charconv>
#include <chrono>
#include <cstring>
#include <iostream>

#include "model/caseRun.h"
#include "model/comparison.h"

namespace {

bool Read(const char* text, uint64_t& number) {
    const char* const end = text + std::strlen(text);
    const auto [stop, error] = std::from_chars(text, end, number);
    return error == std::errc() && stop == end;
}

} // namespace

int main(int count, char** arguments) {
    using namespace model;
    uint64_t seed = 0;
    uint64_t cases = 0;
    if (count != 3 || !Read(arguments[1], seed) || !Read(arguments[2], cases)) {
        std::cerr << "modelSoak SEED CASES\n";
        return 2;
    }
    constexpr uint64_t shown = 5;
    const auto begin = std::chrono::steady_clock::now();
    const uint64_t withLogging = cases - cases / 10;
    BranchCounts branches;
    uint64_t differences = 0;
    for (uint64_t number = 0; number < cases; ++number) {
        const bool logs = number < withLogging;
        if (number == 0 || number == withLogging) {
            PrepareLibrary(logs);
        }
        const std::string difference = CompareOnCase(seed, number, logs, branches);
        if (!difference.empty() && ++differences <= shown) {
            std::cout << difference;
        }
    }
    const std::string starved = branches.Starved(cases);
    if (!starved.empty()) {
        std::cout << "seed " << seed << ": taken too seldom\n" << starved;
    }
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - begin;
    std::cout << "seed " << seed << ": " << cases << " cases, " << differences << " differences, "
              << static_cast<int>(passed.count()) << " s\n";
    return differences == 0 && starved.empty() ? 0 : 1;
}
