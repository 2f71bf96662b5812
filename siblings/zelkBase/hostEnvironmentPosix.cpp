#include "zelkBase/hostEnvironment.h"

#include <climits>
#include <cstdlib>

#include <unistd.h>

namespace siblings {

const WideChar separator = u'/';

WideString EnvironmentText(const WideChar* name) {
    const char* const value = secure_getenv(ToUtf8(name).c_str());
    return value == nullptr ? WideString() : ToWide(value);
}

WideString AbsolutePath(const WideString& path) {
    if (path.starts_with(separator)) {
        return path;
    }
    char directory[PATH_MAX];
    if (getcwd(directory, sizeof directory) == nullptr) {
        return {};
    }
    return ToWide(directory) + separator + path;
}

bool IsSeparator(WideChar unit) {
    return unit == separator;
}

} // namespace siblings
