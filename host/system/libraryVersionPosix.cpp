#include "system/libraryVersion.h"

#include <cstring>
#include <string_view>

#include <dlfcn.h>
#include <link.h>

namespace mordhost {

namespace {

constexpr std::string_view owner = "mordRev";
constexpr ElfW(Word) versionNote = 1;

struct Search {
    ElfW(Addr) base = 0; // of the library
    std::string version;
};

constexpr size_t Aligned(size_t size) {
    return (size + 3) & ~size_t{3};
}

// Finds the version among the notes of one segment.
std::string VersionIn(const char* notes, size_t size) {
    while (size >= sizeof(ElfW(Nhdr))) {
        ElfW(Nhdr) head;
        std::memcpy(&head, notes, sizeof head);
        const size_t whole = sizeof head + Aligned(head.n_namesz) + Aligned(head.n_descsz);
        if (whole > size) {
            break;
        }
        const char* const name = notes + sizeof head;
        const std::string_view named(name, strnlen(name, head.n_namesz));
        if (head.n_type == versionNote && named == owner) {
            const char* const text = name + Aligned(head.n_namesz);
            return std::string(text, strnlen(text, head.n_descsz));
        }
        notes += whole;
        size -= whole;
    }
    return {};
}

int Visit(dl_phdr_info* info, size_t, void* data) {
    auto& search = *static_cast<Search*>(data);
    if (info->dlpi_addr != search.base) {
        return 0;
    }
    for (ElfW(Half) i = 0; i < info->dlpi_phnum && search.version.empty(); ++i) {
        const ElfW(Phdr)& segment = info->dlpi_phdr[i];
        if (segment.p_type == PT_NOTE) {
            search.version = VersionIn(reinterpret_cast<const char*>(info->dlpi_addr + segment.p_vaddr), // NOLINT
                                       segment.p_memsz);
        }
    }
    return 1;
}

} // namespace

std::string VersionOfLibrary(void* library) {
    link_map* map = nullptr;
    if (dlinfo(library, RTLD_DI_LINKMAP, &map) != 0) {
        return {};
    }
    Search search;
    search.base = map->l_addr;
    dl_iterate_phdr(Visit, &search);
    return search.version;
}

} // namespace mordhost
