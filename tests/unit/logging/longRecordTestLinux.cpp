// A record that is longer than an int counts keeps its end: the stream advances its buffer in steps of an int. Such a
// record is longer than 32-bit Windows can hold.
#include <algorithm>
#include <limits>
#include <string_view>

#include <gtest/gtest.h>

#include "kit/system/repeatedMemoryLinux.h"
#include "logging/logStream.h"

namespace {

TEST(LongRecord, TextBehindMoreCharactersThanAnIntCountsIsAtTheEnd) {
    constexpr size_t length = size_t{std::numeric_limits<int>::max()} + 10;
    const kit::RepeatedMemory memory(length * sizeof(WideChar));
    auto* const text = static_cast<WideChar*>(memory.Data());
    std::fill_n(text, kit::RepeatedMemory::period / sizeof(WideChar), WideChar{'x'});

    Base::CSmartStream stream;
    stream.Append({text, length});
    stream.Append(WIDE("end"));
    ASSERT_TRUE(stream.good());
    EXPECT_EQ(std::basic_string_view<WideChar>(stream.Text() + length, 4),
              std::basic_string_view<WideChar>(WIDE("end"), 4));
}

} // namespace
