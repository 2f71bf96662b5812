#include "cli/fileRoles.h"

#include <algorithm>

#include "system/fileError.h"
#include "system/filePath.h"
#include "system/replaceFile.h"

namespace mordhost {

namespace {

bool CanBeOverwritten(const FileIdentity& file) {
    return file.kind == FileIdentity::Kind::regular || file.kind == FileIdentity::Kind::absent;
}

} // namespace

void FileRoles::Reads(const std::string& what, const std::string& name) {
    AddRead(what, Use::read, name);
}

void FileRoles::ReadsStandardInput(const std::string& what) {
    if (const auto file = Identify(Stream::input)) {
        Add({what, Use::read, *file});
    }
}

void FileRoles::ReadsDots(const std::string& what, const std::string& name) {
    AddRead(what, Use::dots, name);
}

void FileRoles::Writes(const std::string& what, const std::string& name) {
    AddWritten(what, Use::written, name);
}

void FileRoles::Replaces(const std::string& what, const std::string& name) {
    RequireReplaceable(name);
    AddWritten(what, Use::replaced, name);
}

void FileRoles::WritesStandardOutput() {
    if (const auto file = Identify(Stream::output)) {
        Add({"the standard output", Use::output, *file});
    }
}

void FileRoles::WritesMessages() {
    if (const auto file = Identify(Stream::error)) {
        Add({"the standard error", Use::messages, *file});
    }
}

bool FileRoles::MayBeOne(Use one, Use other) {
    const Use first = std::min(one, other);
    const Use second = std::max(one, other);
    const bool bothRead = second <= Use::dots;
    const bool sameDots = first == Use::dots && second == Use::replaced;
    const bool messagesBeside = second == Use::messages && (first <= Use::dots || first == Use::output);
    return bothRead || sameDots || messagesBeside;
}

void FileRoles::AddRead(const std::string& what, Use use, const std::string& name) {
    FileIdentity file;
    if (!Identify(PathOf(name), file)) {
        Add({what + ' ' + name, use, file});
    }
}

void FileRoles::AddWritten(const std::string& what, Use use, const std::string& name) {
    FileIdentity file;
    if (const std::error_code error = Identify(PathOf(name), file)) {
        throw FileError("cannot write " + name + ": " + error.message());
    }
    Add({what + ' ' + name, use, file});
}

void FileRoles::Add(const Role& role) {
    if (!CanBeOverwritten(role.file)) {
        return;
    }
    for (const Role& other : m_roles) {
        if (IsSameFile(other.file, role.file) && !MayBeOne(other.use, role.use)) {
            throw FileError(role.what + " and " + other.what + " are the same file");
        }
    }
    m_roles.push_back(role);
}

} // namespace mordhost
