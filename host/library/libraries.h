// The library and its siblings, loaded at run time as an agent loads them.
#pragma once

#include <filesystem>
#include <stdexcept>

#include "library/service.h"

namespace mordhost {

// A library that cannot be loaded or used: what() says which, and why.
class LoadError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class Libraries {
public:
    // Loads the siblings and then the library from `directory`, and nothing from anywhere else. Throws LoadError. What
    // is loaded is there for the rest of the process, since the library's object is.
    explicit Libraries(const std::filesystem::path& directory);

    // The one object of the library.
    IMordRev& Receiver() const { return *m_receiver; }

    // The factory of the base library.
    ServiceFactory Base() const { return ServiceFactory(m_base); }

private:
    CreateZelkObjectFunction m_base = nullptr;
    IMordRev* m_receiver = nullptr;
};

} // namespace mordhost
