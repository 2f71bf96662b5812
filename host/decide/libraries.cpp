#include "decide/libraries.h"

#include "frame/values.h"
#include "system/filePath.h"
#include "system/hostSystem.h"
#include "system/libraryVersion.h"

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

CreateZelkObjectFunction FactoryOf(void* library, const std::string& name) {
    const auto create = reinterpret_cast<CreateZelkObjectFunction>(FindExport(library, "CreateZelkObject"));
    if (create == nullptr) {
        throw LoadError("the library " + name + " does not export CreateZelkObject");
    }
    return create;
}

IMordRev* ObtainReceiver(CreateZelkObjectFunction create) {
    void* receiver = nullptr;
    if (create(&IID_IMordRev, &receiver) != RESULT_OK || receiver == nullptr) {
        throw LoadError("the library mordRev does not create its object");
    }
    return static_cast<IMordRev*>(receiver);
}

} // namespace

Libraries::Libraries(const std::filesystem::path& directory) {
    // The siblings first, because the library searches them among the loaded modules.
    m_base = FactoryOf(Load(directory, "ZelkBase"), "ZelkBase");
    Load(directory, "Ferrocore");
    void* const library = Load(directory, "mordRev");
    m_version = VersionOfLibrary(library);
    m_receiver = ObtainReceiver(FactoryOf(library, "mordRev"));
}

} // namespace mordhost
