#include <map>
#include <memory>
#include <stdexcept>

#include "floor.h"
#include "measurements.h"
#include "sameTexts.h"
#include "sampling.h"
#include "shape.h"
#include "workload.h"

namespace bench {

namespace {

using namespace std::chrono_literals;

constexpr int rounds = 40;
constexpr int listRounds = 12;

volatile size_t kept; // so that nothing is left out

void DecideTimes(IMordRev& receiver, const Workload& workload, uint32_t count) {
    workload.Select();
    for (uint32_t i = 0; i < count; ++i) {
        if (!workload.Decide(receiver)) {
            throw std::runtime_error("the event is not decided as it has to be");
        }
    }
}

} // namespace

// The process has one receiver, and so one list at a time: the sizes come one after the other, each with the floor.
void MeasureEvents(IMordRev& receiver) {
    std::vector<std::unique_ptr<Workload>> workloads;
    for (const Shape& shape : shapes) {
        workloads.push_back(std::make_unique<Workload>(shape));
    }
    for (const uint32_t listSize : listSizes) {
        const std::string list = AllowListText(listSize);
        std::vector<Subject> lists{{"SetAllowList/" + std::to_string(listSize),
                                    [&](uint32_t count) {
                                        for (uint32_t i = 0; i < count; ++i) {
                                            kept = receiver.SetAllowList(list.c_str()) ? 1 : 0;
                                        }
                                    }},
                                   {"ListFloor/" + std::to_string(listSize), [&](uint32_t count) {
                                        for (uint32_t i = 0; i < count; ++i) {
                                            kept = AllowListFloor(list);
                                        }
                                    }}};
        Measure(lists, listRounds, 10ms);
        PrintFigures(lists);

        std::vector<Subject> subjects;
        for (size_t i = 0; i < shapes.size(); ++i) {
            const Workload& workload = *workloads[i];
            CompareWithFloor(receiver, workload);
            subjects.push_back({FigureName("Event", shapes[i], listSize),
                                [&](uint32_t count) { DecideTimes(receiver, workload, count); }});
            subjects.push_back({FigureName("Floor", shapes[i], listSize), [&](uint32_t count) {
                                    for (uint32_t n = 0; n < count; ++n) {
                                        kept = EventFloor(workload.Guids(), workload.Answer());
                                    }
                                }});
        }
        Measure(subjects, rounds, 5ms);
        PrintFigures(subjects);
    }
}

} // namespace bench
