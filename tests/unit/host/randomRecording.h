// Random policies and recordings, and what the library decides on them.
#pragma once

#include <cstdint>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "decide/decisionSession.h"
#include "policy/policy.h"
#include "usage/recording.h"

namespace mordhostTest {

// A policy and a recording from a few texts, so that rules, entries, rows and dots often meet. Some policies repeat
// guids, entries and rows. All modes occur, also with an end; some queries fail.
class RandomCase {
public:
    explicit RandomCase(uint64_t seed) : m_random(seed) {}

    mordhost::Policy MakePolicy();
    std::vector<mordhost::ConnectionEvent> MakeEvents();

    bool OneOf(int number) { return Below(number) == 0; }

private:
    int Below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(m_random); }
    std::string Pick(const std::vector<std::string>& texts);

    std::mt19937_64 m_random;
};

// Writes the documents of the library from the entries and the rows.
void WriteDocuments(mordhost::Policy& policy);

// Options for the real library, with a fixed clock.
mordhost::SessionOptions RealLibrary();

// The verdict on each event.
std::vector<std::string> VerdictsOf(const mordhost::Policy& policy, std::vector<mordhost::ConnectionEvent> events);

// A recording in memory.
class MemoryRecording final : public mordhost::Recording {
public:
    explicit MemoryRecording(std::vector<mordhost::ConnectionEvent> events) : m_events(std::move(events)) {}

    void Rewind() override {
        m_next = 0;
        ++rewinds;
    }
    bool Next(mordhost::ConnectionEvent& event) override {
        if (m_next == m_events.size()) {
            return false;
        }
        event = m_events[m_next++];
        return true;
    }
    const std::string& File() const override { return m_name; }

    size_t rewinds = 0;

private:
    std::vector<mordhost::ConnectionEvent> m_events;
    size_t m_next = 0;
    std::string m_name = "memory";
};

} // namespace mordhostTest
