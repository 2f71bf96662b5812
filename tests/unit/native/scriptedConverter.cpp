#include "unit/native/scriptedConverter.h"

#include <algorithm>
#include <string>

#include "frame/sameIdentifier.h"
#include "frame/values.h"
#include "kit/text/utf.h"
#include "platform/wideChar.h"

bool scriptedConverterWrites = true;

namespace {

class Converter : public ITextConverter {
public:
    int32_t AddRef() override { return 1; }
    int32_t Release() override { return 1; }
    uint32_t QueryInterface(const GUID*, void**) override { return RESULT_NO_INTERFACE; }

    int32_t Convert(uint32_t command, TextConversionRequest* request) override {
        if (!scriptedConverterWrites) {
            return 1;
        }
        if (command == CONVERT_WIDE_TO_NARROW) {
            Store(*request, kit::ToNarrow({static_cast<const WideChar*>(request->source), request->sourceLength}));
        } else {
            Store(*request, kit::ToWide({static_cast<const char*>(request->source), request->sourceLength}));
        }
        return 0;
    }

private:
    template <typename Unit>
    static void Store(const TextConversionRequest& request, const std::basic_string<Unit>& text) {
        auto* const destination = static_cast<Unit*>(request.destination);
        const size_t count = std::min<size_t>(text.size(), request.destinationCapacity - 1);
        std::copy_n(text.begin(), count, destination);
        destination[count] = Unit{};
    }
};

Converter converter;

} // namespace

uint32_t CreateScriptedConverter(const GUID* iid, void** out) {
    if (!SameIdentifier(*iid, SID_TextConverter)) {
        return RESULT_NO_INTERFACE;
    }
    *out = static_cast<ITextConverter*>(&converter);
    return RESULT_OK;
}
