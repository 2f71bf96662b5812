// modelSoak SEED CASES: compares the library with the model on random cases of a seed, in one process. Prints
// differences, branches taken too seldom and a result line. Exit codes: 0 no difference, 1 a difference or a branch
// taken too seldom, 2 wrong use, 3 a case without end.
#include <charconv>
#include <chrono>
#include <cstring>
#include <iostream>

#include "model/caseRun.h"

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
    const auto begin = std::chrono::steady_clock::now();
    BranchCounts branches;
    const uint64_t differences = RunCases({seed, 0, cases}, branches, std::cout);
    const std::string starved = differences == 0 ? branches.Starved(cases) : "";
    if (!starved.empty()) {
        std::cout << "seed " << seed << ": taken too seldom\n" << starved;
    }
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - begin;
    std::cout << "seed " << seed << ": " << cases << " cases, " << differences << " differences, "
              << static_cast<int>(passed.count()) << " s\n";
    return differences == 0 && starved.empty() ? 0 : 1;
}
