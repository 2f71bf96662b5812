// The fuzzer of the reader of ini files: every kept input.
#include <gtest/gtest.h>

#include "fuzz/corpusReplay.h"
#include "fuzz/targets.h"

namespace {

TEST(FuzzCorpus, OfIniFilesPasses) {
    ReplayCorpus("iniFile", FuzzIniFile);
}

} // namespace
