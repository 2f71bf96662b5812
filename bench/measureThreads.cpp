#include <algorithm>
#include <atomic>
#include <chrono>
#include <functional>
#include <random>
#include <stdexcept>
#include <thread>

#include "floor.h"
#include "measurements.h"
#include "sampling.h"
#include "shape.h"
#include "workload.h"

namespace bench {

namespace {

constexpr Shape shape{8, 8};
constexpr uint32_t listSize = 1000;
constexpr int rounds = 300;
constexpr unsigned stepsLikeAnEvent = 2000;
constexpr uint32_t eventsOfAThread = 400; // few milliseconds: now and then both processors are free for so long

using Clock = std::chrono::steady_clock;

// The time of `work` on `count` threads that begin together, in nanoseconds, until the last one ends.
double TimeOn(unsigned count, const std::function<void()>& work) {
    std::atomic<unsigned> waiting{count};
    std::vector<Clock::time_point> starts(count);
    std::vector<Clock::time_point> ends(count);
    const auto run = [&](unsigned i) {
        --waiting;
        while (waiting != 0) { // no lock: all shall begin in the same instant
        }
        starts[i] = Clock::now();
        work();
        ends[i] = Clock::now();
    };
    std::vector<std::thread> others;
    for (unsigned i = 1; i < count; ++i) {
        others.emplace_back(run, i);
    }
    run(0);
    for (std::thread& other : others) {
        other.join();
    }
    return std::chrono::duration<double, std::nano>(*std::max_element(ends.begin(), ends.end()) -
                                                    *std::min_element(starts.begin(), starts.end()))
        .count();
}

} // namespace

void MeasureThreads(IMordRev& receiver) {
    receiver.SetAllowList(AllowListText(listSize).c_str());
    const Workload workload(shape);
    workload.Select();
    std::atomic<bool> wrong{false};
    std::atomic<size_t> seen{0};
    const std::function<void()> decide = [&] {
        for (uint32_t i = 0; i < eventsOfAThread; ++i) {
            if (!workload.Decide(receiver)) {
                wrong = true;
            }
        }
    };
    const std::function<void()> floor = [&] {
        size_t all = 0;
        for (uint32_t i = 0; i < eventsOfAThread; ++i) {
            all += EventFloor(workload.Guids(), workload.Answer());
        }
        seen += all;
    };
    // Work that shares nothing tells how much of a second processor there is to be had.
    const std::function<void()> count = [&] {
        std::minstd_rand random;
        for (uint32_t i = 0; i < eventsOfAThread; ++i) {
            random.discard(stepsLikeAnEvent);
        }
        seen += random();
    };
    const std::function<void()>* const works[] = {&decide, &floor, &count};
    std::vector<Subject> figures{
        {FigureName("OneThread", shape, listSize), {}},      {FigureName("TwoThreads", shape, listSize), {}},
        {FigureName("OneThreadFloor", shape, listSize), {}}, {FigureName("TwoThreadsFloor", shape, listSize), {}},
        {FigureName("OneThreadAlone", shape, listSize), {}}, {FigureName("TwoThreadsAlone", shape, listSize), {}}};
    for (int round = 0; round < rounds; ++round) {
        for (size_t i = 0; i < figures.size(); ++i) {
            const double taken = TimeOn(i % 2 == 0 ? 1 : 2, *works[i / 2]) / eventsOfAThread;
            figures[i].least = round == 0 ? taken : std::min(figures[i].least, taken);
        }
    }
    if (wrong) {
        throw std::runtime_error("an event is not decided as it has to be");
    }
    PrintFigures(figures);
}

} // namespace bench
