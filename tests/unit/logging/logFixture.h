// Sets the log state over a scripted system.
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

    // Sets the flags, creates or removes the logger, and discards the recorded calls.
    void SetLogState(bool file, bool debugView, bool logger) {
        LogFileEnabled = file;
        LogDebugViewEnabled = debugView;
        LoggerObject.Reset();
        if (logger) {
            LoggerObject.Create(kit::ScriptedSiblings::Factory(), SID_LogWriter);
        }
        TakeCalls();
    }

    // The raw texts of the debug output or the logger since the last call.
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
