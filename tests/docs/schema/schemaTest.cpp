// The schema files. The validator ignores unknown keywords, so a misspelt keyword would check nothing.
#include <algorithm>
#include <filesystem>
#include <map>
#include <set>

#include <gtest/gtest.h>
#include <rapidjson/document.h>
#include <rapidjson/pointer.h>

#include "docs/schema/schemaFile.h"
#include "docs/sourceTree.h"

namespace {

using Value = rapidjson::Value;

// The value of a keyword of draft 4.
enum class Kind { Schema, Schemas, SchemaMap, SchemaOrBool, Text, Texts, Count, Number, TypeName, Values };

const std::map<std::string, Kind> keywords = {
    {"$schema", Kind::Text},
    {"$ref", Kind::Text},
    {"title", Kind::Text},
    {"description", Kind::Text},
    {"type", Kind::TypeName},
    {"enum", Kind::Values},
    {"required", Kind::Texts},
    {"properties", Kind::SchemaMap},
    {"additionalProperties", Kind::SchemaOrBool},
    {"definitions", Kind::SchemaMap},
    {"items", Kind::Schema},
    {"anyOf", Kind::Schemas},
    {"allOf", Kind::Schemas},
    {"oneOf", Kind::Schemas},
    {"not", Kind::Schema},
    {"pattern", Kind::Text},
    {"minLength", Kind::Count},
    {"maxLength", Kind::Count},
    {"minItems", Kind::Count},
    {"maxItems", Kind::Count},
    {"minProperties", Kind::Count},
    {"minimum", Kind::Number},
    {"maximum", Kind::Number},
};

const std::set<std::string> typeNames = {"null", "boolean", "object", "array", "string", "number", "integer"};

class SchemaWalk {
public:
    explicit SchemaWalk(const rapidjson::Document& root) : m_root(root) {}

    void Schema(const Value& schema, const std::string& path) {
        ASSERT_TRUE(schema.IsObject()) << path;
        std::set<std::string> seen;
        for (const auto& member : schema.GetObject()) {
            const std::string name = member.name.GetString();
            EXPECT_TRUE(seen.insert(name).second) << path << ": " << name << " occurs twice";
            const auto keyword = keywords.find(name);
            ASSERT_NE(keyword, keywords.end()) << path << ": unknown keyword " << name;
            Keyword(keyword->second, member.value, path + "/" + name);
        }
        if (schema.HasMember("$ref")) {
            EXPECT_EQ(schema.MemberCount(), 1U) << path << ": the validator ignores the siblings of a reference";
            Reference(schema["$ref"].GetString(), path);
        }
        if (schema.HasMember("required") && schema.HasMember("properties")) {
            for (const auto& name : schema["required"].GetArray()) {
                EXPECT_TRUE(schema["properties"].HasMember(name.GetString())) << path << ": " << name.GetString();
            }
        }
    }

private:
    // "#/definitions/x" in the same file, or "other.schema.json#", a whole file beside it.
    void Reference(const std::string& reference, const std::string& path) {
        if (reference.starts_with('#')) {
            EXPECT_NE(rapidjson::Pointer(reference.c_str()).Get(m_root), nullptr) << path << ": " << reference;
            return;
        }
        ASSERT_TRUE(reference.ends_with('#')) << path << ": " << reference;
        const std::string file = reference.substr(0, reference.size() - 1);
        EXPECT_TRUE(std::filesystem::exists(docs::InTree("docs/schema/" + file))) << path << ": " << reference;
    }

    void Keyword(Kind kind, const Value& value, const std::string& path) {
        switch (kind) {
        case Kind::Schema:
            Schema(value, path);
            break;
        case Kind::SchemaOrBool:
            if (!value.IsBool()) {
                Schema(value, path);
            }
            break;
        case Kind::Schemas:
            ASSERT_TRUE(value.IsArray() && !value.Empty()) << path;
            for (const auto& element : value.GetArray()) {
                Schema(element, path);
            }
            break;
        case Kind::SchemaMap:
            ASSERT_TRUE(value.IsObject()) << path;
            for (const auto& member : value.GetObject()) {
                Schema(member.value, path + "/" + member.name.GetString());
            }
            break;
        case Kind::Texts:
            ASSERT_TRUE(value.IsArray() && !value.Empty()) << path;
            for (const auto& element : value.GetArray()) {
                EXPECT_TRUE(element.IsString()) << path;
            }
            break;
        case Kind::Values:
            EXPECT_TRUE(value.IsArray() && !value.Empty()) << path;
            break;
        case Kind::Text:
            EXPECT_TRUE(value.IsString() && value.GetStringLength() > 0) << path;
            break;
        case Kind::TypeName:
            ASSERT_TRUE(value.IsString()) << path;
            EXPECT_TRUE(typeNames.contains(value.GetString())) << path;
            break;
        case Kind::Count:
            EXPECT_TRUE(value.IsUint()) << path;
            break;
        case Kind::Number:
            EXPECT_TRUE(value.IsNumber()) << path;
            break;
        }
    }

    const rapidjson::Document& m_root;
};

TEST(Schemas, AreThereForEveryDocument) {
    const std::vector<std::string> names = schema::SchemaNames();
    for (const char* name : {"actionTable", "allowList", "decision", "difference", "dots", "event", "explanation",
                             "policy", "queryRequest", "queryResult", "rehearsal", "report", "summary"}) {
        EXPECT_NE(std::find(names.begin(), names.end(), name), names.end()) << name;
    }
}

TEST(Schemas, UseTheKeywordsOfDraft4AndNothingElse) {
    for (const std::string& name : schema::SchemaNames()) {
        SCOPED_TRACE(name);
        rapidjson::Document document;
        document.Parse(docs::ReadText(docs::InTree("docs/schema/" + name + ".schema.json")).c_str());
        ASSERT_FALSE(document.HasParseError());
        SchemaWalk(document).Schema(document, "#");
        ASSERT_TRUE(document.HasMember("$schema"));
        EXPECT_STREQ(document["$schema"].GetString(), "http://json-schema.org/draft-04/schema#");
        EXPECT_TRUE(document.HasMember("title"));
        EXPECT_TRUE(document.HasMember("description"));
    }
}

TEST(Schemas, AreNamedOnThePageOfTheDocuments) {
    const std::string page = docs::ReadText(docs::InTree("docs/documents.md"));
    for (const std::string& name : schema::SchemaNames()) {
        EXPECT_NE(page.find("(schema/" + name + ".schema.json)"), std::string::npos) << name;
    }
}

} // namespace
