// The log state as a test sets it, over a scripted system.
#pragma once

#include <string>
#include <vector>

#include "kit/system/scriptedSystem.h"
#include "kit/text/logRecords.h"
#include "logging/logState.h"

class LogFixture : public kit::ScriptedSystemFixture {
protected:
    void SetUp() override {
        ScriptedSystemFixture::SetUp();
        ClearLogState();
    }
    void TearDown() override { ClearLogState(); }

    static void ClearLogState() {
        LogFileEnabled = false;
        LogDebugViewEnabled = false;
        LoggerObject.Reset();
    }

    // Sets the flags, makes a logger if that is wanted, and forgets what led there.
    void SetLogState(bool file, bool debugView, bool logger) {
        LogFileEnabled = file;
        LogDebugViewEnabled = debugView;
        LoggerObject.Reset();
        if (logger) {
            LoggerObject.Create(kit::ScriptedSiblings::Factory(), SID_LogWriter);
        }
        TakeCalls();
    }

    // The raw texts since the last call: of the debug output, and of the logger.
    std::vector<std::string> TakeDebugOutput() { return system.debugOutput.Take(); }
    std::vector<std::string> TakeRawRecords() {
        std::vector<std::string> texts;
        for (const auto& record : siblings.Records()) {
            texts.push_back(record.raw);
        }
        siblings.TakeRecordTexts();
        return texts;
    }
};
