#include "unit/siblings/siblingLibrary.h"

#include <list>
#include <stdexcept>

namespace siblingTest {

namespace {

const kit::DynamicLibrary& LoadForever(const std::filesystem::path& file) {
    // Never destroyed: the leak checker does not search unloaded libraries.
    static auto& loaded = *new std::list<kit::DynamicLibrary>;
    return loaded.emplace_back(file);
}

} // namespace

SiblingLibrary::SiblingLibrary(const std::filesystem::path& file)
    : m_library(LoadForever(file)),
      m_factory(reinterpret_cast<CreateZelkObjectFunction>(m_library.Symbol("CreateZelkObject"))) {
    if (m_factory == nullptr) {
        throw std::runtime_error("no factory in " + file.string());
    }
}

void* SiblingLibrary::MakeObject(const GUID& id) const {
    void* object = nullptr;
    if (m_factory(&id, &object) != 0 || object == nullptr) {
        throw std::runtime_error("the factory rejects a service id");
    }
    return object;
}

} // namespace siblingTest
