// The identity of a file that exists.
#pragma once

#include <gtest/gtest.h>

#include "system/fileIdentity.h"

namespace mordhostTest {

// Reports a test failure if there is none.
inline mordhost::FileIdentity IdentityOf(const std::filesystem::path& path) {
    mordhost::FileIdentity identity;
    const std::error_code error = mordhost::Identify(path, identity);
    EXPECT_FALSE(error) << path << ": " << error.message();
    return identity;
}

} // namespace mordhostTest
