#include "abi/file/peFile.h"

#include <stdexcept>

namespace edge {

namespace {

// Offsets and sizes of the format.
constexpr size_t peOffsetField = 0x3C;
constexpr size_t coffHeader = 4; // behind the signature
constexpr size_t coffHeaderSize = 20;
constexpr size_t dllCharacteristicsField = 70; // of the optional header
constexpr size_t dataDirectory = 96;           // of the optional header
constexpr size_t sectionSize = 40;
constexpr size_t importSize = 20;
constexpr uint32_t peSignature = 0x00004550;
constexpr uint16_t pe32Magic = 0x10B;

enum DirectoryIndex : uint32_t { EXPORTS = 0, IMPORTS = 1, RESOURCES = 2, RELOCATIONS = 5, DELAYED_IMPORTS = 13 };

constexpr uint32_t versionResource = 16;
constexpr uint32_t subdirectoryBit = 0x80000000;

} // namespace

PeFile::PeFile(const std::filesystem::path& path) : m_bytes(path) {
    const size_t pe = m_bytes.At<uint32_t>(peOffsetField);
    m_optionalHeader = pe + coffHeader + coffHeaderSize;
    if (m_bytes.At<uint32_t>(pe) != peSignature || m_bytes.At<uint16_t>(m_optionalHeader) != pe32Magic) {
        throw std::runtime_error(path.string() + " is no PE32");
    }
    machine = m_bytes.At<uint16_t>(pe + coffHeader);
    m_sectionCount = m_bytes.At<uint16_t>(pe + coffHeader + 2);
    m_sections = m_optionalHeader + m_bytes.At<uint16_t>(pe + coffHeader + 16);
    characteristics = m_bytes.At<uint16_t>(pe + coffHeader + 18);
    dllCharacteristics = m_bytes.At<uint16_t>(m_optionalHeader + dllCharacteristicsField);
    hasDelayedImports = Directory(DELAYED_IMPORTS) != 0;
    hasRelocations = Directory(RELOCATIONS) != 0;
    ReadExports();
    ReadImports();
    ReadVersion();
}

size_t PeFile::Directory(uint32_t index) const {
    const auto address = m_bytes.At<uint32_t>(m_optionalHeader + dataDirectory + 8 * index);
    return address == 0 ? 0 : Place(address);
}

size_t PeFile::Place(uint32_t address) const {
    for (size_t i = 0; i < m_sectionCount; ++i) {
        const size_t section = m_sections + i * sectionSize;
        const auto start = m_bytes.At<uint32_t>(section + 12);
        const auto size = m_bytes.At<uint32_t>(section + 16);
        if (address >= start && address - start < size) {
            return m_bytes.At<uint32_t>(section + 20) + (address - start);
        }
    }
    throw std::out_of_range("an address outside the sections");
}

void PeFile::ReadExports() {
    const size_t directory = Directory(EXPORTS);
    if (directory == 0) {
        throw std::runtime_error("no exports");
    }
    exportName = m_bytes.TextAt(Place(m_bytes.At<uint32_t>(directory + 12)));
    const auto base = m_bytes.At<uint32_t>(directory + 16);
    exportCount = m_bytes.At<uint32_t>(directory + 20);
    const auto nameCount = m_bytes.At<uint32_t>(directory + 24);
    const size_t names = Place(m_bytes.At<uint32_t>(directory + 32));
    const size_t ordinals = Place(m_bytes.At<uint32_t>(directory + 36));
    for (size_t i = 0; i < nameCount; ++i) {
        exports.push_back({m_bytes.TextAt(Place(m_bytes.At<uint32_t>(names + 4 * i))),
                           base + m_bytes.At<uint16_t>(ordinals + 2 * i)});
    }
}

void PeFile::ReadImports() {
    for (size_t import = Directory(IMPORTS); import != 0; import += importSize) {
        const auto name = m_bytes.At<uint32_t>(import + 12);
        if (name == 0) {
            return;
        }
        importsFrom.push_back(m_bytes.TextAt(Place(name)));
    }
}

// The tree of resources has three levels: type, name, language.
void PeFile::ReadVersion() {
    const size_t root = Directory(RESOURCES);
    if (root == 0) {
        return;
    }
    const auto firstEntry = [](size_t table) { return table + 16; };
    size_t entry = firstEntry(root);
    const size_t count = size_t{m_bytes.At<uint16_t>(root + 12)} + m_bytes.At<uint16_t>(root + 14);
    for (size_t i = 0; i < count; ++i, entry += 8) {
        if (m_bytes.At<uint32_t>(entry) == versionResource) {
            uint32_t offset = m_bytes.At<uint32_t>(entry + 4);
            while ((offset & subdirectoryBit) != 0) {
                offset = m_bytes.At<uint32_t>(firstEntry(root + (offset & ~subdirectoryBit)) + 4);
            }
            const size_t data = root + offset;
            version = m_bytes.Range(Place(m_bytes.At<uint32_t>(data)), m_bytes.At<uint32_t>(data + 4));
        }
    }
}

} // namespace edge
