// The environment of this process, for tests.
#pragma once

#include <string>

namespace mordhostTest {

// The variable in UTF-8; empty when it is not set.
std::string EnvironmentText(const std::string& name);

// Gives a variable another value as long as it lives, for this process and those that it starts.
class ScopedVariable {
public:
    ScopedVariable(const std::string& name, const std::string& value);
    ~ScopedVariable();
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;

private:
    // Sets the variable, or takes it out of the environment when the value is empty.
    void Set(const std::string& value) const;

    const std::string m_name;
    const std::string m_former;
};

} // namespace mordhostTest
