// Measures the times of several pieces of work side by side.
//
// Machines are noisy and their speed drifts. Each subject is sampled many times, briefly, in a new random order in each
// round, so that a disturbance affects all alike. The least time of each counts.
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
    double least = 0;                        // nanoseconds per repetition; 0 before the measurement
    uint32_t count = 0;                      // repetitions of one sample; 0 before the measurement
};

// Sets `least` of each subject. A further call continues with the samples so far.
void Measure(std::vector<Subject>& subjects, int rounds, std::chrono::nanoseconds sample);

// Prints a figure in the form that tools/benchLimits reads: its name and its value.
void PrintFigure(const std::string& name, double value);

// Prints the figures of all subjects.
void PrintFigures(const std::vector<Subject>& subjects);

} // namespace bench
