// Detects conflicts between the files of a run.
#pragma once

#include <string>
#include <vector>

#include "system/fileIdentity.h"

namespace mordhost {

// Refuses a run that would write a file that it reads, or write a file twice. Compares the files themselves and not
// their names. Ignores devices and pipes, because they hold nothing that could be overwritten. `what` describes a file
// in messages. The functions throw FileError if the file conflicts with one that was added before.
class FileRoles {
public:
    // Ignores a file that does not exist: reading it will fail.
    void Reads(const std::string& what, const std::string& name);
    void ReadsStandardInput(const std::string& what);

    // A file of dots, which --dots may replace.
    void ReadsDots(const std::string& what, const std::string& name);

    // Also throws FileError if the directory of the file does not exist.
    void Writes(const std::string& what, const std::string& name);

    // A file that is replaced as a whole. Also throws FileError if RequireReplaceable does.
    void Replaces(const std::string& what, const std::string& name);

    // The standard error may be the same file as the standard output or as a file that is read.
    void WritesStandardOutput();
    void WritesMessages();

private:
    enum class Use { read, dots, replaced, written, output, messages };

    struct Role {
        std::string what;
        Use use = Use::read;
        FileIdentity file;
    };

    static bool MayBeOne(Use one, Use other);
    void Add(const Role& role);
    void AddRead(const std::string& what, Use use, const std::string& name);
    void AddWritten(const std::string& what, Use use, const std::string& name);

    std::vector<Role> m_roles;
};

} // namespace mordhost
