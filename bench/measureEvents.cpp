#include <map>
#include <memory>
#include <stdexcept>

#include "floor.h"
#include "measurements.h"
#include "sampling.h"
#include "shape.h"
#include "workload.h"

namespace bench {

namespace {

using namespace std::chrono_literals;

constexpr int turns = 10;
constexpr int roundsOfATurn = 2;
constexpr int listRounds = 12;

volatile size_t kept; // the compiler keeps all work whose result goes here

// Lets the receiver decide the event once and compares its texts with those of the floor.
void CompareWithFloor(IMordRev& receiver, const Workload& workload) {
    SeenTexts seen;
    workload.Select();
    KeepTextsIn(&seen);
    const bool decided = workload.Decide(receiver);
    KeepTextsIn(nullptr);
    if (!decided) {
        throw std::runtime_error("the event is not decided as expected");
    }
    if (seen.request != RequestText(workload.Guids()) || seen.report != ReportText(workload.Guids())) {
        throw std::runtime_error("the floor writes other texts than the library");
    }
}

void DecideTimes(IMordRev& receiver, const Workload& workload, uint32_t count) {
    workload.Select();
    for (uint32_t i = 0; i < count; ++i) {
        if (!workload.Decide(receiver)) {
            throw std::runtime_error("the event is not decided as expected");
        }
    }
}

} // namespace

// The process has one receiver and therefore one list at a time: the lists take turns, one round each.
void MeasureEvents(IMordRev& receiver) {
    std::vector<std::string> lists;
    std::vector<Subject> listSubjects;
    for (const uint32_t listSize : listSizes) {
        lists.push_back(AllowListText(listSize));
    }
    for (size_t i = 0; i < listSizes.size(); ++i) {
        const std::string& list = lists[i];
        listSubjects.push_back({"SetAllowList/" + std::to_string(listSizes[i]), [&](uint32_t count) {
                                    for (uint32_t n = 0; n < count; ++n) {
                                        kept = receiver.SetAllowList(list.c_str()) ? 1 : 0;
                                    }
                                }});
        listSubjects.push_back({"ListFloor/" + std::to_string(listSizes[i]), [&](uint32_t count) {
                                    for (uint32_t n = 0; n < count; ++n) {
                                        kept = AllowListFloor(list);
                                    }
                                }});
    }
    Measure(listSubjects, listRounds, 10ms);
    PrintFigures(listSubjects);

    std::vector<std::unique_ptr<Workload>> workloads;
    std::vector<std::vector<Subject>> subjects(listSizes.size());
    for (const Shape& shape : shapes) {
        const Workload& workload = *workloads.emplace_back(std::make_unique<Workload>(shape));
        CompareWithFloor(receiver, workload);
        for (size_t i = 0; i < listSizes.size(); ++i) {
            subjects[i].push_back({FigureName("Event", shape, listSizes[i]),
                                   [&](uint32_t count) { DecideTimes(receiver, workload, count); }});
            subjects[i].push_back({FigureName("Floor", shape, listSizes[i]), [&](uint32_t count) {
                                       for (uint32_t n = 0; n < count; ++n) {
                                           kept = EventFloor(workload.Guids(), workload.Answer());
                                       }
                                   }});
        }
    }
    for (int turn = 0; turn < turns; ++turn) {
        for (size_t i = 0; i < lists.size(); ++i) {
            receiver.SetAllowList(lists[i].c_str());
            Measure(subjects[i], roundsOfATurn, 5ms);
        }
    }
    for (const std::vector<Subject>& ofAList : subjects) {
        PrintFigures(ofAList);
    }
}

} // namespace bench
