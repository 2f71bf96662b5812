// The system calls within an operation that finds and reads a PEB.
#pragma once

#include <optional>
#include <string>
#include <utility>

#include "native/ntFunctions.h"

namespace mordinspect {

// Such an operation returns only an address. While an object of this class exists, the entries of the library's
// function table that find PEBs point to functions of this class, which call the system and record the status.
//
// If the system lacks a function, its entry exists meanwhile and returns STATUS_OF_MISSING_FUNCTION. Only one object
// may exist at a time, and no other thread may use the table meanwhile. The destructor restores the table.
class PebSteps {
public:
    PebSteps();
    ~PebSteps();
    PebSteps(const PebSteps&) = delete;
    PebSteps& operator=(const PebSteps&) = delete;

    // The last status of the query for the address, and of a read with NtWow64ReadVirtualMemory64; none without a call.
    std::optional<NtStatus> Query() const { return m_query; }
    std::optional<NtStatus> Read() const { return m_read; }

private:
    // Replaces an entry of the table and restores it.
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
