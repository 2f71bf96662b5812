// The built libraries, reached as a host and the component reach them: loaded at run time, through their one export.
#pragma once

#include <string>

#include "unit/siblings/serviceHolder.h"
#include "unit/siblings/systemKit.h"

namespace siblingTest {

class SiblingLibrary {
public:
    // Loads the file; a test that cannot load it ends here, with the reason.
    explicit SiblingLibrary(const std::filesystem::path& file);
    explicit SiblingLibrary(const std::string& name) : SiblingLibrary(LibraryFile(name)) {}

    void* Handle() const { return m_handle; }
    CreateZelkObjectFunction Factory() const { return m_factory; }

    // The service `id`, which the library must have.
    template <typename Interface>
    ServiceHolder<Interface> Make(const GUID& id) const {
        return ServiceHolder<Interface>(static_cast<Interface*>(MakeObject(id)));
    }

private:
    void* MakeObject(const GUID& id) const;

    void* m_handle;
    CreateZelkObjectFunction m_factory;
};

} // namespace siblingTest
