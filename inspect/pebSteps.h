// The steps inside an operation that finds and reads a PEB.
#pragma once

#include <optional>
#include <string>
#include <utility>

#include "native/ntFunctions.h"

namespace mordinspect {

// Such an operation returns an address alone. While an object of this class lives, the entries of the library's
// function table through which PEBs are found lead here: each call goes on to the system, and its status is kept.
//
// A function that the system lacks is there meanwhile, and answers with the status of a missing one. One object at a
// time, on one thread. The table is as it was afterwards.
class PebSteps {
public:
    PebSteps();
    ~PebSteps();
    PebSteps(const PebSteps&) = delete;
    PebSteps& operator=(const PebSteps&) = delete;

    // The last status, if there was a call: of the query for the address, and of a read by NtWow64ReadVirtualMemory64.
    std::optional<NtStatus> Query() const { return m_query; }
    std::optional<NtStatus> Read() const { return m_read; }

private:
    // An entry of the table, with the function of this class in it.
    class Entry {
    public:
        Entry(const char* name, void* function);
        ~Entry();
        Entry(const Entry&) = delete;
        Entry& operator=(const Entry&) = delete;

        void* Original() const { return m_original; } // null for a function that the system lacks

    private:
        std::pair<const std::string, void*>& m_entry;
        void* m_original;
    };

    static NtStatus MORD_STDCALL PlainQuery(platform::Handle process, uint32_t informationClass, void* buffer,
                                            uint32_t size, uint32_t* returnedLength);
    static NtStatus MORD_STDCALL Query64(platform::Handle process, uint32_t informationClass, void* buffer,
                                         uint32_t size, uint32_t* returnedLength);
    static NtStatus MORD_STDCALL Read64(platform::Handle process, uint64_t address, void* buffer, uint64_t size,
                                        uint64_t* bytesRead);

    Entry m_plainQuery;
    Entry m_query64;
    Entry m_read64;
    std::optional<NtStatus> m_query;
    std::optional<NtStatus> m_read;
};

} // namespace mordinspect
