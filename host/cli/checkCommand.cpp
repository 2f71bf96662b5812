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
    std::string_view Name() const override { return "check"; }
    int Code() const override { return m_code; }

    void Declare(Arguments& arguments) override {
        arguments.Positionals("POLICY", m_policies);
        arguments.Choice("--format", m_format);
        arguments.Flag("--strict", m_strict);
        DeclareFile(arguments, "--allow-list", DocumentKind::allowList);
        DeclareFile(arguments, "--action-table", DocumentKind::actionTable);
        DeclareFile(arguments, "--answer", DocumentKind::answer);
        DeclareFile(arguments, "--report", DocumentKind::report);
        arguments.Text("--libraries", m_libraries);
    }

    void Run() override {
        for (const std::string& policy : m_policies) {
            m_files.push_back({policy, DocumentKind::policy});
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
    void DeclareFile(Arguments& arguments, std::string_view option, DocumentKind kind) {
        arguments.Repeated(option, [this, kind](const std::string& name) {
            m_files.push_back({name, kind});
            return std::string();
        });
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
            m_code = EXIT_NO;
        }
    }

    std::vector<std::string> m_policies;
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
