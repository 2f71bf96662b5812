#include "library/libraries.h"

#include "document/filePath.h"
#include "frame/values.h"
#include "system/hostSystem.h"

namespace mordhost {

namespace {

void* Load(const std::filesystem::path& directory, const char* name) {
    const std::filesystem::path file = directory / LibraryFileName(name);
    std::string reason;
    void* const library = LoadLibraryFile(file, reason);
    if (library == nullptr) {
        throw LoadError("cannot load " + Utf8Of(file) + ": " + reason);
    }
    return library;
}

IMordRev* ObtainReceiver(void* library) {
    const auto create = reinterpret_cast<CreateZelkObjectFunction>(FindExport(library, "CreateZelkObject"));
    if (create == nullptr) {
        throw LoadError("the library mordRev does not export CreateZelkObject");
    }
    void* receiver = nullptr;
    if (create(&IID_IMordRev, &receiver) != RESULT_OK || receiver == nullptr) {
        throw LoadError("the library mordRev does not make its object");
    }
    return static_cast<IMordRev*>(receiver);
}

} // namespace

Libraries::Libraries(const std::filesystem::path& directory) {
    Load(directory, "ZelkBase"); // the siblings first: the library looks for them among the loaded ones
    Load(directory, "Ferrocore");
    m_library = Load(directory, "mordRev");
    m_receiver = ObtainReceiver(m_library);
}

Libraries::~Libraries() {
    LetGoOfFiles(m_library);
}

} // namespace mordhost
