#include "system/fileIdentity.h"

namespace mordhost {

const char* KindName(FileIdentity::Kind kind) {
    switch (kind) {
    case FileIdentity::Kind::regular:
        return "a file";
    case FileIdentity::Kind::directory:
        return "a directory";
    case FileIdentity::Kind::device:
        return "a device";
    case FileIdentity::Kind::pipe:
        return "a pipe";
    case FileIdentity::Kind::socket:
        return "a socket";
    case FileIdentity::Kind::absent:
        return "nothing";
    }
    return "";
}

} // namespace mordhost
