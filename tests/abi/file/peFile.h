// What a 32-bit PE file says of itself.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "abi/file/fileBytes.h"

namespace edge {

struct PeExport {
    std::string name;
    uint32_t ordinal;
    bool operator==(const PeExport&) const = default;
};

struct PeFile {
    // Throws for a file that is no PE32.
    explicit PeFile(const std::filesystem::path& path);

    uint16_t machine;
    uint16_t characteristics;
    uint16_t dllCharacteristics;
    std::string exportName;               // the file name that the export directory bears
    uint32_t exportCount;                 // functions, named or not
    std::vector<PeExport> exports;        // those with a name
    std::vector<std::string> importsFrom; // the libraries, in the order of the import directory
    bool hasDelayedImports;
    bool hasRelocations;
    std::string version; // the version resource's bytes; empty when there is none

private:
    // An entry of the data directory: the file offset of its contents, 0 when it is empty.
    size_t Directory(uint32_t index) const;
    // The place in the file of a relative virtual address; throws when no section holds it.
    size_t Place(uint32_t address) const;

    void ReadExports();
    void ReadImports();
    void ReadVersion();

    FileBytes m_bytes;
    size_t m_optionalHeader = 0;
    size_t m_sections = 0;
    uint16_t m_sectionCount = 0;
};

} // namespace edge
