// A scripted base library: its factory and the two services that a host uses.
#pragma once

#include <cstring>
#include <string>

#include "decide/service.h"
#include "frame/values.h"
#include "zelkBase/hostLog.h"

namespace mordhostTest {

// Static, because a factory is a plain function.
class FakeBase final {
public:
    static inline bool hasHostLog = true;
    static inline ILogWriter* writer = nullptr; // set by the host

    static mordhost::ServiceFactory Factory() { return mordhost::ServiceFactory(Create); }

private:
    static uint32_t MORD_CDECL Create(const GUID* iid, void** out) {
        if (Same(*iid, SID_TextConverter)) {
            *out = static_cast<ITextConverter*>(new Converter);
        } else if (Same(*iid, SID_HostLog) && hasHostLog) {
            *out = static_cast<IHostLog*>(new HostLog);
        } else {
            return RESULT_NO_INTERFACE;
        }
        return RESULT_OK;
    }

    static bool Same(const GUID& one, const GUID& other) { return std::memcmp(&one, &other, sizeof one) == 0; }

    template <typename Interface>
    class Counted : public Interface {
    public:
        int32_t AddRef() override { return ++m_references; }
        int32_t Release() override {
            const int32_t left = --m_references;
            if (left == 0) {
                delete this;
            }
            return left;
        }
        uint32_t QueryInterface(const GUID*, void**) override { return RESULT_NO_INTERFACE; }

    protected:
        virtual ~Counted() = default;

    private:
        int32_t m_references = 1;
    };

    class HostLog final : public Counted<IHostLog> {
    public:
        int32_t SetLogWriter(ILogWriter* hosts) override {
            writer = hosts;
            return 0;
        }
    };

    // Converts wide text to narrow text: keeps ASCII and replaces the rest by U+FFFD, which has three bytes.
    class Converter final : public Counted<ITextConverter> {
    public:
        int32_t Convert(uint32_t command, TextConversionRequest* request) override {
            const auto* const source = static_cast<const WideChar*>(request->source);
            std::string text;
            for (uint32_t i = 0; i < request->sourceLength; ++i) {
                text += source[i] < 0x80 ? std::string(1, static_cast<char>(source[i])) : "\xEF\xBF\xBD";
            }
            const bool asked = command == CONVERT_WIDE_TO_NARROW && request->codePage == 65001 &&
                               text.size() < request->destinationCapacity;
            std::strcpy(static_cast<char*>(request->destination), asked ? text.c_str() : "");
            return 0;
        }
    };
};

} // namespace mordhostTest
