// What the files of a run are to it.
#pragma once

#include <string>
#include <vector>

#include "system/fileIdentity.h"

namespace mordhost {

// Refuses a run that would write what it reads, or write one file twice. Files are told apart by what they are, not by
// their names, and devices and pipes, which hold nothing that could be overwritten, are of no concern. `what` is what
// messages call a file, with its name behind it. The functions throw FileError where a file is in the way of one that
// was named before.
class FileRoles {
public:
    // A file that cannot be found is passed over: reading it is going to fail.
    void Reads(const std::string& what, const std::string& name);
    void ReadsStandardInput(const std::string& what);

    // The file that --dots may replace.
    void ReadsDots(const std::string& what, const std::string& name);

    // Throws FileError also where the file would be in a directory that is not there.
    void Writes(const std::string& what, const std::string& name);

    // The same for a file that is replaced as a whole, which only a file can be.
    void Replaces(const std::string& what, const std::string& name);

    // What the standard output, and messages, are written to. The two may be one, and messages may even be added to
    // what is read.
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
