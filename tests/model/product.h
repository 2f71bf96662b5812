// The shipped library, loaded as a host loads it and used through its export alone.
#pragma once

#include <filesystem>

#include "frame/interfaces.h"
#include "model/siblingState.h"
#include "model/trace.h"

namespace model {

#ifdef MORDREV_MODEL_KEEPS_LIBRARIES
constexpr bool keepsLibraries = true;
#else
constexpr bool keepsLibraries = false;
#endif

// So many random cases use one receiver, one after the other.
constexpr uint64_t casesOfAReceiver = keepsLibraries ? 500 : 25;

// Each object loads the library anew: its receiver has no past. One at a time.
class Product {
public:
    // The siblings answer by `state` and write into `trace`; both must outlive the object. Throws std::runtime_error
    // with the system's reason.
    Product(const SiblingState& state, Trace& trace);

    // Destroys the receiver and unloads the library. With `keepsLibraries` it stays loaded, because the leak checker
    // does not see the pointers of an unloaded library; each further object then loads a copy of the file.
    ~Product();

    Product(const Product&) = delete;
    Product& operator=(const Product&) = delete;

    IMordRev& Receiver() { return *m_receiver; }

private:
    std::filesystem::path m_file;
    void* m_module = nullptr;
    IMordRev* m_receiver = nullptr;
};

} // namespace model
