#include <filesystem>

#include <windows.h>

#include "system/filePath.h"
#include "unit/host/environment.h"

namespace mordhostTest {

std::string EnvironmentText(const std::string& name) {
    wchar_t text[1024];
    const DWORD length = GetEnvironmentVariableW(mordhost::PathOf(name).c_str(), text, 1024);
    return length == 0 || length >= 1024 ? std::string() : mordhost::Utf8Of(std::filesystem::path(text));
}

ScopedVariable::ScopedVariable(const std::string& name, const std::string& value)
    : m_name(name), m_former(EnvironmentText(name)) {
    Set(value);
}

ScopedVariable::~ScopedVariable() {
    Set(m_former);
}

void ScopedVariable::Set(const std::string& value) const {
    const std::filesystem::path text = mordhost::PathOf(value);
    SetEnvironmentVariableW(mordhost::PathOf(m_name).c_str(), value.empty() ? nullptr : text.c_str());
}

} // namespace mordhostTest
