// The result of the replacement of a file.
#pragma once

#include <string>

#include "system/fileError.h"
#include "system/replaceFile.h"

namespace mordhostTest {

// Replaces the file by the text "new". Returns "replaced", or the message of the error.
inline std::string ReplacementOf(const std::string& name) {
    try {
        mordhost::RequireReplaceable(name);
        mordhost::ReplaceWholeFile(name, "new");
    } catch (const mordhost::FileError& error) {
        return error.what();
    }
    return "replaced";
}

} // namespace mordhostTest
