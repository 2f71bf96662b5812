// What is wrong in a document.
#pragma once

#include <cstddef>
#include <string>

namespace mordhost {

struct Fault {
    std::string code;    // in kebab-case; never changes its meaning
    size_t begin = 0;    // offset of the first byte of the value or name in question
    std::string message; // one sentence without a period
    std::string expected{};
    std::string fix{};
};

} // namespace mordhost
