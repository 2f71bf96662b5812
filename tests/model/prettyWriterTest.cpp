// The pretty writer of the model: fixed documents, and random ones compared with the usual writer.
#include <gtest/gtest.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include "kit/text/runSeed.h"
#include "model/prettyWriter.h"
#include "model/random.h"
#include "model/trace.h"

namespace {

using namespace model;

TEST(PrettyWriter, PutsMembersAndElementsOnSeparateLines) {
    EXPECT_EQ(RootObject({{"guid", StringArray({"g1", "", "g1"})}, {"n", "true"}}), "{\n"
                                                                                    "    \"guid\": [\n"
                                                                                    "        \"g1\",\n"
                                                                                    "        \"\",\n"
                                                                                    "        \"g1\"\n"
                                                                                    "    ],\n"
                                                                                    "    \"n\": true\n"
                                                                                    "}");
}

TEST(PrettyWriter, EscapesOnlyQuoteBackslashAndControlCharacters) {
    EXPECT_EQ(Quoted("\"\\/\b\f\n\r\t\x01\x1F\x7F\xC3\xA9\xFF"),
              "\"\\\"\\\\/\\b\\f\\n\\r\\t\\u0001\\u001F\x7F\xC3\xA9\xFF\"");
}

TEST(PrettyWriter, MatchesTheUsualWriterOnRandomTexts) {
    Random random(kit::RunSeed());
    for (int i = 0; i < 3000; ++i) {
        std::vector<std::string> texts;
        for (uint32_t count = random.Between(1, 4); count > 0; --count) {
            std::string& text = texts.emplace_back();
            for (uint32_t length = random.Below(20); length > 0; --length) {
                text += static_cast<char>(static_cast<unsigned char>(random.Below(256)));
            }
        }
        rapidjson::StringBuffer buffer;
        rapidjson::PrettyWriter<rapidjson::StringBuffer> writer(buffer);
        writer.StartObject();
        writer.Key("guid");
        writer.StartArray();
        for (const std::string& text : texts) {
            writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
        }
        writer.EndArray();
        writer.Key("last");
        writer.String(texts[0].data(), static_cast<rapidjson::SizeType>(texts[0].size()));
        writer.EndObject();
        const std::string written(buffer.GetString(), buffer.GetSize());
        ASSERT_EQ(Shown(RootObject({{"guid", StringArray(texts)}, {"last", Quoted(texts[0])}})), Shown(written));
    }
}

} // namespace
