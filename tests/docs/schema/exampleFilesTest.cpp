// The documents in examples/ fit their schemas.
#include <algorithm>
#include <sstream>

#include <gtest/gtest.h>

#include "docs/schema/schemaFile.h"
#include "docs/sourceTree.h"

namespace {

// The name of a file begins with that of its schema: "policyEmergency.json" is a policy. Empty if there is no such
// schema.
std::string SchemaOf(const std::filesystem::path& file) {
    const std::string name = file.filename().string();
    for (const std::string& schema : schema::SchemaNames()) {
        if (name.starts_with(schema)) {
            return schema;
        }
    }
    return {};
}

TEST(ExampleFiles, FitTheSchemaOfTheirName) {
    size_t policies = 0;
    for (const auto& file : docs::FilesBelow("examples", ".json")) {
        SCOPED_TRACE(file.string());
        const std::string schema = SchemaOf(file);
        ASSERT_NE(schema, "");
        const std::string misfit = schema::SchemaFile(schema).Misfit(docs::ReadText(file));
        const bool hasFaults = file.parent_path().filename() == "faults"; // which the example is about
        EXPECT_EQ(misfit.empty(), !hasFaults) << misfit;
        policies += schema == "policy" ? 1 : 0;
    }
    EXPECT_GE(policies, 2U);
}

TEST(ExampleFiles, HoldOneEventALine) {
    size_t events = 0;
    const schema::SchemaFile schema("event");
    for (const auto& file : docs::FilesBelow("examples", ".jsonl")) {
        SCOPED_TRACE(file.string());
        std::istringstream lines(docs::ReadText(file));
        for (std::string line; std::getline(lines, line);) {
            ++events;
            EXPECT_EQ(schema.Misfit(line), "") << line;
        }
    }
    EXPECT_GE(events, 10U);
}

TEST(ExampleFiles, HoldReportsThatFitTheirSchema) {
    size_t reports = 0;
    const schema::SchemaFile schema("report");
    for (const auto& file : docs::FilesBelow("examples", ".txt")) {
        if (!file.filename().string().ends_with(".reports.txt")) {
            continue;
        }
        SCOPED_TRACE(file.string());
        std::istringstream lines(docs::ReadText(file));
        std::string report;
        for (std::string line; std::getline(lines, line);) {
            report += line + "\n";
            if (line == "}") {
                ++reports;
                EXPECT_EQ(schema.Misfit(report), "") << report;
                report.clear();
            }
        }
        EXPECT_EQ(report, "");
    }
    EXPECT_GE(reports, 10U);
}

} // namespace
