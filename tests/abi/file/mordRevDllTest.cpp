// The built mordRev.dll, as a file and as the loader takes it.
#include <algorithm>
#include <string>
#include <vector>

#include <windows.h>

#include <gtest/gtest.h>

#include "abi/edge.h"
#include "abi/file/peFile.h"

namespace {

using namespace edge;

class MordRevDll : public ::testing::Test {
protected:
    const PeFile file{LibraryPath()};
};

// A text of the version resource: UTF-16 with its NUL.
std::string Wide(const std::string& text) {
    std::string wide;
    for (const char c : text + '\0') {
        wide += c;
        wide += '\0';
    }
    return wide;
}

TEST_F(MordRevDll, IsAPe32DllForI386) {
    EXPECT_EQ(file.machine, IMAGE_FILE_MACHINE_I386);
    EXPECT_EQ(file.characteristics & IMAGE_FILE_DLL, IMAGE_FILE_DLL);
    EXPECT_EQ(file.characteristics & IMAGE_FILE_32BIT_MACHINE, IMAGE_FILE_32BIT_MACHINE);
}

TEST_F(MordRevDll, ExportsTheUndecoratedFactoryAtOrdinalOneAndNothingElse) {
    EXPECT_EQ(file.exportName, "mordRev.dll");
    EXPECT_EQ(file.exportCount, 1U);
    EXPECT_EQ(file.exports, (std::vector<PeExport>{{"CreateZelkObject", 1}}));
}

TEST_F(MordRevDll, ImportsFromSystemLibrariesOnly) {
    // The runtime of the compiler is linked in; these two are part of every Windows.
    std::vector<std::string> libraries = file.importsFrom;
    std::sort(libraries.begin(), libraries.end());
    libraries.erase(std::unique(libraries.begin(), libraries.end()), libraries.end());
    EXPECT_EQ(libraries, (std::vector<std::string>{"KERNEL32.dll", "msvcrt.dll"}));
    EXPECT_FALSE(file.hasDelayedImports);
}

TEST_F(MordRevDll, CanBeLoadedAnywhereAndExecutesNoData) {
    EXPECT_TRUE(file.hasRelocations);
    EXPECT_EQ(file.characteristics & IMAGE_FILE_RELOCS_STRIPPED, 0);
    EXPECT_NE(file.dllCharacteristics & IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE, 0);
    EXPECT_NE(file.dllCharacteristics & IMAGE_DLLCHARACTERISTICS_NX_COMPAT, 0);
}

TEST_F(MordRevDll, HasAVersionResourceWithTheVersionOfTheProject) {
    EXPECT_NE(file.version.find(Wide("VS_VERSION_INFO")), std::string::npos);
    EXPECT_NE(file.version.find(Wide("FileVersion")), std::string::npos);
    EXPECT_NE(file.version.find(Wide(ABI_PROJECT_VERSION)), std::string::npos);
    EXPECT_NE(file.version.find(Wide("mordRev.dll")), std::string::npos);
    const char signature[] = {'\xBD', '\x04', '\xEF', '\xFE'}; // of the fixed part
    EXPECT_NE(file.version.find(std::string(signature, sizeof signature)), std::string::npos);
}

TEST_F(MordRevDll, NamesNoFolderOfTheBuildMachine) {
    const FileBytes bytes(LibraryPath());
    EXPECT_FALSE(bytes.Contains(ABI_SOURCE_FOLDER));
    EXPECT_FALSE(bytes.Contains(ABI_BUILD_FOLDER));
}

TEST(MordRevDllLoaded, GivesTheFactoryByNameAndByOrdinal) {
    const auto module = static_cast<HMODULE>(LibraryModule());
    const auto byName = reinterpret_cast<uintptr_t>(GetProcAddress(module, "CreateZelkObject"));
    EXPECT_NE(byName, 0U);
    EXPECT_EQ(reinterpret_cast<uintptr_t>(GetProcAddress(module, MAKEINTRESOURCEA(1))), byName);
    EXPECT_EQ(GetProcAddress(module, MAKEINTRESOURCEA(2)), nullptr);
    EXPECT_EQ(GetProcAddress(module, "_CreateZelkObject"), nullptr);
}

TEST(MordRevDllLoaded, NeitherNeedsNorLoadsTheSiblings) {
    LibraryModule();
    EXPECT_NE(TheReceiver(), nullptr);
    EXPECT_EQ(GetModuleHandleW(L"ZelkBase.dll"), nullptr);
    EXPECT_EQ(GetModuleHandleW(L"Ferrocore.dll"), nullptr);
}

} // namespace
