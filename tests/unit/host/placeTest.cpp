#include "policy/place.h"

#include <gtest/gtest.h>

#include "policy/policyReader.h"
#include "unit/host/temporaryDirectory.h"

using namespace mordhost;
using kit::TemporaryDirectory;

TEST(Places, AreThoseOfTheSource) {
    for (const std::string before : {"", "\xEF\xBB\xBF"}) {
        const SourceText source("f.json", before + "[1, \"\u00e4\u20ac\", {\r\n}, \t2,\n\n  [\"\u00e4\"], 3]", 7);
        const JsonNode root = ParseJson(source);
        const std::vector<Place> places = PlacesOf(source, root.elements, "/a~1b");
        ASSERT_EQ(places.size(), 6U);
        for (size_t i = 0; i < places.size(); ++i) {
            EXPECT_EQ(places[i].where.Text(), source.At(root.elements[i].begin).Text());
            EXPECT_EQ(places[i].pointer, "/a~1b/" + std::to_string(i));
        }
        EXPECT_EQ(places[2].where.Text(), "f.json:7:11");
        EXPECT_EQ(places[5].where.Text(), "f.json:10:10");
    }
}

TEST(Places, OfAPolicyAreKnown) {
    const TemporaryDirectory directory;
    const std::string list = "{\"mid_list\": [\n {\"mid\": \"M\", \"protocol\": [\"smb\", \"G\"]},\n {\"mid\": \"N\", "
                             "\"protocol\": []}]}";
    const std::string rules = "\"rules\": [{\"guid\": \"A\", \"type\": \"b\"},\n {\"guid\": \"B\", \"type\": \"b\"}]";
    directory.Write("list.json", list);
    const std::string named = directory.Write("p.json", "{\"allow_list\": \"list.json\",\n" + rules + "}");
    const std::string whole = directory.Write("q.json", "{\"allow_list\": " + list + ",\n" + rules + "}");
    const Policy one = ReadPolicy(named);
    const Policy other = ReadPolicy(whole);
    ASSERT_EQ(one.rulePlaces.size(), 2U);
    EXPECT_EQ(one.rulePlaces[1].where.Text(), named + ":3:2");
    EXPECT_EQ(one.rulePlaces[1].pointer, "/rules/1");
    ASSERT_EQ(one.allowEntries.size(), 2U);
    EXPECT_EQ(one.allowEntries[0].machine, "M");
    EXPECT_EQ(one.allowEntries[0].keys, (std::vector<std::string>{"smb", "G"}));
    EXPECT_EQ(one.allowEntries[1].place.where.line, 3U);
    EXPECT_EQ(one.allowEntries[1].place.where.column, 2U);
    EXPECT_EQ(one.allowEntries[1].place.pointer, "/mid_list/1");
    ASSERT_EQ(other.allowEntries.size(), 2U);
    EXPECT_EQ(other.allowEntries[0].place.where.Text(), whole + ":2:2");
    EXPECT_EQ(other.allowEntries[0].place.pointer, "/allow_list/mid_list/0");
}

TEST(Digests, AreThoseOfTheFilesOfAPolicy) {
    const TemporaryDirectory directory;
    directory.Write("dots.json", "{}");
    const Policy policy = ReadPolicy(directory.Write("p.json", "{\"rules\": [], \"dots\": \"dots.json\"}\n"));
    ASSERT_EQ(policy.files.size(), 2U);
    EXPECT_EQ(policy.files[0].sha256, "2ce64b57af0e30248ef5a7854b2e0ee94eb6698486d8581cbe4504f810965699");
    EXPECT_EQ(policy.files[1].sha256, "44136fa355b3678a1146ad16f7e8649e94fb4fc21fe77e8310c060f61caaff8a");
}
