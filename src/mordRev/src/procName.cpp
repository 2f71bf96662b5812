#include "mordRev/src/procName.h"

std::string ExtractProcName(const std::string& path) {
    return path.substr(path.find_last_of("/\\") + 1); // npos + 1 is 0
}
