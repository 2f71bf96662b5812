#include "unit/native/real/openHandles.h"

#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <vector>

#include <gtest/gtest.h>
#include <windows.h>

#include "kit/system/published/queryLayouts.h"

namespace {

using List = published::SystemHandleInformationEx<uintptr_t>;
using Entry = published::SystemHandleTableEntryInfoEx<uintptr_t>;

std::vector<char> ListOfAll() {
    using Function = int32_t(WINAPI*)(uint32_t, void*, uint32_t, uint32_t*);
    static const auto query = reinterpret_cast<Function>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQuerySystemInformation")));
    constexpr uint32_t systemExtendedHandleInformation = 64;
    for (std::vector<char> list(0x10000); list.size() < 0x10000000; list.resize(list.size() * 2)) {
        const int32_t status =
            query(systemExtendedHandleInformation, list.data(), static_cast<uint32_t>(list.size()), nullptr);
        if (status == 0) {
            return list;
        }
    }
    throw std::runtime_error("the system does not tell its handles");
}

} // namespace

size_t OpenHandles() {
    const std::vector<char> all = ListOfAll();
    List head;
    std::memcpy(&head, all.data(), sizeof head);
    size_t own = 0;
    for (size_t i = 0; i < head.NumberOfHandles; ++i) {
        Entry entry;
        std::memcpy(&entry, all.data() + sizeof head + i * sizeof entry, sizeof entry);
        own += entry.UniqueProcessId == GetCurrentProcessId() ? 1 : 0;
    }
    return own;
}

void ExpectThatOneMoreHandleIsCounted() {
    const size_t before = OpenHandles();
    const HANDLE one = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    ASSERT_NE(one, nullptr);
    EXPECT_EQ(OpenHandles(), before + 1);
    CloseHandle(one);
    EXPECT_EQ(OpenHandles(), before);
}
