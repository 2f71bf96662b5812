#include "zelkBase/machineIdFile.h"

#include <fstream>

namespace siblings {

std::string ReadMachineIdFile(const char* path) {
    constexpr size_t digits = 32;
    std::string text(digits + 2, '\0'); // one more, to detect a longer text
    std::ifstream file(path, std::ios::binary);
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<size_t>(file.gcount()));
    if (text.ends_with('\n')) {
        text.pop_back();
    }
    const bool wellFormed = text.size() == digits &&
                            text.find_first_not_of("0123456789abcdefABCDEF") == std::string::npos &&
                            text.find_first_not_of('0') != std::string::npos;
    return wellFormed ? text : std::string();
}

} // namespace siblings
