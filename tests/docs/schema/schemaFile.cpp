#include "docs/schema/schemaFile.h"

#include <stdexcept>

#include <rapidjson/document.h>
#include <rapidjson/schema.h>
#include <rapidjson/stringbuffer.h>

#include "docs/sourceTree.h"

namespace schema {

namespace {

constexpr std::string_view ending = ".schema.json";

rapidjson::Document Parse(const std::string& text, const std::string& what) {
    rapidjson::Document document;
    if (document.Parse(text.c_str()).HasParseError()) {
        throw std::runtime_error(what + " is not JSON, offset " + std::to_string(document.GetErrorOffset()));
    }
    return document;
}

std::string Path(const rapidjson::Pointer& pointer) {
    rapidjson::StringBuffer buffer;
    pointer.StringifyUriFragment(buffer);
    return buffer.GetString();
}

} // namespace

// Loads the files that "$ref" names beside the one that refers to them.
struct SchemaFile::Parts : rapidjson::IRemoteSchemaDocumentProvider {
    explicit Parts(const std::string& file)
        : source(Parse(docs::ReadText(docs::InTree("docs/schema/" + file)), file)), schema(source, this) {}

    // Some versions of the validator pass a length that is one short.
    const rapidjson::SchemaDocument* GetRemoteDocument(const char* uri, rapidjson::SizeType length) override {
        const std::string_view named(uri, length);
        for (const std::string& name : SchemaNames()) {
            const std::string file = name + std::string(ending);
            if (file.starts_with(named) && named.size() + 1 >= file.size()) {
                return &others.emplace_back(std::make_unique<Parts>(file))->schema;
            }
        }
        throw std::runtime_error("no schema " + std::string(named));
    }

    rapidjson::Document source;
    std::vector<std::unique_ptr<Parts>> others;
    rapidjson::SchemaDocument schema; // the last, since its construction asks for the others
};

SchemaFile::SchemaFile(std::string_view name)
    : m_parts(std::make_unique<Parts>(std::string(name) + std::string(ending))) {}

SchemaFile::~SchemaFile() = default;

std::string SchemaFile::Misfit(const std::string& text) const {
    rapidjson::Document document;
    if (document.Parse(text.c_str()).HasParseError()) {
        return "not JSON";
    }
    rapidjson::SchemaValidator validator(m_parts->schema);
    if (document.Accept(validator)) {
        return {};
    }
    return Path(validator.GetInvalidDocumentPointer()) + " breaks " + validator.GetInvalidSchemaKeyword() + " of " +
           Path(validator.GetInvalidSchemaPointer());
}

std::vector<std::string> SchemaNames() {
    std::vector<std::string> names;
    for (const auto& file : docs::FilesBelow("docs/schema", ".json")) {
        const std::string name = file.filename().string();
        if (!name.ends_with(ending)) {
            throw std::runtime_error(name + " does not end in " + std::string(ending));
        }
        names.push_back(name.substr(0, name.size() - ending.size()));
    }
    return names;
}

} // namespace schema
