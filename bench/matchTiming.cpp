// The time to match one rule, for each size of the allow list. It bounds the time that a rule holds the receiver's
// lock. Prints one figure per size.
#include <exception>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "eventTexts.h"
#include "libraryReceiver.h"
#include "mordRev/src/mordRev.h"
#include "sampling.h"
#include "shape.h"
#include "workload.h"

namespace {

using namespace std::chrono_literals;

constexpr size_t midsOfARule = 16;
constexpr size_t ruleCount = 64; // each with other ids, so that the data exceed the smallest cache
constexpr int rounds = 100;

} // namespace

int main() {
    try {
        // No list has any of these ids.
        std::vector<std::string> texts;
        for (size_t i = 0; i < ruleCount * midsOfARule; ++i) {
            texts.push_back("no machine has this id: " + std::to_string(10000000 + i));
        }
        const std::vector<std::string_view> mids(texts.begin(), texts.end());
        std::vector<std::unique_ptr<bench::LibraryReceiver>> receivers;
        std::vector<bench::Subject> subjects;
        for (const uint32_t listSize : bench::listSizes) {
            auto& receiver = receivers.emplace_back(std::make_unique<bench::LibraryReceiver>());
            receiver->Interface().SetAllowList(bench::AllowListText(listSize).c_str());
            subjects.push_back(
                {"Match/" + std::to_string(listSize), [&object = receiver->Object(), &mids](uint32_t count) {
                     std::string matched;
                     for (uint32_t i = 0; i < count; ++i) {
                         const auto first = mids.begin() + i % ruleCount * midsOfARule;
                         object.IsMatchmid(bench::ruleType, MidSet(first, midsOfARule), &matched);
                     }
                 }});
        }
        bench::Measure(subjects, rounds, 2ms);
        bench::PrintFigures(subjects);
        return 0;
    } catch (const std::exception& failure) {
        std::cerr << "matchTiming: " << failure.what() << '\n';
        return 1;
    }
}
