// Offers documents to the library, outside of any run.
#pragma once

#include <filesystem>
#include <string>

#include "decide/dotHost.h"
#include "decide/libraries.h"
#include "decide/recordLog.h"
#include "policy/memoryDotStore.h"

namespace mordhost {

// At most one per process at a time, and none beside a DecisionSession. For use by one thread.
class LibraryTrial {
public:
    // Loads the libraries from `directory` and initialises the object. Throws LoadError and RunError.
    explicit LibraryTrial(const std::filesystem::path& directory);
    ~LibraryTrial();
    LibraryTrial(const LibraryTrial&) = delete;
    LibraryTrial& operator=(const LibraryTrial&) = delete;

    // Whether the library accepts the document.
    bool TakesAllowList(const std::string& text);
    bool TakesActions(std::string text);

private:
    MemoryDotStore m_store{DotTable()};
    DotHost m_dots{m_store};
    Libraries m_libraries;
    RecordLog m_log;
};

} // namespace mordhost
