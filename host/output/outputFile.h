// An output file of a run.
#pragma once

#include <fstream>
#include <string>
#include <string_view>

namespace mordhost {

class OutputFile {
public:
    // Creates or truncates the file, in binary mode. Throws FileError, and Stopped at a stop request.
    explicit OutputFile(const std::string& name);

    // Throws RunError if this or earlier output was lost.
    void Write(std::string_view text);

    // Passes all output to the system. Throws RunError as above.
    void Flush();

private:
    std::string m_name;
    std::ofstream m_stream;
};

} // namespace mordhost
