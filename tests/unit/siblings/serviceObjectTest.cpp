// The base of the services: reference counts, deletion, and exceptions at the interface.
#include <gtest/gtest.h>

#include "serviceFactory.h"
#include "serviceObject.h"

namespace siblings {

namespace {

int liveObjects = 0;

class CountedService final : public ServiceObject<CountedService, ISmartUnknown> {
public:
    explicit CountedService(const GUID& id) : ServiceObject(id) { ++liveObjects; }

private:
    friend ServiceObject;
    ~CountedService() { --liveObjects; }
};

class GreedyService final : public ServiceObject<GreedyService, ISmartUnknown> {
public:
    explicit GreedyService(const GUID& id) : ServiceObject(id) { throw std::bad_alloc(); }

private:
    friend ServiceObject;
    ~GreedyService() = default;
};

constexpr ServiceEntry services[] = {
    {SID_BaseServiceOne, MakeService<CountedService>},
    {SID_BaseServiceTwo, MakeService<GreedyService>},
};

TEST(ServiceObjectTest, lastReleaseDeletesTheObject) {
    auto* const service = new CountedService(SID_BaseServiceOne);
    EXPECT_EQ(service->AddRef(), 2);
    EXPECT_EQ(service->Release(), 1);
    EXPECT_EQ(liveObjects, 1);
    EXPECT_EQ(service->Release(), 0);
    EXPECT_EQ(liveObjects, 0);
}

TEST(ServiceObjectTest, aQueryKeepsTheObject) {
    auto* const service = new CountedService(SID_BaseServiceOne);
    void* view = nullptr;
    ASSERT_EQ(service->QueryInterface(&SID_BaseServiceOne, &view), 0U);
    EXPECT_EQ(service->Release(), 1);
    EXPECT_EQ(liveObjects, 1);
    EXPECT_EQ(static_cast<ISmartUnknown*>(view)->Release(), 0);
    EXPECT_EQ(liveObjects, 0);
}

TEST(ServiceFactoryTest, createsTheRequestedService) {
    void* object = nullptr;
    EXPECT_EQ(CreateService(services, &SID_BaseServiceOne, &object), 0U);
    EXPECT_EQ(liveObjects, 1);
    static_cast<ISmartUnknown*>(object)->Release();
    EXPECT_EQ(liveObjects, 0);
}

TEST(ServiceFactoryTest, reportsExhaustedMemoryAndLeavesTheOutputUnchanged) {
    int place = 0;
    void* object = &place;
    EXPECT_EQ(CreateService(services, &SID_BaseServiceTwo, &object), 0x8007000EU);
    EXPECT_EQ(object, &place);
}

TEST(ServiceFactoryTest, rejectsAnUnknownId) {
    int place = 0;
    void* object = &place;
    EXPECT_EQ(CreateService(services, &SID_BaseServiceThree, &object), 0x80004002U);
    EXPECT_EQ(object, &place);
    EXPECT_EQ(liveObjects, 0);
}

TEST(ServiceGuardTest, convertsExceptionsToResults) {
    EXPECT_EQ(Guarded([] { return RESULT_TRUNCATED; }), 0x8007007AU);
    EXPECT_EQ(Guarded([]() -> uint32_t { throw std::bad_alloc(); }), 0x8007000EU);
    EXPECT_EQ(Guarded([]() -> uint32_t { throw std::exception(); }), 0x80004005U);
}

} // namespace

} // namespace siblings
