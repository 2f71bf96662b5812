// mordhost check POLICY
#include <iostream>

#include "cli/commandList.h"
#include "cli/exitCode.h"
#include "output/findingFormats.h"
#include "output/requireWritten.h"
#include "review/documentCheck.h"
#include "system/fileError.h"
#include "system/filePath.h"
#include "system/hostSystem.h"
#include "system/inputStream.h"

namespace mordhost {

namespace {

constexpr auto standardInput = "-";

struct CheckedFile {
    std::string name;
    DocumentKind kind = DocumentKind::policy;
};

class CheckCommand final : public Command {
public:
    std::string Name() const override { return "check"; }
    std::string Help() const override { return "Find the faults of a policy or of a document for the library"; }
    int Code() const override { return m_code; }

    void Declare(Arguments& arguments) override {
        DeclareFiles(arguments);
        arguments.Repeated(
            "--format", "FORMAT",
            [this](const std::string& name) {
                const auto value = ValueOf(name, findingFormatNames);
                m_format = value ? static_cast<OutputFormat>(*value) : m_format;
                return value ? std::string() : '"' + name + "\" is not one of " + ListNames(findingFormatNames);
            },
            "Write the findings as text, json, jsonl, junit, tap, sarif or github");
        arguments.Flag("--strict", m_strict, "Exit with code 1 if there are warnings");
        arguments.Text("--libraries", "DIR", m_libraries,
                       "Load ZelkBase, Ferrocore and mordRev from DIR instead of the default directory");
    }

    void Run() override {
        if (!m_policy.empty()) {
            m_files.insert(m_files.begin(), {m_policy, DocumentKind::policy});
        }
        if (m_files.empty()) {
            throw FileError("check needs a POLICY, or a file with --allow-list, --action-table, --answer or --report");
        }
        if (m_files.size() > 1 && m_format != OutputFormat::text && m_format != OutputFormat::jsonl &&
            m_format != OutputFormat::github) {
            throw FileError("check writes one document in this format: name one file only");
        }
        for (const CheckedFile& file : m_files) {
            Check(file);
        }
    }

private:
    void DeclareFiles(Arguments& arguments) {
        arguments.OptionalPositional("POLICY", m_policy, "The policy document; - reads the standard input");
        const auto declare = [&](const char* option, DocumentKind kind, const char* help) {
            arguments.Repeated(
                option, "FILE",
                [this, kind](const std::string& name) {
                    m_files.push_back({name, kind});
                    return std::string();
                },
                help);
        };
        declare("--allow-list", DocumentKind::allowList, "Check an allow list");
        declare("--action-table", DocumentKind::actionTable, "Check an action table");
        declare("--answer", DocumentKind::answer, "Check a query result");
        declare("--report", DocumentKind::report, "Check a handling report");
    }

    static SourceText Read(const std::string& name) {
        if (name == standardInput) {
            return {"standard input", InputStream(InputStream::Standard()).ReadAll()};
        }
        return {name, InputStream(name).ReadAll()};
    }

    void Check(const CheckedFile& file) {
        SourceText source = Read(file.name);
        CheckResult result;
        result.subject = source.Name();
        Findings findings = CheckDocument(std::move(source), file.kind,
                                          m_libraries.empty() ? DefaultLibraryDirectory() : PathOf(m_libraries));
        result.findings = findings.InOrder();
        result.errors = findings.Errors();
        result.warnings = findings.Warnings();
        result.isStrict = m_strict;
        WriteFindings(std::cout, result, m_format);
        RequireWritten(std::cout, standardOutputName);
        if (result.errors > 0) {
            m_code = EXIT_DOCUMENT_REFUSED;
        } else if (m_strict && result.warnings > 0 && m_code == EXIT_DONE) {
            m_code = EXIT_FAILED;
        }
    }

    std::string m_policy;
    std::vector<CheckedFile> m_files;
    OutputFormat m_format = OutputFormat::text;
    bool m_strict = false;
    std::string m_libraries;
    int m_code = EXIT_DONE;
};

} // namespace

std::unique_ptr<Command> MakeCheckCommand() {
    return std::make_unique<CheckCommand>();
}

} // namespace mordhost
