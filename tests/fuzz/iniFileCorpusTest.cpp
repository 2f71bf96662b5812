// The target of ini files, without a fuzzing engine.
#include <gtest/gtest.h>

#include "fuzz/corpus.h"
#include "fuzz/randomInputs.h"

namespace {

TEST(IniFileCorpus, KeptInputsPass) {
    ReplayCorpus("iniFile", FuzzIniFile);
}

TEST(IniFileCorpus, RandomInputsPass) {
    RunRandomInputs("iniFile", "iniFile", FuzzIniFile, 5000);
}

} // namespace
