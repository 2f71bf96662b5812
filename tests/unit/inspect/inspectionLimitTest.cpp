// A target whose memory holds more than mordinspect wants to see.
#include <sstream>

#include "inspectionFixture.h"

namespace {

using namespace scripted;
using mordinspect::Inspection;
using mordinspect::Limits;

class InspectionLimits : public InspectionFixture {
protected:
    template <typename Shown>
    static std::string TextOf(const Shown& shown) {
        std::ostringstream out;
        WriteText(out, shown);
        return out.str();
    }
    template <typename Shown>
    static std::string JsonOf(const Shown& shown) {
        std::ostringstream out;
        WriteJson(out, shown);
        return out.str();
    }

    static bool Has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

    const std::string listName = TargetIs32() ? "modules_32" : "modules_64";
};

TEST_P(InspectionLimits, AListWithoutAnEndIsCutAndSaysSo) {
    for (const size_t back : {0U, 1U}) { // through both modules, and in the last one alone
        Link(1, EntryAddress(back));
        system.reads = 0;
        system.readLimit = 50000; // so that this ends in any case
        system.keepsCalls = false;
        const Inspection seen = Look();
        EXPECT_LT(system.reads, 17000U) << "this list, and the other parts of the process";
        ASSERT_TRUE(Own(seen).value);
        EXPECT_GT(Own(seen).value->size(), 5000U);
        EXPECT_LT(Own(seen).value->size(), 5500U);
        EXPECT_EQ(Told(Own(seen).value->back().path),
                  back == 1 || Own(seen).value->size() % 2 == 0 ? "C:\\Windows\\ntdll.dll" : "C:\\dir\\Program.exe");
        ASSERT_TRUE(Own(seen).cut);
        EXPECT_EQ(Words(*Own(seen).cut), "the next module (the limit of 16384 reads was reached)");
        EXPECT_TRUE(Has(TextOf(seen), "\n  incomplete: the next module (the limit of 16384 reads was reached)\n"));
        EXPECT_TRUE(Has(JsonOf(seen), "\"incomplete\":{\"" + listName +
                                          "\":{\"unavailable\":\"the next module\",\"limit\":\"16384 reads\"}}}"));
        EXPECT_EQ(Told(seen.commandLine), "Program -x");
        EXPECT_TRUE(seen.threads.value) << "what comes behind the list";
    }
}

// A block, the loader's data, and three reads for each of two modules.
TEST_P(InspectionLimits, AListThatFitsIsWhole) {
    const Inspection whole = Look(Limits{.reads = 8});
    EXPECT_EQ(Own(whole).value->size(), 2U);
    EXPECT_FALSE(Own(whole).cut);
    EXPECT_FALSE(Has(TextOf(whole), "incomplete"));
    EXPECT_FALSE(Has(JsonOf(whole), "incomplete"));
    const Inspection cut = Look(Limits{.reads = 7});
    EXPECT_EQ(Own(cut).value->size(), 1U);
    ASSERT_TRUE(Own(cut).cut);
    EXPECT_EQ(Words(*Own(cut).cut), "the next module (the limit of 7 reads was reached)");
}

TEST_P(InspectionLimits, AModuleThatIsHalfReadIsNotShown) {
    for (const uint32_t reads : {5U, 6U, 7U}) {
        const Inspection seen = Look(Limits{.reads = reads});
        ASSERT_EQ(Own(seen).value->size(), 1U) << reads;
        EXPECT_EQ(Told((*Own(seen).value)[0].path), "C:\\dir\\Program.exe");
    }
    for (const uint32_t reads : {2U, 3U, 4U}) {
        const std::string limit = " (the limit of " + std::to_string(reads) + " reads was reached)";
        EXPECT_EQ(Words(Own(Look(Limits{.reads = reads})).refusal), "the next module" + limit) << reads;
    }
}

TEST_P(InspectionLimits, NoPartGoesBeyondThem) {
    const std::string one = " (the limit of 1 reads was reached)";
    Inspection seen = Look(Limits{.reads = 1});
    EXPECT_EQ(seen.parent.value, 5U);
    EXPECT_EQ(Told(seen.imagePath), "the address of the parameters" + one);
    EXPECT_EQ(Words(Own(seen).refusal), "the loader's data" + one);
    EXPECT_EQ(Words(seen.threads.refusal), "the next thread" + one);
    seen = Look(Limits{.reads = 0});
    EXPECT_EQ(Words(seen.parent.refusal), "the process's basic information (the limit of 0 reads was reached)");
    EXPECT_EQ(Told(seen.imagePath), "the address of the environment block (the limit of 0 reads was reached)");
    EXPECT_TRUE(Has(TextOf(seen), "\nimage path        unavailable: the address of the environment block (the limit of "
                                  "0 reads was reached)\n"));
    EXPECT_TRUE(Has(JsonOf(seen), "\"image_path\":{\"unavailable\":\"the address of the environment block\",\"limit\":"
                                  "\"0 reads\"}"));
}

TEST_P(InspectionLimits, ATextIsReadWithinThoseOfMemory) {
    WithImage([this](auto& image) {
        image.String(CommandLine).MaximumLength = 0xFFFE;
        image.Put(target->memory);
    });
    const Inspection seen = Look(Limits{.bytes = 0x10000});
    EXPECT_EQ(Told(seen.commandLine), "the text, with as much behind it (the limit of 65536 bytes was reached)");
    EXPECT_EQ(Told(seen.imagePath), "C:\\dir\\Program.exe");
    EXPECT_EQ(
        system.Count(
            ReadLines(WithImage([](auto& image) { return uint64_t{image.TextAddress(CommandLine)}; }), 0x1FFFC).back()),
        0U);
}

TEST_P(InspectionLimits, AListIsReadWithinThoseOfMemory) {
    Link(1, EntryAddress(0));
    const Inspection seen = Look(Limits{.bytes = 4096});
    ASSERT_TRUE(Own(seen).cut);
    EXPECT_EQ(Words(*Own(seen).cut), "the next module (the limit of 4096 bytes was reached)");
    EXPECT_LT(Own(seen).value->size(), 40U);
}

TEST_P(InspectionLimits, ThreadsWithoutNumberAreCut) {
    for (uint32_t id = 100; id < 200; ++id) {
        AddThread(id, base, id % 2 == 0); // every other one does not open, and costs no query
    }
    const Inspection seen = Look(Limits{.reads = 50});
    ASSERT_TRUE(seen.threads.value);
    EXPECT_LT(seen.threads.value->size(), 30U);
    ASSERT_TRUE(seen.threads.cut);
    EXPECT_EQ(Words(*seen.threads.cut), "the next thread (the limit of 50 reads was reached)");
    EXPECT_TRUE(Has(TextOf(seen), "\n  incomplete: the next thread (the limit of 50 reads was reached)\n"));
    EXPECT_TRUE(
        Has(JsonOf(seen), "\"incomplete\":{\"threads\":{\"unavailable\":\"the next thread\",\"limit\":\"50 reads\"}}"));
    for (const auto& thread : *seen.threads.value) {
        EXPECT_EQ(thread.file.value.has_value(), thread.id % 2 == 0 || thread.id == 9) << thread.id;
    }
}

TEST_P(InspectionLimits, ThreadsThatDoNotOpenAreCountedToo) {
    system.threads.clear();
    for (uint32_t id = 100; id < 200; ++id) {
        AddThread(id, base, false);
    }
    const Inspection seen = Look(Limits{.reads = 50});
    EXPECT_EQ(seen.threads.value->size(), 50U);
    EXPECT_TRUE(seen.threads.cut);
    EXPECT_EQ(system.Count("OpenThread"), 50U);
}

TEST_P(InspectionLimits, TimeIsOneForTheWholeProcess) {
    const Inspection seen = Look(Limits{.time = std::chrono::seconds(0)});
    const std::string limit = " (the limit of 0 seconds was reached)";
    EXPECT_EQ(Words(seen.parent.refusal), "the process's basic information" + limit);
    EXPECT_EQ(Told(seen.imagePath), "the address of the environment block" + limit);
    EXPECT_EQ(Words(Own(seen).refusal), "the address of the environment block" + limit);
    EXPECT_EQ(Words(seen.threads.refusal), "the next thread" + limit);
    EXPECT_EQ(system.reads, 0U);
}

// Paths of modules that the library cuts, by their length in characters.
class LongModulePaths : public InspectionLimits {
protected:
    std::vector<LoadedModule> Modules() const override {
        Text withNul(600, 'n');
        withNul[400] = WideChar{};
        return {{0x400000, 1, Text(512, 'a')},
                {0x500000, 1, Text(513, 'b')},
                {0x600000, 1, Text(700, 'c')},
                {0x700000, 1, withNul}};
    }
};

TEST_P(LongModulePaths, AreMarkedWhereTheyAreCut) {
    const Inspection seen = Look();
    ASSERT_EQ(Own(seen).value->size(), 4U);
    std::vector<std::string> told;
    for (const auto& module : *Own(seen).value) {
        const std::string path = Told(module.path);
        told.push_back(std::to_string(path.size()) + path.back() + (module.pathIsCut ? " cut" : ""));
    }
    EXPECT_EQ(told, (std::vector<std::string>{"512a", "512b cut", "512c cut", "400n"}));
    const std::string text = TextOf(seen);
    EXPECT_TRUE(Has(text, "aaaa\n")) << text;
    EXPECT_TRUE(Has(text, "bbbb (truncated)\n")) << text;
    EXPECT_TRUE(Has(text, "cccc (truncated)\n")) << text;
    const std::string json = JsonOf(seen);
    EXPECT_TRUE(Has(json, "aaaa\"}")) << json;
    EXPECT_TRUE(Has(json, "bbbb\",\"truncated\":true}")) << json;
}

TEST_P(LongModulePaths, AreMarkedWhereOnlyTheirBeginningCouldBeRead) {
    target->memory.Unmap(NameAddress(3));
    target->memory.Map(NameAddress(3), 8);
    const Text beginning(4, 'n');
    target->memory.Write(NameAddress(3), beginning.data(), 8);
    const Inspection seen = Look();
    EXPECT_EQ(Told((*Own(seen).value)[3].path), "nnnn");
    EXPECT_TRUE((*Own(seen).value)[3].pathIsCut);
}

INSTANTIATE_TEST_SUITE_P(, InspectionLimits, testing::ValuesIn(PairingsOfThisCaller()),
                         testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(, LongModulePaths, testing::ValuesIn(PairingsOfThisCaller()),
                         testing::PrintToStringParamName());

} // namespace
