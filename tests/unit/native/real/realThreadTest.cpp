// Threads of real processes of both widths: their lists, their blocks, their contexts.
#include <cstddef>
#include <cstring>

#include <windows.h>

#include "kit/system/published/processLayouts.h"
#include "native/native.h"
#include "unit/native/real/openHandles.h"
#include "unit/native/real/realChildFixture.h"

namespace {

// Wine tells a mapped file by a path that begins with "\??\Z:", which is no drive's device. This makes it that of B:.
// The definition goes with the object. All programs of a Wine prefix share it, so that one test at a time has it.
class DriveOfFiles {
public:
    DriveOfFiles() : m_turn(CreateMutexW(nullptr, FALSE, L"mordRevTestDrive")) {
        if (WaitForSingleObject(m_turn, 120000) > WAIT_ABANDONED) {
            throw std::runtime_error("there was no turn for the drive");
        }
        if (UnderWine()) {
            Remove(); // what a test left that was ended
            if (!DefineDosDeviceW(DDD_RAW_TARGET_PATH, L"B:", target)) {
                throw std::runtime_error("the drive could not be defined");
            }
        }
    }
    ~DriveOfFiles() {
        if (UnderWine()) {
            Remove();
        }
        ReleaseMutex(m_turn);
        CloseHandle(m_turn);
    }
    DriveOfFiles(const DriveOfFiles&) = delete;
    DriveOfFiles& operator=(const DriveOfFiles&) = delete;

private:
    static constexpr const wchar_t* target = L"\\??\\Z:";

    static void Remove() {
        DefineDosDeviceW(DDD_RAW_TARGET_PATH | DDD_REMOVE_DEFINITION | DDD_EXACT_MATCH_ON_REMOVE, L"B:", target);
    }

    const HANDLE m_turn;
};

class RealThreads : public RealChildFixture {
protected:
    struct AddedThread {
        uint32_t id;
        uint64_t start;
    };
    AddedThread Add(const char* command) {
        const auto values = child->Tell(command);
        return {static_cast<uint32_t>(std::stoul(values.at(0))), std::stoull(values.at(1), nullptr, 16)};
    }

    // The path as a record of a thread has it: on the drive that was defined for it.
    std::string ProgramOnItsDrive() const {
        std::string path = Program();
        if (UnderWine()) {
            path[0] = 'B';
        }
        return LowerCase(path);
    }

    static std::vector<uint32_t> IdsOf(const TargetProcess::ThreadList& list) {
        std::vector<uint32_t> ids;
        for (const auto& thread : list) {
            ids.push_back(thread->threadId);
        }
        return ids;
    }

