// A run that fails by no fault of its arguments and documents.
#pragma once

#include <stdexcept>

namespace mordhost {

// what() says what could not be done, and why: output was lost, or the system refuses something.
class RunError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace mordhost
