// Conversion through the converter of the base library: its requests, and the results of its answers. The converter
// is looked up once in a process, so that each case needs a separate process.
#include <chrono>
#include <cstddef>
#include <thread>

#include "unit/text/textConvertFixture.h"

namespace {

using Texts = std::vector<std::string>;
using Wide = std::basic_string<WideChar>;

static_assert(offsetof(TextConversionRequest, codePage) == 0);
static_assert(offsetof(TextConversionRequest, sourceLength) == 4);
static_assert(offsetof(TextConversionRequest, destinationCapacity) == 8);
static_assert(offsetof(TextConversionRequest, reserved) == 12);
static_assert(offsetof(TextConversionRequest, source) == 16);
static_assert(offsetof(TextConversionRequest, destination) == 16 + sizeof(void*));
static_assert(CONVERT_NARROW_TO_WIDE == 0x10101 && CONVERT_WIDE_TO_NARROW == 0x10100);

TEST_F(TextConvert, NullAndEmptyGiveAnEmptyTextWithoutTheConverterBeingCreated) {
    EXPECT_EQ(Utf8ToWide(nullptr), Wide());
    EXPECT_EQ(Utf8ToWide(""), Wide());
    EXPECT_EQ(WideToUtf8(nullptr), "");
    EXPECT_EQ(WideToUtf8(WIDE("")), "");
    EXPECT_EQ(siblings.calls.Take(), Texts());
    EXPECT_EQ(siblings.Conversions(), Texts());
}

TEST_F(TextConvert, ConverterIsCreatedOnceAtTheFirstConversionOfEitherKind) {
    EXPECT_EQ(WideToUtf8(WIDE("a")), "a");
    EXPECT_EQ(siblings.calls.Take(), Texts{"create ITextConverter"});
    EXPECT_EQ(Utf8ToWide("b"), WIDE("b"));
    EXPECT_EQ(WideToUtf8(WIDE("c")), "c");
    EXPECT_EQ(siblings.calls.Take(), Texts());
}

TEST_F(TextConvert, TextComesOutInTheOtherForm) {
    EXPECT_EQ(Utf8ToWide("plain"), WIDE("plain"));
    EXPECT_EQ(Utf8ToWide("gr\xC3\xBC\xC3\x9F \xE4\xB8\xAD\xE6\x96\x87 \xF0\x9F\x98\x80"),
              WIDE("gr\u00FC\u00DF \u4E2D\u6587 \U0001F600"));
    EXPECT_EQ(WideToUtf8(WIDE("plain")), "plain");
    EXPECT_EQ(WideToUtf8(WIDE("gr\u00FC\u00DF \u4E2D\u6587 \U0001F600")),
              "gr\xC3\xBC\xC3\x9F \xE4\xB8\xAD\xE6\x96\x87 \xF0\x9F\x98\x80");
}

TEST_F(TextConvert, NarrowRequestTellsCodePageLengthInBytesAndTwiceTheLengthAndFour) {
    Utf8ToWide("a");
    Utf8ToWide("\xE4\xB8\xAD");
    EXPECT_EQ(siblings.Conversions(), (Texts{Request("narrow to wide", 1, 6), Request("narrow to wide", 3, 10)}));
}

TEST_F(TextConvert, WideRequestTellsCodePageLengthInUnitsAndFourTimesTheLength) {
    WideToUtf8(WIDE("a"));
    WideToUtf8(WIDE("\U0001F600"));
    EXPECT_EQ(siblings.Conversions(), (Texts{Request("wide to narrow", 1, 4), Request("wide to narrow", 2, 8)}));
}

TEST_F(TextConvert, RequestCarriesTheCommandTheSourceAndADestination) {
    const char* const narrow = "narrow";
    const WideChar* const wide = WIDE("wide");
    std::vector<std::pair<uint32_t, const void*>> seen;
    bool destinations = true;
    siblings.onConvert = [&](uint32_t command, TextConversionRequest& request) {
        seen.emplace_back(command, request.source);
        destinations = destinations && request.destination != nullptr;
        return std::nullopt;
    };
    Utf8ToWide(narrow);
    WideToUtf8(wide);
    EXPECT_EQ(seen, (std::vector<std::pair<uint32_t, const void*>>{{0x10101, narrow}, {0x10100, wide}}));
    EXPECT_TRUE(destinations);
}

TEST_F(TextConvert, TextsAtTheEdgeOfTheStackBufferAndBehindItComeOutWhole) {
    for (const size_t length : {size_t{1021}, size_t{1022}, size_t{1023}, size_t{1024}, size_t{5000}}) {
        const std::string narrow(length, 'n');
        EXPECT_EQ(Utf8ToWide(narrow.c_str()), Wide(length, WideChar{'n'}));
    }
    for (const size_t length : {size_t{1023}, size_t{1024}, size_t{1025}, size_t{1026}, size_t{5000}}) {
        const Wide wide(length, static_cast<WideChar>(0x4E2D)); // three bytes each
        EXPECT_EQ(WideToUtf8(wide.c_str()).size(), 3 * length);
    }
    EXPECT_EQ(siblings.Conversions(),
              (Texts{Request("narrow to wide", 1021, 2046), Request("narrow to wide", 1022, 2048),
                     Request("narrow to wide", 1023, 2050), Request("narrow to wide", 1024, 2052),
                     Request("narrow to wide", 5000, 10004), Request("wide to narrow", 1023, 4092),
                     Request("wide to narrow", 1024, 4096), Request("wide to narrow", 1025, 4100),
                     Request("wide to narrow", 1026, 4104), Request("wide to narrow", 5000, 20000)}));
}

TEST_F(TextConvert, MegabytesComeOutWhole) {
    const std::string narrow(3'000'000, 'x');
    const Wide wide = Utf8ToWide(narrow.c_str());
    EXPECT_EQ(wide.size(), narrow.size());
    EXPECT_EQ(WideToUtf8(wide.c_str()), narrow);
}

TEST_F(TextConvert, NulInTheConvertedOutputEndsTheText) {
    siblings.onConvert = [](uint32_t command, TextConversionRequest& request) {
        if (command == CONVERT_NARROW_TO_WIDE) {
            std::char_traits<WideChar>::copy(static_cast<WideChar*>(request.destination), WIDE("ab\0cd"), 6);
        } else {
            std::char_traits<char>::copy(static_cast<char*>(request.destination), "ab\0cd", 6);
        }
        return std::optional(0);
    };
    EXPECT_EQ(Utf8ToWide("abxcd"), WIDE("ab"));
    EXPECT_EQ(WideToUtf8(WIDE("abxcd")), "ab");
    EXPECT_EQ(Utf8ToWide(std::string(2000, 'x').c_str()), WIDE("ab")) << "on the heap too";
    EXPECT_EQ(WideToUtf8(Wide(2000, WideChar{'x'}).c_str()), "ab") << "on the heap too";
}

TEST_F(TextConvert, ResultOfConvertIsNotLookedAt) {
    int32_t result = 1;
    siblings.onConvert = [&result](uint32_t, TextConversionRequest& request) {
        std::char_traits<char>::copy(static_cast<char*>(request.destination), "out", 4);
        return std::optional(result);
    };
    for (const int32_t each : {1, -1, 0, static_cast<int32_t>(0x80004005)}) {
        result = each;
        EXPECT_EQ(WideToUtf8(WIDE("in")), "out");
    }
}

TEST_F(TextConvert, ConverterThatWritesNothingGivesAnEmptyText) {
    siblings.converterWrites = false;
    EXPECT_EQ(Utf8ToWide("text"), Wide());
    EXPECT_EQ(WideToUtf8(WIDE("text")), "");
    EXPECT_EQ(Utf8ToWide(std::string(3000, 'x').c_str()), Wide());
    EXPECT_EQ(WideToUtf8(Wide(3000, WideChar{'x'}).c_str()), "");
}

TEST_F(TextConvert, ConverterThatWritesNoNulGivesNoMoreThanTheDestinationHolds) {
    siblings.converterWritesNul = false;
    EXPECT_EQ(Utf8ToWide("ab"), WIDE("ab######"));
    EXPECT_EQ(WideToUtf8(WIDE("ab")), "ab######");
    EXPECT_EQ(Utf8ToWide(std::string(3000, 'x').c_str()), Wide(3000, WideChar{'x'}) + Wide(3004, WideChar{'#'}));
    EXPECT_EQ(WideToUtf8(Wide(3000, WideChar{'x'}).c_str()), std::string(3000, 'x') + std::string(9000, '#'));
}

TEST_F(TextConvert, RequestThatTheConverterChangesIsNotReadBack) {
    static char elsewhere[] = "elsewhere";
    siblings.onConvert = [](uint32_t, TextConversionRequest& request) {
        std::char_traits<char>::copy(static_cast<char*>(request.destination), "out", 4);
        request.codePage = 0;
        request.sourceLength = 0xFFFFFFFF;
        request.destinationCapacity = 0xFFFFFFFF;
        request.source = nullptr;
        request.destination = elsewhere;
        return std::optional(0);
    };
    EXPECT_EQ(WideToUtf8(WIDE("in")), "out");
    EXPECT_EQ(WideToUtf8(Wide(3000, WideChar{'x'}).c_str()), "out") << "on the heap too";
}

TEST_F(TextConvert, ReferenceIsHeldAroundEachConvertAndGivenBack) {
    for (int i = 0; i < 3; ++i) {
        Utf8ToWide("a");
        EXPECT_EQ(siblings.ConverterReferences(), 0);
        WideToUtf8(WIDE("a"));
        EXPECT_EQ(siblings.ConverterReferences(), 0);
    }
    EXPECT_TRUE(siblings.converterIsReferencedWithin);
    EXPECT_EQ(siblings.Conversions().size(), 6U);
}

TEST_F(TextConvert, OneReferenceIsTakenForOneCall) {
    std::vector<int> within;
    siblings.onConvert = [&](uint32_t, TextConversionRequest&) {
        within.push_back(siblings.ConverterReferences());
        return std::nullopt;
    };
    Utf8ToWide("a");
    WideToUtf8(WIDE("a"));
    EXPECT_EQ(within, (std::vector<int>{1, 1}));
}

TEST_F(TextConvert, ConcurrentFirstConversionsCreateOneConverterAndAllGetTheirText) {
    siblings.calls.onAdd = [](const std::string&) { std::this_thread::sleep_for(std::chrono::milliseconds(50)); };
    constexpr size_t callers = 16;
    Texts results(callers);
    std::vector<std::thread> threads;
    for (size_t i = 0; i < callers; ++i) {
        threads.emplace_back([&results, i] {
            const std::string text = "thread " + std::to_string(i);
            for (int round = 0; round < 100; ++round) {
                const Wide wide = Utf8ToWide(text.c_str());
                results[i] = WideToUtf8(wide.c_str());
                if (results[i] != text) {
                    return;
                }
            }
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    for (size_t i = 0; i < callers; ++i) {
        EXPECT_EQ(results[i], "thread " + std::to_string(i));
    }
    EXPECT_EQ(siblings.calls.Take(), Texts{"create ITextConverter"});
    EXPECT_EQ(siblings.Conversions().size(), callers * 200);
    EXPECT_TRUE(siblings.converterIsReferencedWithin);
    EXPECT_EQ(siblings.ConverterReferences(), 0);
}

} // namespace
