#include "policy/dotTable.h"

#include <gtest/gtest.h>

#include "unit/host/refusal.h"

using namespace mordhost;
using mordhostTest::RefusalOf;

namespace {

DotTable ReadDots(const std::string& text) {
    const JsonDocument document(SourceText("d.json", text));
    Findings findings;
    DotTable dots = mordhost::ReadDots(document, document.Root(), findings);
    findings.ThrowFirstError();
    return dots;
}

std::string DotsRefusal(const std::string& text) {
    return RefusalOf([&] { ReadDots(text); });
}

} // namespace

TEST(DotTable, HoldsTheMachineIdsOfEachGuid) {
    const DotTable expected = {{"G1", {"M1", "M2"}}, {"G2", {}}, {"", {""}}};
    EXPECT_EQ(ReadDots(R"({"G1": ["M2", "M1", "M2"], "G2": [], "": [""]})"), expected);
}

TEST(DotTable, IsReadAsItIsWritten) {
    const DotTable dots = {{"G\"1", {"M1", "M\n2"}}, {"G2", {}}};
    EXPECT_EQ(DotsText(dots), "{\n    \"G\\\"1\": [\"M\\n2\", \"M1\"],\n    \"G2\": []\n}\n");
    EXPECT_EQ(ReadDots(DotsText(dots)), dots);
}

TEST(DotTable, AnEmptyTableIsAValidDocument) {
    EXPECT_EQ(DotsText({}), "{}\n");
    EXPECT_EQ(ReadDots(DotsText({})), DotTable());
}

TEST(DotTable, AnInvalidTableIsRefusedWithItsPosition) {
    EXPECT_EQ(DotsRefusal("[]"), "d.json:1:1: the table of dots must be an object, and this is an array");
    EXPECT_EQ(DotsRefusal(R"({"G": "M"})"),
              "d.json:1:7: the machine ids of a dot must be an array, and this is a string");
    EXPECT_EQ(DotsRefusal(R"({"G": ["M", 1]})"), "d.json:1:13: a machine id must be a string, and this is a number");
    EXPECT_EQ(DotsRefusal(R"({"G": [], "G": []})"), "d.json:1:11: \"G\" is repeated");
    EXPECT_EQ(DotsRefusal(R"({"a\u0000": []})"), "d.json:1:2: a guid must not hold a NUL character");
    EXPECT_EQ(DotsRefusal(R"({"G": ["\u0000"]})"), "d.json:1:8: a machine id must not hold a NUL character");
}
