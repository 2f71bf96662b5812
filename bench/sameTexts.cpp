#include "sameTexts.h"

#include <stdexcept>

#include "floor.h"

namespace bench {

void CompareWithFloor(IMordRev& receiver, const Workload& workload) {
    SeenTexts seen;
    workload.Select();
    KeepTextsIn(&seen);
    const bool decided = workload.Decide(receiver);
    KeepTextsIn(nullptr);
    if (!decided) {
        throw std::runtime_error("the event is not decided as it has to be");
    }
    if (seen.request != RequestText(workload.Guids())) {
        throw std::runtime_error("the floor writes another request than the library");
    }
    if (seen.report != ReportText(workload.Guids())) {
        throw std::runtime_error("the floor writes another report than the library");
    }
}

} // namespace bench
