// Loads the library and its siblings at run time, as an agent does.
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>

#include "decide/service.h"

namespace mordhost {

// A library cannot be loaded or used: what() names it and gives the reason.
class LoadError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class Libraries {
public:
    // Loads the siblings and then the library from `directory` and from no other place. Throws LoadError. They stay
    // loaded until the process ends, because the object of the library does.
    explicit Libraries(const std::filesystem::path& directory);

    // The only object of the library.
    IMordRev& Receiver() const { return *m_receiver; }

    // The factory of the base library.
    ServiceFactory Base() const { return ServiceFactory(m_base); }

    // The version of the library, "1.0.0"; empty if its file has none.
    const std::string& Version() const { return m_version; }

private:
    CreateZelkObjectFunction m_base = nullptr;
    IMordRev* m_receiver = nullptr;
    std::string m_version;
};

} // namespace mordhost
