// The start of logging over a scripted system, after the services were bound.
#pragma once

#include "logging/startLogger.h"
#include "unit/logging/logFixture.h"

using Calls = std::vector<std::string>;

inline Calls operator+(Calls left, const Calls& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

class StartLoggerSteps : public LogFixture {
protected:
    // Binds the services and discards the recorded calls.
    void SetUp() override {
        LogFixture::SetUp();
        siblings.configTexts = {"C:\\logs\\"};
        StartLogger(nullptr);
        LogDebugViewEnabled = false;
        TakeCalls();
    }

    static Calls Reads(const std::string& path) {
        return {"GetPrivateProfileIntW(OUTLOG,WriteLog,0," + path + ")",
                "GetPrivateProfileIntW(OUTLOG,DebugView,0," + path + ")",
                "GetPrivateProfileIntW(OUTLOG,LogLevel,0," + path + ")"};
    }

    const Calls found{"IModuleFinder.FindModule(module.base)", "GetProcAddress(ZelkBase.dll,CreateZelkObject)"};
    const Calls configured{"create ILogConfig", "ILogConfig.GetConfigText(2097154,0)",
                           "ILogConfig.GetConfigText(2097154,0)"}; // 0x200002
    const Calls beginning = found + configured + Reads("C:\\logs\\Zelklog.ini");
};
