// The peak memory of one event of a thousand rules with a hundred machine ids each, and the size of its answer. Prints
// both as figures.
//
// Counts the heap of this program, which contains the receiver.
#include <exception>
#include <iostream>

#include "kit/heap/countedHeap.h"
#include "libraryReceiver.h"
#include "mordRev/src/spareBlocks.h"
#include "sampling.h"
#include "shape.h"
#include "workload.h"

int main() {
    try {
        const bench::Workload workload({1000, 100});
        const bench::LibraryReceiver receiver;
        receiver.Interface().SetAllowList(bench::AllowListText(10).c_str());
        workload.Select();
        constexpr long long mostKept = mostSpareBlocks * 65536; // for later events
        const kit::HeapUse heap;
        const bool decided = workload.Decide(receiver.Interface());
        const long long most = heap.MostBytes();
        const long long kept = heap.Bytes();
        if (!decided || kept > mostKept) {
            std::cerr << "peakMemory: the event is not decided as expected, or keeps too much memory\n";
            return 1;
        }
        if (!workload.Decide(receiver.Interface()) || heap.Bytes() != kept) {
            std::cerr << "peakMemory: a second event is not decided as expected, or keeps more memory\n";
            return 1;
        }
        bench::PrintFigure("AnswerSize", static_cast<double>(workload.Answer().size()));
        bench::PrintFigure("PeakMemory", static_cast<double>(most));
        return 0;
    } catch (const std::exception& failure) {
        std::cerr << "peakMemory: " << failure.what() << '\n';
        return 1;
    }
}
