// The message of a DocumentError.
#pragma once

#include <string>

#include "document/sourceText.h"

namespace mordhostTest {

// The message of the DocumentError that `act` throws; "accepted" if it throws none.
template <typename Act>
std::string RefusalOf(Act act) {
    try {
        act();
    } catch (const mordhost::DocumentError& error) {
        return error.what();
    }
    return "accepted";
}

} // namespace mordhostTest
