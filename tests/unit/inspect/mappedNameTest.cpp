// Names in replies of both layouts, and replies that lead out of themselves.
#include <cstddef>
#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include "kit/system/published/queryLayouts.h"
#include "kit/system/scriptedProcess/lowStack.h"
#include "mappedName.h"

namespace {

using mordinspect::MappedName;

// A reply with a header that leads to `offset` from its beginning, and "abcd" in its last eight bytes.
template <typename P>
struct Reply {
    published::UnicodeString<P> header{};
    WideChar text[4] = {'a', 'b', 'c', 'd'};

    Reply(int64_t offset, uint16_t length) {
        header.Length = length;
        header.Buffer = static_cast<P>(reinterpret_cast<intptr_t>(this) + offset);
    }
    std::string Name() const {
        const auto name = MappedName(this, sizeof *this, sizeof(P) == 4);
        return std::string(name.begin(), name.end());
    }
};

template <typename P>
void ExpectNamesWithinTheReply() {
    constexpr int64_t text = offsetof(Reply<P>, text);
    EXPECT_EQ(Reply<P>(text, 8).Name(), "abcd");
    EXPECT_EQ(Reply<P>(text, 4).Name(), "ab");
    EXPECT_EQ(Reply<P>(text, 0).Name(), "");
    EXPECT_EQ(Reply<P>(text, 0xFFFE).Name(), "abcd") << "more than there is";
    EXPECT_EQ(Reply<P>(text + 6, 8).Name(), "d");
    EXPECT_EQ(Reply<P>(text + 7, 8).Name(), "") << "half a character";
    EXPECT_EQ(Reply<P>(text + 8, 8).Name(), "") << "behind the reply";
    EXPECT_EQ(Reply<P>(text + 4096, 8).Name(), "");
    EXPECT_EQ(Reply<P>(-2, 8).Name(), "") << "before the reply";
}

TEST(MappedNames, AreTakenFromTheirOwnReplyAlone) {
    scripted::OnLowStack([] {
        ExpectNamesWithinTheReply<uint32_t>();
        ExpectNamesWithinTheReply<uint64_t>();
    });
}

} // namespace
