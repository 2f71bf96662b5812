// The built libraries, loaded at run time and used through their only export.
#pragma once

#include <string>

#include "kit/siblings/dynamicLibrary.h"
#include "unit/siblings/serviceHolder.h"

namespace siblingTest {

class SiblingLibrary {
public:
    // Loads the file, which stays loaded until the process ends. Throws std::runtime_error with the reason.
    explicit SiblingLibrary(const std::filesystem::path& file);
    explicit SiblingLibrary(const std::string& name) : SiblingLibrary(File(name)) {}

    // The built file of the library `name`, such as "ZelkBase".
    static std::filesystem::path File(const std::string& name) { return kit::ProductFolder() / kit::LibraryFile(name); }

    void* Handle() const { return m_library.Handle(); }
    CreateZelkObjectFunction Factory() const { return m_factory; }

    // A new service `id`. Throws std::runtime_error if the factory rejects the id.
    template <typename Interface>
    ServiceHolder<Interface> Make(const GUID& id) const {
        return ServiceHolder<Interface>(static_cast<Interface*>(MakeObject(id)));
    }

private:
    void* MakeObject(const GUID& id) const;

    const kit::DynamicLibrary& m_library;
    CreateZelkObjectFunction m_factory;
};

} // namespace siblingTest
