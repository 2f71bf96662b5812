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

    // Throws RunError when something that was written was lost, which may come to light at the next call.
    void Write(std::string_view text);

    // Hands what was written to the system. Throws RunError as above.
    void Flush();

private:
    std::string m_name;
    std::ofstream m_stream;
};

} // namespace mordhost
