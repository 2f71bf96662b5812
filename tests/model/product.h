// The shipped library, loaded at run time and used through its only export.
#pragma once

#include <filesystem>

#include "frame/interfaces.h"
#include "kit/siblings/dynamicLibrary.h"
#include "model/siblingState.h"
#include "model/trace.h"

namespace model {

#ifdef MORDREV_MODEL_KEEPS_LIBRARIES
constexpr bool keepsLibraries = true;
#else
constexpr bool keepsLibraries = false;
#endif

// The number of random cases that use one receiver, one after the other.
constexpr uint64_t casesOfAReceiver = keepsLibraries ? 500 : 25;

// Each object loads the library again, so its receiver is new. At most one object at a time.
class Product {
public:
    // The siblings answer by `state` and write into `trace`; both must outlive the object. Throws std::runtime_error if
    // the library cannot be loaded.
    Product(const SiblingState& state, Trace& trace);

    // Destroys the receiver and unloads the library; aborts if it remains loaded. With `keepsLibraries` it remains
    // loaded, because the leak checker does not search unloaded libraries; each further object loads a copy.
    ~Product();

    Product(const Product&) = delete;
    Product& operator=(const Product&) = delete;

    IMordRev& Receiver() { return *m_receiver; }

private:
    std::filesystem::path m_file;
    kit::DynamicLibrary m_library;
    IMordRev* m_receiver = nullptr;
};

} // namespace model
