// Where the keys of the hash come from, and when they are drawn. Each case in a process of its own.
#include <algorithm>
#include <sstream>

#include "kit/host/receiverFields.h"
#include "kit/siblings/dynamicLibrary.h"
#include "kit/system/process.h"
#include "kit/system/scriptedSystem.h"
#include "unit/mordRev/keyWords.h"

namespace {

using Texts = std::vector<std::string>;

class HashKeySource : public kit::ScriptedSystemFixture {
protected:
    using Sizes = std::vector<size_t>;

    static constexpr size_t draw = 264; // 66 words of four bytes
};

// What the source gives, as words; the last factor of each key is made odd.
std::vector<uint32_t> WordsOf(unsigned char first, unsigned char step) {
    std::vector<uint32_t> words;
    unsigned char next = first;
    for (size_t i = 0; i < 3 * wordsOfKey; ++i) {
        uint32_t word = 0;
        for (int byte = 0; byte < 4; ++byte) {
            word |= static_cast<uint32_t>(next) << 8 * byte;
            next = static_cast<unsigned char>(next + step);
        }
        words.push_back(i % wordsOfKey == wordsOfKey - 2 ? word | 1 : word);
    }
    return words;
}

TEST_F(HashKeySource, IsTheSystemsOwnWhoseBytesAreTheKeys) {
    EXPECT_EQ(Words(DrawHashKeys()), WordsOf(0, 1));
    system.nextRandomByte = 7;
    system.randomStep = 77;
    EXPECT_EQ(Words(DrawHashKeys()), WordsOf(7, 77));
    EXPECT_EQ(system.randomFills, (Sizes{draw, draw}));
}

TEST_F(HashKeySource, IsAskedOnceWhenTheReceiverIsCreatedAndNeverAgain) {
    CMordRecv first;
    EXPECT_EQ(system.randomFills, Sizes{draw});
    system.nextRandomByte = 100;
    CMordRecv second;
    EXPECT_EQ(Words(ProcessHashKeys()), WordsOf(0, 1));
    EXPECT_TRUE(first.SetAllowList(R"({"mid_list":[{"mid":"MID","protocol":["dns"]}]})"));
    EXPECT_TRUE(second.SetAllowList(R"({"mid_list":[{"mid":"MID","protocol":["dns"]}]})"));
    const std::vector<std::string_view> ids = {"OTHER", "MID"};
    std::string match;
    EXPECT_TRUE(first.IsMatchmid("dns", ids, &match));
    EXPECT_EQ(system.randomFills, Sizes{draw});
    EXPECT_EQ(TakeCalls(), Texts{});
}

// A bit that is the same in two hundred draws by chance: once in 10^57 runs.
TEST_F(HashKeySource, ThatFailsIsReplacedByOneThatChangesEachBitFromDrawToDraw) {
    std::vector<uint32_t> ones(3 * wordsOfKey, 0), zeros(3 * wordsOfKey, 0);
    for (int drawn = 0; drawn < 200; ++drawn) {
        system.Reset();
        system.randomFails = true; // the same bytes each time, which must not become the keys
        const std::vector<uint32_t> words = Words(DrawHashKeys());
        ASSERT_NE(words, WordsOf(0, 1));
        for (size_t i = 0; i < words.size(); ++i) {
            ones[i] |= words[i];
            zeros[i] |= ~words[i];
        }
    }
    for (size_t i = 0; i < ones.size(); ++i) {
        const bool isLowOfLast = i % wordsOfKey == wordsOfKey - 2;
        EXPECT_EQ(ones[i], 0xFFFFFFFFU) << i;
        EXPECT_EQ(zeros[i], isLowOfLast ? 0xFFFFFFFEU : 0xFFFFFFFFU) << i;
    }
}

// The keys that each of several processes printed.
std::vector<Texts> KeysOfProcesses(const std::string& program) {
    const auto file = kit::ProgramFolder() / (program + MORDREV_PROGRAM_ENDING);
    std::vector<Texts> all;
    for (int i = 0; i < 3; ++i) {
        kit::ProcessSetup setup;
        setup.program = file.string();
        const auto result = kit::RunProcess(setup);
        EXPECT_EQ(result.code, 0) << result.error;
        std::istringstream lines(result.output);
        Texts words;
        for (std::string line; std::getline(lines, line);) {
            words.push_back(line);
        }
        EXPECT_EQ(words.size(), 3 * wordsOfKey) << result.output;
        all.push_back(words);
    }
    return all;
}

// By chance a word is the same in two of the processes once in ten million runs.
TEST(HashKeysOfProcesses, DifferInEveryWordWithTheSystemsSourceAndWithoutIt) {
    for (const char* const program : {"printKeysOfSystem", "printKeysWithoutSource"}) {
        const std::vector<Texts> keys = KeysOfProcesses(program);
        for (size_t word = 0; word < 3 * wordsOfKey; ++word) {
            std::vector<std::string> values = {keys[0].at(word), keys[1].at(word), keys[2].at(word)};
            std::sort(values.begin(), values.end());
            EXPECT_EQ(std::unique(values.begin(), values.end()), values.end()) << program << " " << word;
        }
    }
}

} // namespace
