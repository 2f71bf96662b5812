// The factories of the built libraries, and the references of every service.
#include <string>

#include <gtest/gtest.h>

#include "unit/siblings/offeredServices.h"
#include "unit/siblings/siblingLibrary.h"

namespace siblingTest {

namespace {

constexpr uint32_t noInterface = 0x80004002;

constexpr GUID unknownId = {0x52203844, 0x735C, 0x447B, {0xAC, 0xBC, 0x73, 0x45, 0x63, 0x37, 0x67, 0x2D}};

class OfferedServiceTest : public testing::TestWithParam<OfferedService> {
protected:
    const SiblingLibrary library{std::string(GetParam().library)};
};

INSTANTIATE_TEST_SUITE_P(All, OfferedServiceTest, testing::ValuesIn(offered),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST_P(OfferedServiceTest, startsWithOneReference) {
    void* object = nullptr;
    ASSERT_EQ(library.Factory()(&GetParam().id, &object), 0U);
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(static_cast<ISmartUnknown*>(object)->Release(), 0);
}

TEST_P(OfferedServiceTest, countsItsReferences) {
    const auto service = library.Make<ISmartUnknown>(GetParam().id);
    EXPECT_EQ(service->AddRef(), 2);
    EXPECT_EQ(service->AddRef(), 3);
    EXPECT_EQ(service->Release(), 2);
    EXPECT_EQ(service->Release(), 1);
}

TEST_P(OfferedServiceTest, isANewObjectForEachCall) {
    const auto first = library.Make<ISmartUnknown>(GetParam().id);
    const auto second = library.Make<ISmartUnknown>(GetParam().id);
    EXPECT_NE(first.Get(), second.Get());
}

TEST_P(OfferedServiceTest, queryInterfaceAddsAReferenceForItsId) {
    const auto service = library.Make<ISmartUnknown>(GetParam().id);
    void* view = nullptr;
    EXPECT_EQ(service->QueryInterface(&GetParam().id, &view), 0U);
    EXPECT_EQ(view, service.Get());
    EXPECT_EQ(service->Release(), 1);
}

TEST_P(OfferedServiceTest, queryInterfaceRejectsOtherIds) {
    const auto service = library.Make<ISmartUnknown>(GetParam().id);
    for (const OfferedService& other : offered) {
        if (std::string(other.name) == GetParam().name) {
            continue;
        }
        int place = 0;
        void* view = &place;
        EXPECT_EQ(service->QueryInterface(&other.id, &view), noInterface) << other.name;
        EXPECT_EQ(view, &place) << other.name;
    }
    EXPECT_EQ(service->AddRef(), 2) << "a rejected query adds no reference";
    service->Release();
}

TEST_P(OfferedServiceTest, isUnknownToTheOtherLibrary) {
    const std::string other = std::string(GetParam().library) == "ZelkBase" ? "Ferrocore" : "ZelkBase";
    int place = 0;
    void* object = &place;
    EXPECT_EQ(SiblingLibrary(other).Factory()(&GetParam().id, &object), noInterface);
    EXPECT_EQ(object, &place);
}

class FactoryTest : public testing::TestWithParam<const char*> {};

INSTANTIATE_TEST_SUITE_P(All, FactoryTest, testing::Values("ZelkBase", "Ferrocore"),
                         [](const auto& tested) { return std::string(tested.param); });

TEST_P(FactoryTest, rejectsAnUnknownIdAndLeavesTheOutputUnchanged) {
    const SiblingLibrary library{std::string(GetParam())};
    for (const GUID& id : {unknownId, IID_IMordRev, IID_IMordRevSecond, GUID{}}) {
        int place = 0;
        void* object = &place;
        EXPECT_EQ(library.Factory()(&id, &object), noInterface);
        EXPECT_EQ(object, &place);
    }
}

TEST_P(FactoryTest, libraryIsFoundByItsFileName) {
    const SiblingLibrary library{std::string(GetParam())};
    EXPECT_EQ(kit::FindLoadedLibrary(kit::LibraryFile(GetParam())), library.Handle());
}

} // namespace

} // namespace siblingTest
