// The fuzzers of the receiver: every kept input, on every build.
#include <gtest/gtest.h>

#include "fuzz/corpusReplay.h"
#include "fuzz/targets.h"

namespace {

TEST(FuzzCorpus, OfAllowListsPasses) {
    ReplayCorpus("allowList", FuzzAllowList);
}

TEST(FuzzCorpus, OfActionTablesPasses) {
    ReplayCorpus("actionTable", FuzzActionTable);
}

TEST(FuzzCorpus, OfQueryResultsPasses) {
    ReplayCorpus("queryResult", FuzzQueryResult);
}

TEST(FuzzCorpus, OfHostRecordsPasses) {
    ReplayCorpus("hostRecords", FuzzHostRecords);
}

TEST(FuzzCorpus, OfHostAnswersPasses) {
    ReplayCorpus("hostAnswers", FuzzHostAnswers);
}

} // namespace
