// The buffer of a record: growth, exhausted memory, single characters.
#include <string>

#include <gtest/gtest.h>

#include "kit/heap/countedHeap.h"
#include "logging/logStream.h"

namespace {

using kit::AllocationCounter;
using kit::FailingNew;
using Text = std::basic_string<WideChar>;

// Access to the protected overflow function.
class Buffer : public std::basic_streambuf<WideChar> {
public:
    static int_type Overflow(std::basic_streambuf<WideChar>& buffer, int_type unit) {
        return (buffer.*&Buffer::overflow)(unit);
    }
};

// The number of units that a stream accepts without heap memory.
size_t RoomWithoutTheHeap() {
    Base::CSmartStream stream;
    size_t count = 0;
    for (;; ++count) {
        {
            const FailingNew failing(1);
            stream.put(WIDE('x'));
        }
        if (!stream.good()) {
            return count;
        }
    }
}

TEST(RecordText, NeedsNoHeapUpTo511Units) {
    EXPECT_EQ(RoomWithoutTheHeap(), 511U);
}

// Twice the length and a NUL, so that small insertions copy rarely.
TEST(RecordText, GrowsToTwiceItsLength) {
    Base::CSmartStream stream;
    stream.Append(Text(500, WIDE('a')));
    const Text more(100, WIDE('b')), rest(600, WIDE('c'));
    AllocationCounter counter;
    stream.Append(more);
    stream.Append(rest);
    const std::vector<size_t> sizes = counter.Sizes();
    EXPECT_EQ(sizes, std::vector<size_t>{1201 * sizeof(WideChar)});
    EXPECT_EQ(stream.Text(), Text(500, WIDE('a')) + Text(100, WIDE('b')) + Text(600, WIDE('c')));
}

TEST(RecordText, GrowsByCharacters) {
    Base::CSmartStream stream;
    Text expected;
    for (unsigned i = 0; i < 5000; ++i) {
        expected += static_cast<WideChar>(WIDE('A') + i % 50);
        stream.put(expected.back());
    }
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(stream.Text(), expected);
}

TEST(RecordText, ACharacterWithoutMemoryFailsTheStreamUntilItsReset) {
    const size_t room = RoomWithoutTheHeap();
    EXPECT_GT(room, 0U);
    Base::CSmartStream stream;
    const Text full(room, WIDE('a'));
    stream.Append(full);
    EXPECT_TRUE(stream.good());
    {
        const FailingNew failing(1);
        stream.put(WIDE('b'));
        EXPECT_EQ(failing.Failed(), kit::AllocationKind::New);
    }
    EXPECT_TRUE(stream.bad());
    EXPECT_EQ(stream.Text(), full);
    stream.put(WIDE('c')); // lost, although memory is available
    EXPECT_EQ(stream.Text(), full);
    stream.Reset();
    stream.put(WIDE('d'));
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(stream.Text(), Text(WIDE("d")));
}

TEST(RecordText, ATextWithoutMemoryFailsTheStreamUntilItsReset) {
    Base::CSmartStream stream;
    stream.Append(WIDE("before"));
    const Text large(10 * RoomWithoutTheHeap(), WIDE('a'));
    {
        const FailingNew failing(1);
        stream.Append(large);
        EXPECT_EQ(failing.Failed(), kit::AllocationKind::New);
    }
    EXPECT_TRUE(stream.bad());
    stream.Append(WIDE("after")); // lost, although it fits
    EXPECT_EQ(stream.Text(), Text(WIDE("before")));
    stream.Reset();
    stream.Append(WIDE("next"));
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(stream.Text(), Text(WIDE("next")));
}

TEST(RecordText, EndOfFileAddsNothing) {
    using Traits = std::char_traits<WideChar>;
    Base::CSmartStream stream;
    stream.put(WIDE('a'));
    EXPECT_FALSE(Traits::eq_int_type(Buffer::Overflow(*stream.rdbuf(), Traits::eof()), Traits::eof()));
    EXPECT_EQ(stream.Text(), Text(WIDE("a")));
    EXPECT_TRUE(Traits::eq_int_type(Buffer::Overflow(*stream.rdbuf(), Traits::to_int_type(WIDE('b'))),
                                    Traits::to_int_type(WIDE('b'))));
    EXPECT_EQ(stream.Text(), Text(WIDE("ab")));
}

} // namespace
