// Short inputs for long texts.
//
// A repetition in an input is the byte 0x1D, a count, a length and a body of that length. The body is repeated; each
// byte 0x1E in it becomes the decimal number of the repetition, from 0 on, so that the copies can differ. Everything
// else is copied as it is. A repetition inside a body has no effect.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

// The share of the inputs that run at full scale, which takes much longer: see IsOneIn. It has no divisor in
// common with the other shares, so that each combination of them comes up.
inline constexpr uint32_t scaleOneIn = 31;

// No text grows beyond about this size.
inline constexpr size_t mostExpanded = 256 * 1024;

// The text of an input. A body is repeated 8 * count times at full scale, else count % 8 times.
std::string Expand(const uint8_t* data, size_t size, bool atFullScale);
