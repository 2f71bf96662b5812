// The library and its siblings, loaded at run time as an agent loads them.
#pragma once

#include <filesystem>
#include <stdexcept>

#include "frame/interfaces.h"

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

    // Makes the library let go of its files. Its object may be gone then.
    ~Libraries();
    Libraries(const Libraries&) = delete;
    Libraries& operator=(const Libraries&) = delete;

    // The one object of the library.
    IMordRev& Receiver() const { return *m_receiver; }

private:
    void* m_library = nullptr;
    IMordRev* m_receiver = nullptr;
};

} // namespace mordhost
