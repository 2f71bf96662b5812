// The system does not let its connections be watched.
#pragma once

#include <stdexcept>

namespace mordhost {

// what() says what was asked for and why it was refused.
class LiveError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace mordhost
