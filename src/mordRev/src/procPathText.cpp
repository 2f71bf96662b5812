#include "mordRev/src/procPathText.h"

void LowerCaseAscii(std::string& text) {
    for (char& c : text) {
        if (c >= 'A' && c <= 'Z') {
            c = static_cast<char>(c - 'A' + 'a');
        }
    }
}

std::string ExtractProcName(const std::string& path) {
    return path.substr(path.find_last_of("/\\") + 1); // npos + 1 is 0
}
