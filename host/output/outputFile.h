// A file that a run writes.
#pragma once

#include <fstream>
#include <string>
#include <string_view>

namespace mordhost {

class OutputFile {
public:
    // Creates or empties the file, as bytes. Throws FileError.
    explicit OutputFile(const std::string& name);

    void Write(std::string_view text);

    // Hands what was written to the system. Throws RunError when some of it was lost.
    void Flush();

private:
    std::string m_name;
    std::ofstream m_stream;
};

} // namespace mordhost
