// The host's side as classes of this ABI.
#pragma once

#include "abi/msvcHost/freestanding.h"
#include "abi/msvcHost/receiver.h"

// A value of a record: text, or a number where `text` is null.
struct NamedValue {
    const char* name;
    const char* text;
    int64_t number;
};

class Record : public EventRecord {
public:
    template <size_t count>
    explicit Record(const NamedValue (&values)[count]) : m_values(values), m_count(count) {}

    void Unused0() override { Fail(0); }
    void Unused1() override { Fail(1); }
    void Unused2() override { Fail(2); }
    void Unused3() override { Fail(3); }
    void Unused4() override { Fail(4); }
    void Unused5() override { Fail(5); }
    void Unused6() override { Fail(6); }
    int32_t GetInt32(const char* name, int32_t* value) override;
    int32_t GetInt64(const char* name, int64_t* value) override;
    void Unused9() override { Fail(9); }
    int32_t GetString(const char* name, char* buffer, int32_t* size) override;

private:
    [[noreturn]] static void Fail(uint32_t slot);
    const NamedValue* Find(const char* name) const;

    const NamedValue* m_values;
    size_t m_count;
};

// Prints each call. Answers every query with one text.
class Host : public DotHost {
public:
    void Unused0() override { Fail(0); }
    void Unused1() override { Fail(1); }
    int32_t DeleteDot(const char* guid, const char* mid, int32_t kind, const char* type) override;
    int32_t QueryDot(const char* guidJson, const char* mid, char** result) override;
    int32_t FreeResult(char* result) override;

private:
    [[noreturn]] static void Fail(uint32_t slot);
};

// Prints each report.
class Sink : public ReportSink {
public:
    int32_t Report(int32_t kind, const char* text, uint32_t size) override;
};
