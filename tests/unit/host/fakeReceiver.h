// A scripted receiver.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "frame/interfaces.h"
#include "frame/values.h"

namespace mordhostTest {

// Records every call as text and returns the results that the test sets.
class FakeReceiver final : public IMordRev {
public:
    std::vector<std::string> calls;
    bool initResult = true;
    bool propertyResult = true;
    bool allowListResult = true;
    bool eventResult = true;
    uint32_t reply = REPLY_ALLOW;
    std::function<void(IDotHost*, IReportSink*)> onEvent; // runs within HandleEvent

    int32_t AddRef() override { return 2; }
    int32_t Release() override { return 1; }
    uint32_t QueryInterface(const GUID*, void**) override { return RESULT_NO_INTERFACE; }

    bool Init(IDotHost* host) override {
        m_host = host;
        calls.emplace_back("Init");
        return initResult;
    }
    bool Uninit() override {
        calls.emplace_back("Uninit");
        return true;
    }
    bool GetProperty(uint32_t, uint32_t, uint32_t) override { return true; }
    bool SetProperty(uint32_t key, void* data, uint32_t size) override {
        const bool text = key == PROP_MID || key == PROP_ACTION_JSON;
        const std::string value =
            text ? std::string(static_cast<char*>(data)) : std::to_string(*static_cast<uint32_t*>(data));
        calls.push_back("SetProperty " + std::to_string(key) + " " + value + " " + std::to_string(size));
        return propertyResult;
    }
    bool Start() override {
        calls.emplace_back("Start");
        return true;
    }
    bool Stop() override {
        calls.emplace_back("Stop");
        return false;
    }
    bool HandleEvent(IEventRecord* event, IEventRecord** rules, uint32_t ruleCount, uint32_t* replyWord) override {
        std::string call = "HandleEvent";
        int32_t flags = 0;
        event->GetInt32("flags", &flags);
        call += " " + std::to_string(flags);
        for (uint32_t i = 0; i < ruleCount; ++i) {
            char guid[40] = "";
            int32_t size = sizeof guid;
            rules[i]->GetString("guid", guid, &size);
            call += std::string(" ") + guid;
        }
        calls.push_back(call);
        if (onEvent) {
            onEvent(m_host, m_sink);
        }
        *replyWord = reply;
        return eventResult;
    }
    bool SetAllowList(const char* text) override {
        calls.push_back(std::string("SetAllowList ") + text);
        return allowListResult;
    }
    bool ClearAllowList() override { return true; }
    bool SetReportSink(IReportSink* sink) override {
        m_sink = sink;
        calls.emplace_back(sink == nullptr ? "SetReportSink null" : "SetReportSink");
        return true;
    }

private:
    IDotHost* m_host = nullptr;
    IReportSink* m_sink = nullptr;
};

} // namespace mordhostTest
