#include "document/jsonAccess.h"

#include <gtest/gtest.h>

#include "unit/host/refusal.h"

using namespace mordhost;
using mordhostTest::RefusalOf;

namespace {

struct Parsed {
    SourceText source;
    JsonNode root;

    explicit Parsed(const std::string& text) : source("a.json", text), root(ParseJson(source)) {}
};

std::string IntegerRefusal(const std::string& text) {
    const Parsed parsed(text);
    return RefusalOf([&] { RequireInteger(parsed.source, parsed.root, -5, 70, "a level"); });
}

} // namespace

TEST(JsonAccess, AValueOfAnotherKindIsRefusedWithBothKinds) {
    const Parsed parsed("[\n 1]");
    EXPECT_EQ(
        RefusalOf([&] { RequireKind(parsed.source, parsed.root.elements[0], JsonNode::Kind::string, "a machine id"); }),
        "a.json:2:2: a machine id must be a string, and this is a number");
}

TEST(JsonAccess, AnUnknownKeyIsRefusedWithTheKnownKeys) {
    const Parsed parsed("{\"guid\": 1,\n  \"tpye\": 2}");
    EXPECT_EQ(RefusalOf([&] {
                  RequireKnownMembers(parsed.source, parsed.root, {"guid", "type"});
              }),
              "a.json:2:3: unknown key \"tpye\"; known here: \"guid\", \"type\"");
}

TEST(JsonAccess, ARepeatedKeyIsRefusedAtItsSecondPosition) {
    const Parsed parsed("{\"a\": 1, \"a\": 2}");
    EXPECT_EQ(RefusalOf([&] { RequireKnownMembers(parsed.source, parsed.root, {"a"}); }),
              "a.json:1:10: \"a\" is repeated");
}

TEST(JsonAccess, AMissingKeyIsRefusedAtItsObject) {
    const Parsed parsed(" {}");
    EXPECT_EQ(RefusalOf([&] { RequireMember(parsed.source, parsed.root, "guid"); }),
              "a.json:1:2: the key \"guid\" is missing in this object");
}

TEST(JsonAccess, ATextWithANulIsRefused) {
    const Parsed parsed(R"("a\u0000b")");
    EXPECT_EQ(RefusalOf([&] { RequireText(parsed.source, parsed.root, "a guid"); }),
              "a.json:1:1: a guid must not hold a NUL character");
}

TEST(JsonAccess, AnIntegerOutsideItsBoundsIsRefused) {
    EXPECT_EQ(IntegerRefusal("-5"), "accepted");
    EXPECT_EQ(IntegerRefusal("70"), "accepted");
    EXPECT_EQ(IntegerRefusal("-6"), "a.json:1:1: a level must be a whole number from -5 to 70, and this is -6");
    EXPECT_EQ(IntegerRefusal("71"), "a.json:1:1: a level must be a whole number from -5 to 70, and this is 71");
}

TEST(JsonAccess, AFractionOrAnExponentIsNotAnInteger) {
    EXPECT_EQ(IntegerRefusal("1.0"), "a.json:1:1: a level must be a whole number from -5 to 70, and this is 1.0");
    EXPECT_EQ(IntegerRefusal("1e1"), "a.json:1:1: a level must be a whole number from -5 to 70, and this is 1e1");
}

TEST(JsonAccess, ANumberBeyondAllIntegersIsRefused) {
    EXPECT_EQ(IntegerRefusal("99999999999999999999"),
              "a.json:1:1: a level must be a whole number from -5 to 70, and this is 99999999999999999999");
}

TEST(JsonAccess, ANumberInAStringIsRefused) {
    EXPECT_EQ(IntegerRefusal("\"1\""), "a.json:1:1: a level must be a number, and this is a string");
}
