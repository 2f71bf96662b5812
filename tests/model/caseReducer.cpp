#include "model/caseReducer.h"

namespace model {
namespace {

// Where in a case something can be taken away; called for every list of operations and of rules in it.
struct Lists {
    std::vector<std::vector<Operation>*> operations;
    std::vector<std::vector<RecordScript>*> rules;

    void Collect(std::vector<Operation>& list) {
        operations.push_back(&list);
        for (Operation& operation : list) {
            for (EventScript& event : operation.event) {
                rules.push_back(&event.rules);
                Collect(event.duringQuery);
                Collect(event.duringFree);
                Collect(event.duringDelete);
                Collect(event.duringReport);
            }
        }
    }
};

// The case without the `index`th thing that can be taken away; false when there are not so many.
bool Without(TestCase& testCase, size_t index) {
    Lists lists;
    lists.Collect(testCase.operations);
    for (auto* const list : lists.operations) {
        if (index < list->size()) {
            list->erase(list->begin() + static_cast<std::ptrdiff_t>(index));
            return true;
        }
        index -= list->size();
    }
    for (auto* const list : lists.rules) {
        if (index < list->size()) {
            if (list->size() > 1) { // an event keeps one rule
                list->erase(list->begin() + static_cast<std::ptrdiff_t>(index));
            }
            return true;
        }
        index -= list->size();
    }
    return false;
}

} // namespace

TestCase Reduced(TestCase testCase, const std::function<bool(const TestCase&)>& shows) {
    bool smaller = true;
    while (smaller) {
        smaller = false;
        for (size_t index = 0;;) {
            TestCase candidate = testCase;
            if (!Without(candidate, index)) {
                break;
            }
            if (Dump(candidate) != Dump(testCase) && shows(candidate)) {
                testCase = candidate;
                smaller = true;
            } else {
                ++index;
            }
        }
    }
    return testCase;
}

} // namespace model
