#include "host/environment.h"

#include <cstdlib>

namespace mordhostTest {

std::string EnvironmentText(const char* name) {
    const char* const text = std::getenv(name);
    return text == nullptr ? "" : text;
}

} // namespace mordhostTest
