// A record that takes the answer to each read from the bytes of the input.
#pragma once

#include <string>
#include <utility>

#include "fuzz/receiver/hostSide.h"

class InputRecord final : public IEventRecord {
public:
    // `name` is in the calls of `side`: "e" for the event, the number of a rule in decimal.
    InputRecord(HostSide& side, std::string name) : m_side(side), m_name(std::move(name)) {}

    int32_t GetInt32(const char* name, int32_t* value) override;
    int32_t GetInt64(const char* name, int64_t* value) override;

    // A size for which there is no memory gives the default. The model has no rule for that: for the model the value
    // is absent at once.
    int32_t GetString(const char* name, char* buffer, int32_t* size) override;

private:
    std::string TakeWord(FuzzInput& input) const;
    int32_t AnswerSize(int32_t* size);
    int32_t AnswerText(char* buffer, int32_t* size);

    HostSide& m_side;
    std::string m_name;
    // From the first of the two calls for one text to the second.
    std::string m_text; // which the second call writes
    int32_t m_result = 0;
    bool m_changesSize = false;
    int32_t m_newSize = 0;
};
