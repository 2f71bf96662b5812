// What a 64-bit ELF shared library says of itself to the dynamic linker.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include <elf.h>

#include "abi/file/fileBytes.h"

namespace edge {

struct ElfFile {
    // Throws for a file that is no 64-bit ELF shared library.
    explicit ElfFile(const std::filesystem::path& path);

    std::string soName;
    std::vector<std::string> needed;  // the libraries, in the order of the dynamic section
    std::vector<std::string> exports; // names of the defined symbols that others see
    bool hasRunPath = false;
    bool hasTextRelocations = false;
    bool hasExecutableStack = true; // what a file that says nothing gets

private:
    void ReadDynamic(const Elf64_Shdr& section);
    void ReadSymbols(const Elf64_Shdr& section);
    Elf64_Shdr Section(size_t index) const;

    FileBytes m_bytes;
    Elf64_Ehdr m_header;
};

} // namespace edge
