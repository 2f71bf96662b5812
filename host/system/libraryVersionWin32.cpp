#include "system/libraryVersion.h"

#include <cstdint>
#include <cstring>

#include <windows.h>

namespace mordhost {

namespace {

// The head of the version resource, up to the fixed part.
struct VersionHead {
    WORD size;
    WORD valueSize;
    WORD type;
    WCHAR key[16]; // "VS_VERSION_INFO"
    WORD padding;
    VS_FIXEDFILEINFO value;
};
static_assert(offsetof(VersionHead, value) == 40);

constexpr DWORD signature = 0xFEEF04BD;

} // namespace

std::string VersionOfLibrary(void* library) {
    const auto module = static_cast<HMODULE>(library);
    const HRSRC place = FindResourceW(module, MAKEINTRESOURCEW(VS_VERSION_INFO), MAKEINTRESOURCEW(16)); // RT_VERSION
    const HGLOBAL loaded = place == nullptr ? nullptr : LoadResource(module, place);
    const void* const resource = loaded == nullptr ? nullptr : LockResource(loaded);
    if (resource == nullptr || SizeofResource(module, place) < sizeof(VersionHead)) {
        return {};
    }
    VersionHead head;
    std::memcpy(&head, resource, sizeof head);
    if (head.value.dwSignature != signature) {
        return {};
    }
    return std::to_string(HIWORD(head.value.dwFileVersionMS)) + '.' +
           std::to_string(LOWORD(head.value.dwFileVersionMS)) + '.' +
           std::to_string(HIWORD(head.value.dwFileVersionLS));
}

} // namespace mordhost
