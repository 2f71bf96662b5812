// Records lose narrow text if the first conversion of the process finds no converter. Each case needs a new process.
#include "kit/text/utf.h"
#include "logging/logMacros.h"
#include "logging/logTimestamp.h"
#include "unit/logging/logFixture.h"

using Texts = std::vector<std::string>;

// Outside any namespace: that would be part of the names in the records.
struct BlankSample {
    static void Trace(const std::string& mid, uint32_t reply) {
        line = __LINE__ + 1;
        LOG_TRACE(WIDE("match mid=") << mid << WIDE(",rule guid=") << mid.c_str() << WIDE(",reply:") << reply);
    }
    static void Error() { LOG_ERROR("narrow words"); }

    static inline int line = 0;
};

namespace {

class LogWithoutConverter : public LogFixture {
protected:
    void SetUp() override {
        LogFixture::SetUp();
        SetLogState(true, true, true);
    }

    // The one record since the last call, without its time.
    std::string TakeWithoutTime() {
        const Texts texts = TakeRawRecords();
        EXPECT_EQ(texts.size(), 1U);
        EXPECT_EQ(TakeDebugOutput(), texts);
        return texts.empty() ? "" : texts[0].substr(kit::ToNarrow(LogTimestamp().View()).size());
    }

    void ExpectNoNarrowText() {
        BlankSample::Trace("A", 1);
        EXPECT_EQ(TakeWithoutTime(),
                  " [TRACE][ " + std::to_string(BlankSample::line) + "][] [4312match mid=,rule guid=,reply:1\r\n");
    }
};

TEST_F(LogWithoutConverter, RecordKeepsOnlyWideTextAndNumbers) {
    system.modules.erase("ZelkBase.dll");
    ExpectNoNarrowText();
}

TEST_F(LogWithoutConverter, NarrowMessageIsLost) {
    system.modules.erase("ZelkBase.dll");
    BlankSample::Error();
    const std::string text = TakeWithoutTime();
    EXPECT_TRUE(text.starts_with(" [ERROR][ ")) << text;
    EXPECT_TRUE(text.ends_with("][] [4312\r\n")) << text;
}

TEST_F(LogWithoutConverter, LibraryWithoutAFactoryGivesTheSameRecord) {
    system.modules["ZelkBase.dll"] = nullptr;
    ExpectNoNarrowText();
}

TEST_F(LogWithoutConverter, RejectedConverterGivesTheSameRecordPermanently) {
    siblings.refused = {"ITextConverter"};
    ExpectNoNarrowText();
    siblings.refused.clear();
    TakeCalls();
    ExpectNoNarrowText();
    EXPECT_EQ(TakeCalls().size(), 1U) << "only the debug output is called";
}

} // namespace
