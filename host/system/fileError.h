// The error of a file that cannot be opened, read or written.
#pragma once

#include <stdexcept>

namespace mordhost {

// what() names the file and gives the reason.
class FileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace mordhost
