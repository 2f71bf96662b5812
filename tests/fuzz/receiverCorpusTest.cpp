// The receiver's targets on every build, without a fuzzing engine.
#include <gtest/gtest.h>

#include "fuzz/corpus.h"
#include "fuzz/randomInputs.h"

namespace {

struct ReceiverTarget {
    const char* name;
    FuzzTarget* run;
};

class ReceiverCorpus : public testing::TestWithParam<ReceiverTarget> {};

TEST_P(ReceiverCorpus, KeptInputsPass) {
    ReplayCorpus(GetParam().name, GetParam().run);
}

TEST_P(ReceiverCorpus, RandomInputsPass) {
    RunRandomInputs(GetParam().name, GetParam().name, GetParam().run, 1000);
}

INSTANTIATE_TEST_SUITE_P(Of, ReceiverCorpus,
                         testing::Values(ReceiverTarget{"allowList", FuzzAllowList},
                                         ReceiverTarget{"actionTable", FuzzActionTable},
                                         ReceiverTarget{"queryResult", FuzzQueryResult},
                                         ReceiverTarget{"hostRecords", FuzzHostRecords},
                                         ReceiverTarget{"hostAnswers", FuzzHostAnswers}),
                         [](const auto& target) { return target.param.name; });

} // namespace
