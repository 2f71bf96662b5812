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
    // std::runtime_error if the file cannot be read or is not JSON.
    explicit SchemaFile(std::string_view name);
    ~SchemaFile();
    SchemaFile(const SchemaFile&) = delete;
    SchemaFile& operator=(const SchemaFile&) = delete;

    // Empty if `text` is JSON that fits the schema; otherwise the place and the keyword of the misfit.
    std::string Misfit(const std::string& text) const;

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

// The names of all schemas.
std::vector<std::string> SchemaNames();

} // namespace schema
