#include "unit/native/real/ownStructures.h"

#include <algorithm>
#include <cstring>

#include <windows.h>

#include "unit/native/real/unreadableEnd.h"

namespace {

constexpr size_t plenty = 0x40000; // beyond twice the largest MaximumLength

wchar_t* Allocate(size_t size) {
    return static_cast<wchar_t*>(VirtualAlloc(nullptr, size, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE));
}

void PointImagePathAt(const wchar_t* text, size_t length, size_t maximumLength) {
    OwnParameters().ImagePathName = {static_cast<uint16_t>(length), static_cast<uint16_t>(maximumLength),
                                     reinterpret_cast<uintptr_t>(text)};
}

} // namespace

OwnPebType& OwnPeb() {
    const auto* const teb = reinterpret_cast<const published::Teb<uintptr_t>*>(NtCurrentTeb());
    return *reinterpret_cast<OwnPebType*>(teb->ProcessEnvironmentBlock);
}

OwnParametersType& OwnParameters() {
    return *reinterpret_cast<OwnParametersType*>(OwnPeb().ProcessParameters);
}

OwnEntryType& FirstModule() {
    const auto& data = *reinterpret_cast<const published::PebLdrData<uintptr_t>*>(OwnPeb().Ldr);
    return *reinterpret_cast<OwnEntryType*>(data.InLoadOrderModuleList.Flink);
}

bool SetImagePath(const std::wstring& path) {
    wchar_t* const text = Allocate(plenty);
    if (text == nullptr) {
        return false;
    }
    std::copy(path.begin(), path.end(), text);
    const size_t length = path.size() * sizeof(wchar_t);
    PointImagePathAt(text, length, length + sizeof(wchar_t));
    return true;
}

bool SetImagePathBeforeUnreadable(const std::wstring& path) {
    const size_t length = path.size() * sizeof(wchar_t);
    const size_t maximumLength = length + sizeof(wchar_t);
    const uintptr_t end = UnreadableEnd();
    if (end == 0) {
        return false;
    }
    auto* const text = reinterpret_cast<wchar_t*>(end - maximumLength);
    std::copy(path.begin(), path.end(), text);
    text[path.size()] = L'\0';
    PointImagePathAt(text, length, maximumLength);
    return true;
}

bool SetImagePathWithoutNul(size_t length) {
    wchar_t* const text = Allocate(plenty);
    if (text == nullptr) {
        return false;
    }
    std::fill_n(text, plenty / sizeof(wchar_t), L'x');
    PointImagePathAt(text, length * sizeof(wchar_t), length * sizeof(wchar_t));
    return true;
}

uintptr_t AddEntryBeforeUnreadable() {
    const uintptr_t end = UnreadableEnd();
    if (end == 0) {
        return 0;
    }
    const uintptr_t entry = end - sizeof(uintptr_t);
    *reinterpret_cast<uintptr_t*>(entry) = FirstModule().InLoadOrderLinks.Flink;
    FirstModule().InLoadOrderLinks.Flink = entry;
    return entry;
}

bool SetFirstModuleName(size_t size) {
    wchar_t* const text = Allocate(plenty);
    if (text == nullptr) {
        return false;
    }
    std::fill_n(text, plenty / sizeof(wchar_t), L'p');
    FirstModule().FullDllName = {static_cast<uint16_t>(size), static_cast<uint16_t>(size),
                                 reinterpret_cast<uintptr_t>(text)};
    return true;
}
