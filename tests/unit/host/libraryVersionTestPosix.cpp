// The stand-ins of the siblings have no note with a version.
#include "system/libraryVersion.h"

#include <gtest/gtest.h>

#include "system/filePath.h"
#include "system/hostSystem.h"

TEST(LibraryVersion, OfALibraryWithoutANoteIsEmpty) {
    std::string reason;
    void* const library = mordhost::LoadLibraryFile(
        mordhost::PathOf(MORDHOST_LIBRARY_DIRECTORY) / mordhost::LibraryFileName("Ferrocore"), reason);
    ASSERT_NE(library, nullptr) << reason;
    EXPECT_EQ(mordhost::VersionOfLibrary(library), "");
}
