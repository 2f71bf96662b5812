// The digests of the files of a policy.
#include <gtest/gtest.h>

#include "kit/system/temporaryDirectory.h"
#include "policy/policyReader.h"

using namespace mordhost;
using kit::TemporaryDirectory;

TEST(Digests, AreThoseOfTheFilesOfAPolicy) {
    const TemporaryDirectory directory;
    directory.Write("dots.json", "{}");
    const Policy policy = ReadPolicy(directory.Write("p.json", "{\"rules\": [], \"dots\": \"dots.json\"}\n"));
    ASSERT_EQ(policy.files.size(), 2U);
    EXPECT_EQ(policy.files[0].sha256, "2ce64b57af0e30248ef5a7854b2e0ee94eb6698486d8581cbe4504f810965699");
    EXPECT_EQ(policy.files[1].sha256, "44136fa355b3678a1146ad16f7e8649e94fb4fc21fe77e8310c060f61caaff8a");
}
