#include <stdexcept>

#include "frame/values.h"
#include "measurements.h"
#include "residentSize.h"
#include "sampling.h"
#include "shape.h"
#include "workload.h"

namespace bench {

namespace {

constexpr uint32_t firstEvents = 100000;
constexpr uint32_t allEvents = 10000000;
constexpr uint32_t eventsOfAMode = 500;

// All modes except the one that keeps the host's answers.
constexpr uint32_t modes[] = {MODE_ACTION_TABLE, MODE_ALLOW_AFTER_DECISION, MODE_EMERGENCY, 0};

} // namespace

void MeasureResidentSize(IMordRev& receiver) {
    const Workload one({1, 1});
    const Workload two({2, 2});
    const std::string list = AllowListText(10);
    ResidentSize(); // the first call loads code and data of its own
    double first = 0;
    for (uint32_t events = 0; events < allEvents; events += eventsOfAMode) {
        const uint32_t turn = events / eventsOfAMode;
        uint32_t mode = modes[turn % std::size(modes)];
        if (!receiver.SetProperty(PROP_DEFENDER_MODE, &mode, sizeof mode)) {
            throw std::runtime_error("the mode cannot be set");
        }
        receiver.SetAllowList(list.c_str());
        const Workload& workload = turn % 8 < 4 ? one : two;
        workload.Select();
        for (uint32_t i = 0; i < eventsOfAMode; ++i) {
            workload.Decide(receiver);
        }
        if (events + eventsOfAMode == firstEvents) {
            first = static_cast<double>(ResidentSize());
        }
    }
    PrintFigure("Resident/100000", first);
    PrintFigure("Resident/10000000", static_cast<double>(ResidentSize()));
}

} // namespace bench
