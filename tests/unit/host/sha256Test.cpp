#include "system/sha256.h"

#include <gtest/gtest.h>

using mordhost::Sha256Of;

// The examples of the standard.
TEST(Sha256, IsThatOfTheStandard) {
    EXPECT_EQ(Sha256Of(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(Sha256Of("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(Sha256Of(std::string(1000000, 'a')), "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

TEST(Sha256, TakesEveryByte) {
    EXPECT_EQ(Sha256Of(std::string("\0", 1)), "6e340b9cffb37a989ca544e6bb780a2c78901d3fb33738768511a30617afa01d");
    EXPECT_EQ(Sha256Of("\xFF"), "a8100ae6aa1940d0b663bb31cd466142ebbdbd5187131b92d93818987832eb89");
}
