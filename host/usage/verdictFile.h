// A temporary file of verdicts.
#pragma once

#include <fstream>

#include "usage/temporaryFiles.h"

namespace mordhost {

// Remembers for each event of a recording whether it was allowed. Needs no memory for it.
class VerdictFile {
public:
    // Throws RunError.
    VerdictFile();

    void Write(bool allowed);

    // Ends the writing, or the reading before, and goes back to the first verdict. Throws RunError if not all verdicts
    // could be written.
    void Rewind();

    // Throws RunError if there are no more verdicts: the recording has changed.
    bool Next();

    // Throws RunError if there are more verdicts, as above.
    void RequireEnd();

private:
    TemporaryFiles m_files;
    const std::filesystem::path m_path;
    std::ofstream m_out;
    std::ifstream m_in;
};

} // namespace mordhost
