// The error of a run whose arguments and documents are valid.
#pragma once

#include <stdexcept>

namespace mordhost {

// what() says what failed and why: output was lost, or the system refused a request.
class RunError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace mordhost
