#include "race/raceHost.h"

#include <algorithm>

#include "frame/values.h"
#include "kit/host/fakeRecord.h"

namespace race {
namespace {

// Of the event that the thread is handling.
thread_local Outcome* current = nullptr;
thread_local uint32_t queries = 0;

// Its answer, which the receiver does not always give back. A plain pointer: what a thread destroys at its end is not
// to be relied on everywhere.
thread_local char* lent = nullptr;

void TakeBack() {
    delete[] lent;
    lent = nullptr;
}

class ThreadRecords final : public RecordTaker {
public:
    void Take(int32_t, std::basic_string_view<WideChar> record) override {
        // The message follows function and thread, which are in brackets with a blank between them.
        const size_t thread = record.find(WIDE("] ["));
        const size_t message = thread == record.npos ? record.npos : record.find(WIDE("] "), thread + 3);
        std::string narrow;
        for (const WideChar unit : record.substr(message == record.npos ? 0 : message + 2)) {
            narrow += static_cast<char>(unit);
        }
        current->records.push_back(narrow);
    }
};

} // namespace

int32_t RaceHost::DeleteDot(const char*, const char*, int32_t, const char*) {
    ++current->deletions;
    return 0;
}

int32_t RaceHost::QueryDot(const char*, const char*, char** result) {
    TakeBack();
    lent = new char[answer.size() + 1];
    std::copy_n(answer.c_str(), answer.size() + 1, lent);
    *result = lent;
    return errorEvery != 0 && ++queries % errorEvery == 0 ? DOT_QUERY_NETWORK_ERROR : queryResult;
}

int32_t RaceHost::FreeResult(char* result) {
    if (result == lent) {
        TakeBack();
    }
    return 0;
}

int32_t RaceHost::Report(int32_t, const char* text, uint32_t size) {
    current->reports.emplace_back(text, size);
    return 0;
}

Outcome HandleOneEvent(IMordRev& receiver) {
    Outcome outcome;
    ThreadRecords records;
    kit::FakeRecord event;
    event.Int32("pid", 4).OtherNumbers(0);
    kit::FakeRecord rule = kit::MakeRule("g", "dns");
    IEventRecord* rules[] = {&rule};
    current = &outcome;
    TakeRecords(&records);
    outcome.result = receiver.HandleEvent(&event, rules, 1, &outcome.reply);
    TakeRecords(nullptr);
    current = nullptr;
    TakeBack();
    return outcome;
}

} // namespace race
