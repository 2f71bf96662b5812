#include "system/filePath.h"

#include <gtest/gtest.h>

#include "unit/host/temporaryDirectory.h"

using namespace mordhost;
using kit::TemporaryDirectory;

TEST(FilePath, ConvertsAUtf8NameToThePathOfTheFileAndBack) {
    const TemporaryDirectory directory;
    const std::string name = directory.Name("p\xC3\xB6\xE2\x82\xAC.json");
    directory.Write("p\xC3\xB6\xE2\x82\xAC.json", "text");
    EXPECT_TRUE(std::filesystem::exists(directory.Path() / u8"p\u00f6\u20ac.json"));
    EXPECT_EQ(Utf8Of(PathOf(name).filename()), "p\xC3\xB6\xE2\x82\xAC.json");
}
