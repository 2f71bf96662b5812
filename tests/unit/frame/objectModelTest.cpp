// The class tree, the identifiers and the codes that hosts bind to; and the frame's contract with the creator policy.
#include <cstddef>
#include <cstdio>
#include <memory>
#include <new>
#include <thread>
#include <type_traits>

#include "kit/host/receiverFixture.h"

namespace {

using kit::ReceiverFixture;

// The tree.
static_assert(std::is_base_of_v<ISmartUnknown, IMordBase>);
static_assert(std::is_base_of_v<IMordBase, IMordRev>);
static_assert(std::is_base_of_v<Base::CZelkObjectBase, CMordRecvObject>);
static_assert(std::is_base_of_v<Base::empty_locker, CMordRecvObject>);
static_assert(std::is_base_of_v<CMordRecvObject, CMordRecv>);
static_assert(std::is_base_of_v<IMordRev, CMordRecv>);
static_assert(
    std::is_same_v<CMordRecvObject,
                   Base::CZelkObjectImpl<CMordRecv, Base::empty_locker, Base::default_object_creator<CMordRecv>>>);
static_assert(!std::is_base_of_v<Base::default_object_creator<CMordRecv>, CMordRecv>, "a template argument only");
static_assert(std::is_abstract_v<IMordRev> && std::is_abstract_v<IMordBase> && std::is_abstract_v<ISmartUnknown>);
static_assert(std::is_abstract_v<Base::CZelkObjectBase> && std::is_abstract_v<CMordRecvObject>);
static_assert(std::is_empty_v<Base::empty_locker>, "the locker has no state");
static_assert(std::is_same_v<decltype(&Base::CZelkObjectBase::ObjectHook), void (Base::CZelkObjectBase::*)()>);
static_assert(std::is_same_v<decltype(&Base::CZelkObjectBase::DestroySelf), void (Base::CZelkObjectBase::*)()>);

// Codes.
static_assert(RESULT_OK == 0);
static_assert(RESULT_NO_INTERFACE == 0x80004002U);

// The object's records, with their layout on this system's edge.
static_assert(sizeof(GUID) == 16);
static_assert(offsetof(GUID, Data2) == 4 && offsetof(GUID, Data3) == 6 && offsetof(GUID, Data4) == 8);

std::string Text(const GUID& id) {
    char text[64];
    std::snprintf(text, sizeof text, "{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}",
                  static_cast<unsigned>(id.Data1), id.Data2, id.Data3, id.Data4[0], id.Data4[1], id.Data4[2],
                  id.Data4[3], id.Data4[4], id.Data4[5], id.Data4[6], id.Data4[7]);
    return text;
}

TEST(Identifiers, AreThoseThatHostsAndSiblingsKnow) {
    EXPECT_EQ(Text(IID_IMordRev), "{7219CBFF-058B-4ACE-B29D-090214DB480C}");
    EXPECT_EQ(Text(IID_IMordRevSecond), "{6DADA238-8BD1-4DE4-A224-7D27539DA995}");
    EXPECT_EQ(Text(SID_BaseServiceOne), "{52203844-735C-447B-ACBC-73456337672C}");
    EXPECT_EQ(Text(SID_BaseServiceTwo), "{DCBDC082-7349-4FB8-8850-3504CB477C72}");
    EXPECT_EQ(Text(SID_BaseServiceThree), "{FC588690-8589-4EDA-BBB4-2E41964CB580}");
    EXPECT_EQ(Text(SID_ModuleFinder), "{62C4D866-AC50-4A39-B2EC-CA50E5AC94CD}");
    EXPECT_EQ(Text(SID_FerrocoreService), "{427FB576-CFB6-4786-940D-E1D00E5521BA}");
    EXPECT_EQ(Text(SID_TextConverter), "{AA40D0F0-0DF8-4E97-B142-9DEF8DA7EEF6}");
    EXPECT_EQ(Text(SID_MachineId), "{F81DEF0B-B738-4D44-A02E-CC0E7C59D3AA}");
    EXPECT_EQ(Text(SID_LogConfig), "{BE29AE26-D1F3-4E58-843D-5D0A485DFE24}");
    EXPECT_EQ(Text(SID_LogWriter), "{68F7E655-0361-40B6-8846-F140043AA417}");
}

using ObjectModel = ReceiverFixture;

TEST_F(ObjectModel, ObjectChainComesFirstAndTheInterfaceBehindIt) {
    const auto address = [](const void* part) { return reinterpret_cast<uintptr_t>(part); };
    const uintptr_t object = address(receiver.get());
    const Base::CZelkObjectBase* const chain = receiver.get();
    EXPECT_EQ(address(static_cast<const CMordRecvObject*>(receiver.get())), object);
    EXPECT_EQ(address(chain), object);
    EXPECT_GT(address(static_cast<const IMordRev*>(receiver.get())), object);
}

TEST_F(ObjectModel, AddRefAndReleaseAreConstantsWhateverWasCalledBefore) {
    for (int i = 0; i < 1000; ++i) {
        ASSERT_EQ(receiver->Release(), 1);
    }
    EXPECT_EQ(receiver->AddRef(), 2);
    EXPECT_EQ(receiver->AddRef(), 2);
    EXPECT_EQ(receiver->Release(), 1);
    EXPECT_EQ(Fields().ReferenceCount(), 0);
}

TEST_F(ObjectModel, ReferenceCountStartsAtZeroAndRisesWithEachSuccessfulQuery) {
    EXPECT_EQ(Fields().ReferenceCount(), 0);
    void* out = nullptr;
    EXPECT_EQ(receiver->QueryInterface(&IID_IMordRev, &out), RESULT_OK);
    EXPECT_EQ(Fields().ReferenceCount(), 1);
    EXPECT_EQ(receiver->QueryInterface(&IID_IMordRevSecond, &out), RESULT_OK);
    EXPECT_EQ(Fields().ReferenceCount(), 2);
    receiver->Release();
    EXPECT_EQ(Fields().ReferenceCount(), 2);
}

TEST_F(ObjectModel, ReferenceCountMissesNoneOfConcurrentQueries) {
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([this] {
            void* out = nullptr;
            for (int round = 0; round < 10'000; ++round) {
                receiver->QueryInterface(&IID_IMordRev, &out);
            }
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(Fields().ReferenceCount(), 80'000);
}

TEST_F(ObjectModel, BothIdentifiersYieldTheSameInterfacePointer) {
    void* first = nullptr;
    void* second = nullptr;
    EXPECT_EQ(receiver->QueryInterface(&IID_IMordRev, &first), RESULT_OK);
    EXPECT_EQ(receiver->QueryInterface(&IID_IMordRevSecond, &second), RESULT_OK);
    EXPECT_EQ(first, static_cast<IMordRev*>(receiver.get()));
    EXPECT_EQ(second, first);
}

TEST_F(ObjectModel, UnknownIdentifierLeavesTheOutPointerAndTheCount) {
    void* const before = this;
    void* out = before;
    EXPECT_EQ(receiver->QueryInterface(&SID_ModuleFinder, &out), RESULT_NO_INTERFACE);
    EXPECT_EQ(out, before);
    EXPECT_EQ(Fields().ReferenceCount(), 0);
}

TEST_F(ObjectModel, IdentifierThatDiffersInAnyOneByteIsUnknown) {
    for (const GUID& known : {IID_IMordRev, IID_IMordRevSecond}) {
        for (size_t i = 0; i < sizeof(GUID); ++i) {
            GUID other = known;
            reinterpret_cast<unsigned char*>(&other)[i] ^= 0x80;
            void* out = this;
            EXPECT_EQ(receiver->QueryInterface(&other, &out), RESULT_NO_INTERFACE) << "byte " << i;
            EXPECT_EQ(out, this) << "byte " << i;
        }
    }
    EXPECT_EQ(Fields().ReferenceCount(), 0);
}

TEST_F(ObjectModel, ObjectHookDoesNothing) {
    StartLogging();
    Base::CZelkObjectBase* const object = receiver.get();
    object->ObjectHook();
    EXPECT_EQ(siblings.calls.Take(), std::vector<std::string>());
    EXPECT_EQ(TakeRecords(), std::vector<std::string>());
    EXPECT_EQ(Fields().ReferenceCount(), 0);
}

// The creator policy makes the object on the heap; its memory comes back with the object, which the sanitizers watch.
TEST_F(ObjectModel, DestroySelfDestroysAHeapObjectThroughItsInterfaceAndReleasesWhatItHolds) {
    MakeReady();
    ASSERT_TRUE(Fields().HasMidService());
    Base::CZelkObjectBase* const object = receiver.release();
    object->DestroySelf();
    EXPECT_EQ(siblings.calls.Take(), std::vector<std::string>{"IMachineIdService.Release"});
    EXPECT_EQ(calls.Take(), std::vector<std::string>()) << "host and sink are not told";
    EXPECT_EQ(TakeRecords(), std::vector<std::string>());
}

TEST_F(ObjectModel, CreatorPolicyMakesAndDestroysOnTheHeap) {
    CMordRecv* const object = CMordRecv::ObjectCreator::Create();
    ASSERT_NE(object, nullptr);
    EXPECT_EQ(MordRevFields(*object).ReferenceCount(), 0);
    CMordRecv::ObjectCreator::Destroy(object);
    EXPECT_EQ(siblings.calls.Take(), std::vector<std::string>());
}

TEST_F(ObjectModel, DestroyWithTheDeleteFlagTakesAHeapObjectAndReturnsItsAddress) {
    MakeReady();
    IMordRev* const interface = receiver.release();
    const auto address = reinterpret_cast<uintptr_t>(interface);
    EXPECT_EQ(reinterpret_cast<uintptr_t>(interface->Destroy(1)), address);
    EXPECT_EQ(siblings.calls.Take(), std::vector<std::string>{"IMachineIdService.Release"});
}

TEST_F(ObjectModel, DestroyWithoutTheDeleteFlagLeavesTheMemoryToItsOwner) {
    alignas(CMordRecv) unsigned char memory[sizeof(CMordRecv)];
    auto* const object = new (memory) CMordRecv;
    siblings.WriteIni("[OUTLOG]\r\nWriteLog=1\r\n");
    ASSERT_TRUE(object->Init(&host));
    ASSERT_TRUE(object->SetAllowList(R"({"mid_list":[{"mid":"A","protocol":["tcp"]}]})"));
    siblings.calls.Take();
    IMordRev* const interface = object;
    EXPECT_EQ(interface->Destroy(0), interface);
    EXPECT_EQ(siblings.calls.Take(), std::vector<std::string>{"IMachineIdService.Release"});
}

TEST_F(ObjectModel, ObjectWithoutAMachineIdServiceReleasesNothing) {
    receiver->Start();
    static_cast<Base::CZelkObjectBase*>(receiver.release())->DestroySelf();
    EXPECT_EQ(siblings.calls.Take(), std::vector<std::string>());
}

} // namespace
