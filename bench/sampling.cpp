#include "sampling.h"

#include <algorithm>
#include <cstdio>
#include <numeric>
#include <random>

namespace bench {

namespace {

using Clock = std::chrono::steady_clock;

double Nanoseconds(const Subject& subject, uint32_t count) {
    const auto start = Clock::now();
    subject.run(count);
    return std::chrono::duration<double, std::nano>(Clock::now() - start).count();
}

// Returns how often to repeat the work so that a sample is long enough.
uint32_t CountFor(const Subject& subject, std::chrono::nanoseconds sample) {
    const auto wanted = static_cast<double>(sample.count());
    uint32_t count = 1;
    double taken = Nanoseconds(subject, count);
    while (taken < wanted / 2 && count < (1U << 24)) {
        count *= 2;
        taken = Nanoseconds(subject, count);
    }
    return std::max(1U, static_cast<uint32_t>(count * wanted / taken));
}

} // namespace

void Measure(std::vector<Subject>& subjects, int rounds, std::chrono::nanoseconds sample) {
    for (Subject& subject : subjects) {
        subject.count = subject.count == 0 ? CountFor(subject, sample) : subject.count;
    }
    std::vector<size_t> order(subjects.size());
    std::iota(order.begin(), order.end(), size_t{0});
    static std::mt19937 random(20261120);
    for (int round = 0; round < rounds; ++round) {
        std::shuffle(order.begin(), order.end(), random);
        for (const size_t i : order) {
            Subject& subject = subjects[i];
            const double each = Nanoseconds(subject, subject.count) / subject.count;
            subject.least = subject.least == 0 ? each : std::min(subject.least, each);
        }
    }
}

void PrintFigure(const std::string& name, double value) {
    std::printf("%s %.4f\n", name.c_str(), value);
    std::fflush(stdout);
}

void PrintFigures(const std::vector<Subject>& subjects) {
    for (const Subject& subject : subjects) {
        PrintFigure(subject.name, subject.least);
    }
}

} // namespace bench
