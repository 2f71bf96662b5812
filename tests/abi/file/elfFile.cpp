#include "abi/file/elfFile.h"

#include <stdexcept>

namespace edge {

ElfFile::ElfFile(const std::filesystem::path& path) : m_bytes(path), m_header(m_bytes.At<Elf64_Ehdr>(0)) {
    if (std::string(reinterpret_cast<const char*>(m_header.e_ident), SELFMAG) != ELFMAG ||
        m_header.e_ident[EI_CLASS] != ELFCLASS64 || m_header.e_type != ET_DYN) {
        throw std::runtime_error(path.string() + " is no 64-bit shared library");
    }
    for (size_t i = 0; i < m_header.e_phnum; ++i) {
        const auto segment = m_bytes.At<Elf64_Phdr>(m_header.e_phoff + i * sizeof(Elf64_Phdr));
        if (segment.p_type == PT_GNU_STACK) {
            hasExecutableStack = (segment.p_flags & PF_X) != 0;
        }
    }
    for (size_t i = 0; i < m_header.e_shnum; ++i) {
        const Elf64_Shdr section = Section(i);
        if (section.sh_type == SHT_DYNAMIC) {
            ReadDynamic(section);
        } else if (section.sh_type == SHT_DYNSYM) {
            ReadSymbols(section);
        }
    }
}

Elf64_Shdr ElfFile::Section(size_t index) const {
    return m_bytes.At<Elf64_Shdr>(m_header.e_shoff + index * sizeof(Elf64_Shdr));
}

void ElfFile::ReadDynamic(const Elf64_Shdr& section) {
    const size_t texts = Section(section.sh_link).sh_offset;
    for (size_t offset = 0; offset < section.sh_size; offset += sizeof(Elf64_Dyn)) {
        const auto entry = m_bytes.At<Elf64_Dyn>(section.sh_offset + offset);
        switch (entry.d_tag) {
        case DT_NULL:
            return;
        case DT_SONAME:
            soName = m_bytes.TextAt(texts + entry.d_un.d_val);
            break;
        case DT_NEEDED:
            needed.push_back(m_bytes.TextAt(texts + entry.d_un.d_val));
            break;
        case DT_RPATH:
        case DT_RUNPATH:
            hasRunPath = true;
            break;
        case DT_TEXTREL:
            hasTextRelocations = true;
            break;
        default:
            break;
        }
    }
}

void ElfFile::ReadSymbols(const Elf64_Shdr& section) {
    const size_t texts = Section(section.sh_link).sh_offset;
    for (size_t offset = 0; offset < section.sh_size; offset += sizeof(Elf64_Sym)) {
        const auto symbol = m_bytes.At<Elf64_Sym>(section.sh_offset + offset);
        if (symbol.st_shndx != SHN_UNDEF && ELF64_ST_BIND(symbol.st_info) != STB_LOCAL) {
            exports.push_back(m_bytes.TextAt(texts + symbol.st_name));
        }
    }
}

} // namespace edge
