#include "unit/siblings/siblingLibrary.h"

#include <stdexcept>

namespace siblingTest {

SiblingLibrary::SiblingLibrary(const std::filesystem::path& file)
    : m_handle(LoadLibraryFile(file)), m_factory(nullptr) {
    if (m_handle == nullptr) {
        throw std::runtime_error("not loadable: " + file.string());
    }
    m_factory = reinterpret_cast<CreateZelkObjectFunction>(FindExport(m_handle, "CreateZelkObject"));
    if (m_factory == nullptr) {
        throw std::runtime_error("without a factory: " + file.string());
    }
}

void* SiblingLibrary::MakeObject(const GUID& id) const {
    void* object = nullptr;
    if (m_factory(&id, &object) != 0 || object == nullptr) {
        throw std::runtime_error("the factory refuses a service");
    }
    return object;
}

} // namespace siblingTest
