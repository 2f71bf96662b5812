#include "document/jsonPointer.h"

#include <gtest/gtest.h>

#include "document/jsonDocument.h"

using namespace mordhost;

namespace {

std::string PointerTo(const std::string& text, const std::string& part) {
    const JsonDocument document(SourceText("a.json", text));
    const size_t offset = text.find(part);
    EXPECT_NE(offset, std::string::npos);
    return PointerAt(document.Root(), offset);
}

} // namespace

TEST(JsonPointer, PointsToTheInnermostValue) {
    const std::string text = R"({"a": [10, {"b": "x"}, []], "c": {}})";
    EXPECT_EQ(PointerTo(text, "{\"a"), "");
    EXPECT_EQ(PointerTo(text, "[10"), "/a");
    EXPECT_EQ(PointerTo(text, "0,"), "/a/0");
    EXPECT_EQ(PointerTo(text, "{\"b"), "/a/1");
    EXPECT_EQ(PointerTo(text, "x"), "/a/1/b");
    EXPECT_EQ(PointerTo(text, "[]"), "/a/2");
    EXPECT_EQ(PointerTo(text, "{}"), "/c");
}

TEST(JsonPointer, AtANameItPointsToTheMember) {
    const std::string text = R"({"first": 1, "second": {"third": 2}})";
    EXPECT_EQ(PointerTo(text, "\"first"), "/first");
    EXPECT_EQ(PointerTo(text, "econd"), "/second");
    EXPECT_EQ(PointerTo(text, "third"), "/second/third");
}

TEST(JsonPointer, BetweenValuesItPointsToTheParent) {
    const std::string text = R"({"a": [1 , 2]  })";
    EXPECT_EQ(PointerTo(text, " ,"), "/a");
    EXPECT_EQ(PointerTo(text, "]"), "/a");
    EXPECT_EQ(PointerTo(text, "  }"), "");
    const JsonDocument document(SourceText("a.json", text));
    EXPECT_EQ(PointerAt(document.Root(), text.size() + 9), "");
}

TEST(JsonPointer, EscapesTildeAndSlashAndNothingElse) {
    EXPECT_EQ(PointerTo(R"({"a/b": {"m~n": {"": {" \\\"": 7}}}})", "7"), "/a~1b/m~0n// \\\"");
    EXPECT_EQ(PointerTo(R"({"~1": 7})", "7"), "/~01");
    EXPECT_EQ(PointerTo(R"({"a\u0000b": 7})", "7"), std::string("/a\0b", 4));
}

TEST(JsonPointer, ThePlaceOfAValueHasItsLineAndItsPointer) {
    const JsonDocument document(SourceText("a.json", "{\n \"a\": [1,\n  2]}"));
    const DocumentPlace place = document.PlaceAt(14);
    EXPECT_EQ(place.where.Text(), "a.json:3:3");
    EXPECT_EQ(place.pointer, "/a/1");
}
