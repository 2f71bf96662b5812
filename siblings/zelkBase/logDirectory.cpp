#include "zelkBase/logDirectory.h"

#include "zelkBase/hostEnvironment.h"
#include "zelkBase/ownLibrary.h"

namespace siblings {

WideString LogDirectory() {
    const WideString chosen = EnvironmentText(WIDE("ZELK_LOG_DIR"));
    WideString directory = chosen.empty() ? OwnDirectory() : AbsolutePath(chosen);
    if (!directory.empty() && !IsSeparator(directory.back())) {
        directory += separator;
    }
    return directory;
}

} // namespace siblings
