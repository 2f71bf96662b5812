// A record that answers each read by the bytes of the input, whatever they say.
#pragma once

#include "fuzz/receiver/hostSide.h"

class ScriptedRecord final : public IEventRecord {
public:
    ScriptedRecord(HostSide& side, char name) : m_side(side), m_name(name) {}

    int32_t GetInt32(const char* name, int32_t* value) override;
    int32_t GetInt64(const char* name, int64_t* value) override;

    // A size for which there is no memory gives the default. The model knows no missing memory: there the value is
    // absent at once.
    int32_t GetString(const char* name, char* buffer, int32_t* size) override;

private:
    int32_t TellSize(int32_t* size);
    int32_t TellText(char* buffer, int32_t* size);

    HostSide& m_side;
    char m_name;
    // Between the two calls for one text.
    std::string m_text; // what the second call writes
    int32_t m_result = 0;
    bool m_changesSize = false;
    int32_t m_newSize = 0;
};
