// A folder of a test's own, which goes with all that is in it.
#pragma once

#include <filesystem>
#include <string>

#include "unit/siblings/systemKit.h"

namespace siblingTest {

class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const { return m_path; }

    // As wide text, without and with a separator at the end.
    WideString Text() const;
    WideString TextWithSeparator() const;

private:
    std::filesystem::path m_path;
};

// The bytes of a file; empty if it is not there.
std::string ReadFile(const std::filesystem::path& file);

void WriteFile(const std::filesystem::path& file, const std::string& bytes);

} // namespace siblingTest
