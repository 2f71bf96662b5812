#include "native/chooseNative.h"

std::unique_ptr<Native> ChooseNative(platform::Handle process) {
    return std::make_unique<Native>(process); // a 64-bit caller has the bitness of its machine
}