    DriveOfFiles drive;
};

TEST_P(RealThreads, HaveStartAddressAndFileOfAThreadThatStartedInAFile) {
    const AddedThread added = Add("addThreadInFile");
    const auto thread = Target().ReadThread(added.id);
    ASSERT_NE(thread, nullptr);
    EXPECT_EQ(thread->threadId, added.id);
    EXPECT_EQ(thread->startAddress, added.start);
    EXPECT_EQ(LowerCase(kit::ToNarrow(thread->path)), ProgramOnItsDrive());
}

TEST_P(RealThreads, AreListedButForThoseThatStartedInPrivateMemory) {
    const AddedThread inFile = Add("addThreadInFile");
    const AddedThread inPrivateMemory = Add("addThreadInPrivateMemory");
    const auto ids = IdsOf(Target().ListThreads());
    EXPECT_EQ(std::count(ids.begin(), ids.end(), inFile.id), 1);
    EXPECT_EQ(std::count(ids.begin(), ids.end(), inPrivateMemory.id), 0);
    EXPECT_EQ(std::count(ids.begin(), ids.end(), GetThreadId(child->MainThread())), 1);
    EXPECT_EQ(Target().ReadThread(inPrivateMemory.id), nullptr);
}

TEST_P(RealThreads, OfOtherProcessesAreNotListed) {
    const auto ids = IdsOf(Target().ListThreads());
    EXPECT_EQ(std::count(ids.begin(), ids.end(), GetCurrentThreadId()), 0);
    EXPECT_FALSE(ids.empty());
}

TEST_P(RealThreads, OfAChildThatHasEndedAreNone) {
    TargetProcess& target = Target();
    child->End();
    EXPECT_TRUE(target.ListThreads().empty());
}

TEST_P(RealThreads, ListsLeaveTheNumberOfHandlesAsItWas) {
    const AddedThread inPrivateMemory = Add("addThreadInPrivateMemory");
    TargetProcess& target = Target();
    target.ListThreads();
    const size_t before = OpenHandles();
    for (int i = 0; i < 50; ++i) {
        EXPECT_FALSE(target.ListThreads().empty());
        EXPECT_EQ(target.ReadThread(inPrivateMemory.id), nullptr);
        EXPECT_EQ(target.ReadThread(0xFFFFFFF0), nullptr);
    }
    EXPECT_EQ(OpenHandles(), before);
    ExpectThatOneMoreHandleIsCounted();
}

// Blocks. A thread's own id stands in its TEB, which tells that the right memory was read.

template <typename P>
uint32_t ThreadIdIn(const std::vector<char>& teb) {
    published::ClientId<P> id{};
    std::memcpy(&id, teb.data() + offsetof(published::Teb<P>, ClientId), sizeof id);
    return static_cast<uint32_t>(id.UniqueThread);
}

TEST_P(RealThreads, The32BitTebIsReadOfA32BitChildAlone) {
    auto& native = const_cast<Native&>(Target().Access());
    std::vector<char> teb(4096);
    const uint64_t address = native.ReadTeb32(child->MainThread(), teb.data());
    if (ChildIs32Bit()) {
        EXPECT_NE(address, 0u);
        EXPECT_EQ(ThreadIdIn<uint32_t>(teb), GetThreadId(child->MainThread()));
    } else {
        EXPECT_EQ(address, 0u);
    }
}

TEST_P(RealThreads, The64BitTebIsReadOfAnyChild) {
    auto& native = const_cast<Native&>(Target().Access());
    std::vector<char> teb(6200);
    EXPECT_NE(native.ReadTeb64(child->MainThread(), teb.data()), 0u);
    EXPECT_EQ(ThreadIdIn<uint64_t>(teb), GetThreadId(child->MainThread()));
}

TEST_P(RealThreads, The32BitPebIsReadOfA32BitChildAlone) {
    auto& native = const_cast<Native&>(Target().Access());
    published::Peb<uint32_t> peb{};
    const uint64_t address = native.ReadPeb32(&peb);
    if (ChildIs32Bit()) {
        EXPECT_EQ(address, std::stoull(child->Tell("peb").at(0), nullptr, 16));
        EXPECT_NE(peb.ProcessParameters, 0u);
    } else {
        EXPECT_EQ(address, 0u);
    }
}

TEST_P(RealThreads, The64BitPebIsReadOfAnyChild) {
    auto& native = const_cast<Native&>(Target().Access());
    published::Peb<uint64_t> peb{};
    const uint64_t address = native.ReadPeb64(&peb);
    EXPECT_NE(address, 0u);
    EXPECT_NE(peb.Ldr, 0u);
    if (!ChildIs32Bit()) {
        EXPECT_EQ(address, std::stoull(child->Tell("peb").at(0), nullptr, 16));
    }
}

// Contexts of a thread that does not run.

class RealContexts : public RealThreads {
protected:
    void SetUp() override {
        RealThreads::SetUp();
        SuspendThread(child->MainThread());
    }

    static constexpr uint32_t controlOfX86 = 0x10001;
    static constexpr uint32_t controlOfX64 = 0x100001;

    // Context records by their published offsets: flags, stack pointer and instruction pointer of either width.
    struct Context32 {
        uint32_t ContextFlags;
        char before[0xB8 - 4];
        uint32_t Eip;
        uint32_t SegCs;
        uint32_t EFlags;
        uint32_t Esp;
        char behind[0x2CC - 0xC8];
    };
    static_assert(sizeof(Context32) == 716);
    struct alignas(16) Context64 {
        char before[0x30];
        uint32_t ContextFlags;
        char registers[0x98 - 0x34];
        uint64_t Rsp;
        char more[0xF8 - 0xA0];
        uint64_t Rip;
        char behind[0x4D0 - 0x100];
    };
    static_assert(sizeof(Context64) == 1232);
};

TEST_P(RealContexts, The32BitContextIsThatOfA32BitChildAlone) {
    auto& native = const_cast<Native&>(Target().Access());
    Context32 context{};
    context.ContextFlags = controlOfX86;
    const NtStatus status = native.GetThreadContext32(child->MainThread(), &context);
    if (ChildIs32Bit()) {
        EXPECT_EQ(status, 0);
        EXPECT_NE(context.Eip, 0u);
        EXPECT_NE(context.Esp, 0u);
    } else {
        EXPECT_EQ(status, callerIs32Bit ? StatusFromWord(0xC00000BB) : 0);
        EXPECT_EQ(context.Eip, 0u);
    }
}

TEST_P(RealContexts, The64BitContextIsThatOfAnyChild) {
    auto& native = const_cast<Native&>(Target().Access());
    Context64 context{};
    context.ContextFlags = controlOfX64;
    EXPECT_EQ(native.GetThreadContext64(child->MainThread(), &context), 0);
    EXPECT_NE(context.Rip, 0u);
    EXPECT_NE(context.Rsp, 0u);
}

TEST_P(RealContexts, ABadThreadHandleIsTold) {
    auto& native = const_cast<Native&>(Target().Access());
    Context64 context{};
    context.ContextFlags = controlOfX64;
    EXPECT_LT(native.GetThreadContext64(child->Handle(), &context), 0);
}

INSTANTIATE_TEST_SUITE_P(Children, RealThreads, testing::Values(32, 64), ChildName);
INSTANTIATE_TEST_SUITE_P(Children, RealContexts, testing::Values(32, 64), ChildName);

} // namespace
