// A file that a run writes.
#pragma once

#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace mordhost {

// Output that was lost: what() says of which file.
class OutputError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class OutputFile {
public:
    // Creates or empties the file, as bytes. Throws FileError.
    explicit OutputFile(const std::string& name);

    void Write(std::string_view text);

    // Hands what was written to the system. Throws OutputError when some of it was lost.
    void Flush();

private:
    std::string m_name;
    std::ofstream m_stream;
};

} // namespace mordhost
