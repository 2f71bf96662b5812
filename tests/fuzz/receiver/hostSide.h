// The host's side of one receiver: its host, its sink and its records, all driven by the same script. Every call to
// them becomes a line of text.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "frame/interfaces.h"
#include "frame/values.h"
#include "fuzz/input.h"

// A text in a buffer of its exact size on the heap, so that AddressSanitizer finds a read past the NUL.
std::vector<char> Copy(std::string_view text);

// Sets a mode from a place on the heap.
void SetMode(IMordRev& receiver, PropertyKey key, uint32_t mode);

// What the host answers, and what it does to the receiver from within its operations (see HostSide::Act).
struct HostScript {
    int32_t queryCode = 0;
    bool hasAnswer = true;
    std::string answer; // ends at its first NUL
    int32_t deleteResult = 0;
    int32_t otherResult = 0; // of FreeResult and Report
    uint8_t actOnQuery = 0;
    uint8_t actOnFree = 0;
    uint8_t actOnDelete = 0;
    uint8_t actOnReport = 0;
    bool repeatsRecords = false; // records start again at the front of their input when they reach its end
};

class HostSide final : public IDotHost, public IReportSink {
public:
    // `ofModel`: the receiver is the model, which has no rule for missing memory: see InputRecord.
    HostSide(IMordRev& receiver, bool ofModel) : m_receiver(receiver), m_ofModel(ofModel) {}
    ~HostSide();
    HostSide(const HostSide&) = delete;
    HostSide& operator=(const HostSide&) = delete;

    // Prepares for one input. Records take their answers from `input`.
    void Begin(const HostScript& script, const FuzzInput& input);

    // Lets the receiver handle an event with `ruleCount` rules. Result and reply become a line of the calls.
    void HandleEvent(uint32_t ruleCount);

    int32_t DeleteDot(const char* guid, const char* mid, int32_t kind, const char* type) override;
    int32_t QueryDot(const char* guidJson, const char* mid, char** result) override;
    int32_t FreeResult(char* result) override;
    int32_t Report(int32_t kind, const char* text, uint32_t size) override;

    // All calls, in order.
    const std::string& Calls() const { return m_calls; }
    size_t InputLeft() const { return m_input.Left(); }

private:
    friend class InputRecord;

    // Calls the receiver from within one of its own calls: with another document, another mode, or an event.
    void Act(uint8_t action);
    void Log(std::string_view what, const char* text);
    void Log(std::string_view what, int64_t number);

    IMordRev& m_receiver;
    bool m_ofModel;
    HostScript m_script;
    FuzzInput m_input{nullptr, 0};
    std::string m_calls;
    std::vector<char*> m_answers; // those that the receiver has
    int m_depth = 0;              // of events within events
};
