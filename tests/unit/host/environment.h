// The environment variables of this process.
#pragma once

#include <string>

namespace mordhostTest {

// The value in UTF-8; empty if the variable is not set.
std::string EnvironmentText(const std::string& name);

// Changes a variable of this process and its children until the end of the scope.
class ScopedVariable {
public:
    ScopedVariable(const std::string& name, const std::string& value);
    ~ScopedVariable();
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;

private:
    // Sets the variable, or removes it if the value is empty.
    void Set(const std::string& value) const;

    const std::string m_name;
    const std::string m_former;
};

} // namespace mordhostTest
