#include "unit/siblings/temporaryFolder.h"

#include <fstream>
#include <iterator>
#include <random>

namespace siblingTest {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
    std::random_device random;
    do {
        // Beyond ASCII, so that every path of the tests is.
        m_path = fs::temp_directory_path() / fs::path(WIDE("siblings-\u00E4\u4E16-"));
        m_path += std::to_string(random());
    } while (!fs::create_directory(m_path));
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
}

WideString TemporaryFolder::Text() const {
    return m_path.string<WideChar>();
}

WideString TemporaryFolder::TextWithSeparator() const {
    return (m_path / "").string<WideChar>();
}

std::string ReadFile(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void WriteFile(const fs::path& file, const std::string& bytes) {
    std::ofstream(file, std::ios::binary) << bytes;
}

} // namespace siblingTest
