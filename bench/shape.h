// The sizes of events at which decisions are measured.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace bench {

struct Shape {
    uint32_t rules; // R: rules of the event
    uint32_t mids;  // M: machine ids that the host holds under each
};

constexpr std::array<Shape, 5> shapes{{{1, 1}, {8, 8}, {64, 16}, {256, 64}, {1000, 100}}};

// N: the number of machine ids that the allow list has under the type of the rules.
constexpr std::array<uint32_t, 3> listSizes{10, 1000, 100000};

// The name of a figure: "Event/8/8/1000".
inline std::string FigureName(const std::string& what, const Shape& shape, uint32_t listSize) {
    return what + '/' + std::to_string(shape.rules) + '/' + std::to_string(shape.mids) + '/' + std::to_string(listSize);
}

} // namespace bench
