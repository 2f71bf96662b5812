// A schema of docs/schema and the check of a text against it.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace schema {

class SchemaFile {
public:
    // `name` is the file name without its endings: "report" for docs/schema/report.schema.json. Throws
    // std::runtime_error when the file cannot be read or is no JSON.
    explicit SchemaFile(std::string_view name);
    ~SchemaFile();
    SchemaFile(const SchemaFile&) = delete;
    SchemaFile& operator=(const SchemaFile&) = delete;

    // Empty when `text` is JSON that fits the schema; otherwise where and by which keyword it does not.
    std::string Misfit(const std::string& text) const;

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

// The names of all schemas.
std::vector<std::string> SchemaNames();

} // namespace schema
