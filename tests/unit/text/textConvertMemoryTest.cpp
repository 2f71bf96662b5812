// When a conversion allocates heap memory. The scripted answer is short enough for the result object itself, so
// that what is counted is the destination alone.
#include <new>

#include <gtest/gtest.h>

#include "kit/heap/countedHeap.h"
#include "kit/siblings/scriptedSiblings.h"
#include "text/textConvert.h"

namespace {

using kit::AllocationCounter;
using kit::FailingNew;
using kit::NewBlocksHeld;
using Sizes = std::vector<size_t>;
using Wide = std::basic_string<WideChar>;

class TextConvertMemory : public testing::Test {
protected:
    void SetUp() override {
        siblings.Reset();
        Utf8ToWide("x"); // the converter is there
        siblings.onConvert = [](uint32_t command, TextConversionRequest& request) {
            if (command == CONVERT_NARROW_TO_WIDE) {
                std::char_traits<WideChar>::copy(static_cast<WideChar*>(request.destination), WIDE("out"), 4);
            } else {
                std::char_traits<char>::copy(static_cast<char*>(request.destination), "out", 4);
            }
            return std::optional(0);
        };
    }

    // The blocks that the conversion of `length` characters takes.
    static Sizes OfNarrow(size_t length) {
        const std::string source(length, 's');
        AllocationCounter counter;
        const Wide result = Utf8ToWide(source.c_str());
        Sizes sizes = counter.Sizes();
        EXPECT_EQ(result, WIDE("out"));
        return sizes;
    }
    static Sizes OfWide(size_t length) {
        const Wide source(length, WideChar{'s'});
        AllocationCounter counter;
        const std::string result = WideToUtf8(source.c_str());
        Sizes sizes = counter.Sizes();
        EXPECT_EQ(result, "out");
        return sizes;
    }

    kit::ScriptedSiblings& siblings = kit::ScriptedSiblings::Instance();
};

TEST_F(TextConvertMemory, NarrowTextOf1022BytesUsesTheStack) {
    EXPECT_EQ(OfNarrow(1), Sizes());
    EXPECT_EQ(OfNarrow(1022), Sizes());
}

TEST_F(TextConvertMemory, NarrowTextOf1023BytesTakesItsCapacityTimesTwoFromTheHeap) {
    EXPECT_EQ(OfNarrow(1023), Sizes{2050 * 2});
    EXPECT_EQ(OfNarrow(5000), Sizes{10004 * 2});
}

TEST_F(TextConvertMemory, WideTextOf1024UnitsUsesTheStack) {
    EXPECT_EQ(OfWide(1), Sizes());
    EXPECT_EQ(OfWide(1024), Sizes());
}

TEST_F(TextConvertMemory, WideTextOf1025UnitsTakesFourBytesForEachFromTheHeap) {
    EXPECT_EQ(OfWide(1025), Sizes{4100});
    EXPECT_EQ(OfWide(5000), Sizes{20000});
}

TEST_F(TextConvertMemory, HeapBufferIsGivenBack) {
    const std::string narrow(5000, 's');
    const Wide wide(5000, WideChar{'s'});
    const long before = NewBlocksHeld();
    Utf8ToWide(narrow.c_str());
    WideToUtf8(wide.c_str());
    EXPECT_EQ(NewBlocksHeld(), before);
}

TEST_F(TextConvertMemory, ExhaustedMemoryForTheBufferPassesThroughAndNothingIsHeld) {
    const std::string narrow(5000, 's');
    const Wide wide(5000, WideChar{'s'});
    const long before = NewBlocksHeld();
    {
        const FailingNew failing(1);
        EXPECT_THROW(Utf8ToWide(narrow.c_str()), std::bad_alloc);
    }
    {
        const FailingNew failing(1);
        EXPECT_THROW(WideToUtf8(wide.c_str()), std::bad_alloc);
    }
    EXPECT_EQ(siblings.ConverterReferences(), 0);
    EXPECT_EQ(NewBlocksHeld(), before);
}

TEST_F(TextConvertMemory, ExhaustedMemoryForTheResultGivesReferenceAndBufferBack) {
    siblings.onConvert = [](uint32_t, TextConversionRequest& request) {
        std::char_traits<char>::assign(static_cast<char*>(request.destination), 500, 'x');
        static_cast<char*>(request.destination)[500] = '\0';
        return std::optional(0);
    };
    const Wide wide(5000, WideChar{'s'});
    const long before = NewBlocksHeld();
    {
        const FailingNew failing(2); // the first is the buffer
        EXPECT_THROW(WideToUtf8(wide.c_str()), std::bad_alloc);
    }
    EXPECT_EQ(siblings.ConverterReferences(), 0);
    EXPECT_EQ(NewBlocksHeld(), before);
    EXPECT_EQ(WideToUtf8(wide.c_str()), std::string(500, 'x'));
}

// A separate process, in which the first conversion finds no converter.
TEST(TextConvertMemoryWithoutConverter, HeapBufferIsGivenBack) {
    kit::ScriptedSiblings::Instance().Reset();
    kit::ScriptedSiblings::Instance().UnloadZelkBase();
    const std::string narrow(5000, 's');
    const Wide wide(5000, WideChar{'s'});
    EXPECT_EQ(Utf8ToWide(narrow.c_str()), Wide());
    const long before = NewBlocksHeld();
    EXPECT_EQ(Utf8ToWide(narrow.c_str()), Wide());
    EXPECT_EQ(WideToUtf8(wide.c_str()), "");
    EXPECT_EQ(NewBlocksHeld(), before);
}

} // namespace
