#include "system/replaceFile.h"

#include "system/fileError.h"
#include "system/filePath.h"
#include "system/fileReplacement.h"

namespace mordhost {

namespace {

FileIdentity ReplaceableFile(const std::string& name) {
    FileIdentity file;
    if (const std::error_code error = Identify(PathOf(name), file)) {
        throw FileError("cannot write " + name + ": " + error.message());
    }
    if (file.kind != FileIdentity::Kind::regular && file.kind != FileIdentity::Kind::absent) {
        throw FileError("cannot replace " + name + ": it is " + KindName(file.kind) + ", not a file");
    }
    return file;
}

} // namespace

void RequireReplaceable(const std::string& name) {
    ReplaceableFile(name);
}

void ReplaceWholeFile(const std::string& name, const std::string& text) {
    const FileIdentity file = ReplaceableFile(name);
    if (const std::error_code error = ReplaceWhole(file, text)) {
        throw FileError("cannot write " + name + ": " + error.message());
    }
}

} // namespace mordhost
