// Decisions and allow lists beside their floors, at each size, in one program. Run by bench/run.
#include <exception>
#include <iostream>
#include <map>
#include <memory>
#include <string>

#include <benchmark/benchmark.h>

#include "floor.h"
#include "libraryReceiver.h"
#include "sameTexts.h"
#include "workload.h"

namespace {

using bench::Shape;
using bench::Workload;

const Workload& WorkloadOf(const Shape& shape) {
    static std::map<std::pair<uint32_t, uint32_t>, std::unique_ptr<Workload>> workloads;
    auto& workload = workloads[{shape.rules, shape.mids}];
    if (!workload) {
        workload = std::make_unique<Workload>(shape);
    }
    return *workload;
}

const std::string& AllowListOf(uint32_t size) {
    static std::map<uint32_t, std::string> lists;
    auto& list = lists[size];
    if (list.empty()) {
        list = bench::AllowListText(size);
    }
    return list;
}

// One receiver for each list: filling a long one takes longer than a sample.
IMordRev& ReceiverWith(uint32_t listSize) {
    static std::map<uint32_t, std::unique_ptr<bench::LibraryReceiver>> receivers;
    auto& receiver = receivers[listSize];
    if (!receiver) {
        receiver = std::make_unique<bench::LibraryReceiver>();
        receiver->Interface().SetAllowList(AllowListOf(listSize).c_str());
    }
    return receiver->Interface();
}

void Event(benchmark::State& state, const Shape& shape, uint32_t listSize) {
    const Workload& workload = WorkloadOf(shape);
    IMordRev& receiver = ReceiverWith(listSize);
    bench::CompareWithFloor(receiver, workload);
    for (auto _ : state) {
        if (!workload.Decide(receiver)) {
            state.SkipWithError("the event was not decided as it has to be");
            break;
        }
    }
}

void Floor(benchmark::State& state, const Shape& shape) {
    const Workload& workload = WorkloadOf(shape);
    for (auto _ : state) {
        benchmark::DoNotOptimize(bench::EventFloor(workload.Guids(), workload.Answer()));
    }
}

void SetAllowList(benchmark::State& state, uint32_t listSize) {
    const std::string& text = AllowListOf(listSize);
    bench::LibraryReceiver receiver;
    for (auto _ : state) {
        // The floor's map is made and goes away each time; the receiver's is emptied for the next list.
        benchmark::DoNotOptimize(receiver.Interface().SetAllowList(text.c_str()));
    }
}

void ListFloor(benchmark::State& state, uint32_t listSize) {
    const std::string& text = AllowListOf(listSize);
    for (auto _ : state) {
        benchmark::DoNotOptimize(bench::AllowListFloor(text));
    }
}

void RegisterAll() {
    for (const uint32_t listSize : bench::listSizes) {
        for (const Shape& shape : bench::shapes) {
            benchmark::RegisterBenchmark(bench::FigureName("Event", shape, listSize).c_str(), Event, shape, listSize);
            benchmark::RegisterBenchmark(bench::FigureName("Floor", shape, listSize).c_str(), Floor, shape);
        }
        const std::string size = '/' + std::to_string(listSize);
        benchmark::RegisterBenchmark(("SetAllowList" + size).c_str(), SetAllowList, listSize);
        benchmark::RegisterBenchmark(("ListFloor" + size).c_str(), ListFloor, listSize);
    }
}

} // namespace

int main(int argc, char** argv) {
    try {
        RegisterAll();
        benchmark::Initialize(&argc, argv);
        if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
            return 2;
        }
        benchmark::RunSpecifiedBenchmarks();
        benchmark::Shutdown();
        return 0;
    } catch (const std::exception& failure) {
        std::cerr << "decisionBench: " << failure.what() << '\n';
        return 1;
    }
}
