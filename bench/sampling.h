// Times of several pieces of work, taken side by side.
//
// The machine is never quiet, and its pace drifts. Each subject is sampled many times, briefly, in an order that is
// drawn anew for each round, so that a disturbance falls on all alike; what counts is the least time of each.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace bench {

struct Subject {
    std::string name;
    std::function<void(uint32_t count)> run; // does the work `count` times
    double least = 0;                        // nanoseconds for one; 0 before it is measured
    uint32_t count = 0;                      // of one sample; likewise
};

// Fills in `least` of each subject; when it is called again, over all samples.
void Measure(std::vector<Subject>& subjects, int rounds, std::chrono::nanoseconds sample);

// Prints a figure, as tools/benchLimits reads it: its name and its value.
void PrintFigure(const std::string& name, double value);

// Prints all of them.
void PrintFigures(const std::vector<Subject>& subjects);

} // namespace bench
