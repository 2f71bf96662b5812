// A log writer of the host replaces the one that writes a file.
#include <gtest/gtest.h>

#include "kit/host/countingHost.h"
#include "unit/siblings/logRecords.h"
#include "zelkBase/hostLog.h"

namespace siblingTest {

namespace {

// Counts references and collects records.
class HostWriter final : public ILogWriter {
public:
    int32_t AddRef() override { return ++references; }
    int32_t Release() override { return --references; }
    uint32_t QueryInterface(const GUID*, void**) override { return 0x80004002; }
    int32_t Start(const WideChar*, uint32_t) override { return 0; }
    int32_t SetLevel(uint32_t) override { return 0; }
    int32_t WriteRecord(const WideChar* text, int32_t) override {
        records += text;
        return 0;
    }

    int32_t references = 1;
    WideString records;
};

class HostLogTest : public testing::Test {
protected:
    ~HostLogTest() override { library.Make<IHostLog>(SID_HostLog)->SetLogWriter(nullptr); }

    ServiceHolder<ILogWriter> Writer() const { return library.Make<ILogWriter>(SID_LogWriter); }

    const LogFolder folder;
    const SiblingLibrary library{std::string("ZelkBase")};
    const ServiceHolder<IHostLog> hostLog = library.Make<IHostLog>(SID_HostLog);
    HostWriter hostWriter;
};

TEST_F(HostLogTest, factoryReturnsTheWriterOfTheHostWithAReference) {
    EXPECT_EQ(hostLog->SetLogWriter(&hostWriter), 0);
    EXPECT_EQ(hostWriter.references, 1) << "the library holds no reference";
    {
        const auto first = Writer();
        const auto second = Writer();
        EXPECT_EQ(first.Get(), &hostWriter);
        EXPECT_EQ(second.Get(), &hostWriter);
        EXPECT_EQ(hostWriter.references, 3);
    }
    EXPECT_EQ(hostWriter.references, 1);
}

TEST_F(HostLogTest, appliesToTheLibraryNotToTheObject) {
    library.Make<IHostLog>(SID_HostLog)->SetLogWriter(&hostWriter);
    EXPECT_EQ(Writer().Get(), &hostWriter);
    library.Make<IHostLog>(SID_HostLog)->SetLogWriter(nullptr);
    EXPECT_NE(Writer().Get(), &hostWriter);
}

TEST_F(HostLogTest, nullRestoresTheLogFile) {
    hostLog->SetLogWriter(&hostWriter);
    hostLog->SetLogWriter(nullptr);
    const auto writer = Writer();
    ASSERT_EQ(writer->Start(WIDE("MORD_Recv"), 0), 0);
    EXPECT_EQ(writer->WriteRecord(WIDE("one\r\n"), levelTrace), 0);
    EXPECT_EQ(folder.Log("MORD_Recv"), "one\r\n");
    EXPECT_EQ(hostWriter.records, WIDE(""));
}

TEST_F(HostLogTest, earlierWritersKeepTheirFile) {
    const auto before = Writer();
    hostLog->SetLogWriter(&hostWriter);
    ASSERT_EQ(before->Start(WIDE("MORD_Recv"), 0), 0);
    EXPECT_EQ(before->WriteRecord(WIDE("one\r\n"), levelTrace), 0);
    EXPECT_EQ(folder.Log("MORD_Recv"), "one\r\n");
}

TEST(HostLog, componentUsesTheWriterOfTheHost) {
    const LogFolder folder;
    folder.Write("Zelklog.ini", "[OUTLOG]\r\nWriteLog=1\r\n");
    const SiblingLibrary library{std::string("ZelkBase")};
    const SiblingLibrary component{std::string("mordRev")};
    // Never deleted: the component may hold its reference until the process ends.
    static HostWriter& writer = *new HostWriter;
    kit::CountingHost host; // never called
    library.Make<IHostLog>(SID_HostLog)->SetLogWriter(&writer);
    void* object = nullptr;
    ASSERT_EQ(component.Factory()(&IID_IMordRev, &object), 0U);
    ASSERT_TRUE(static_cast<IMordRev*>(object)->Init(&host));
    library.Make<IHostLog>(SID_HostLog)->SetLogWriter(nullptr);
    EXPECT_NE(writer.records.find(WIDE("] logger is ready\r\n")), WideString::npos);
    EXPECT_EQ(writer.references, 2);
    static_cast<IMordRev*>(object)->Uninit();
    EXPECT_FALSE(folder.Has("MORD_Recv.log"));
}

} // namespace

} // namespace siblingTest
