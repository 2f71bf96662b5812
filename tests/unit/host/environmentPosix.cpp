#include <cstdlib>

#include "unit/host/environment.h"

namespace mordhostTest {

std::string EnvironmentText(const std::string& name) {
    const char* const text = std::getenv(name.c_str());
    return text == nullptr ? "" : text;
}

ScopedVariable::ScopedVariable(const std::string& name, const std::string& value)
    : m_name(name), m_former(EnvironmentText(name)) {
    Set(value);
}

ScopedVariable::~ScopedVariable() {
    Set(m_former);
}

void ScopedVariable::Set(const std::string& value) const {
    if (value.empty()) {
        unsetenv(m_name.c_str());
    } else {
        setenv(m_name.c_str(), value.c_str(), 1);
    }
}

} // namespace mordhostTest
