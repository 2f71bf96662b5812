// The reader of ini files, compared with a model of it.
#include <string>

#include "fuzz/iniFile/fileInMemory.h"
#include "fuzz/iniFile/iniModel.h"
#include "fuzz/require.h"
#include "fuzz/targets.h"
#include "platform/iniFile.h"

namespace {

void RequireTheValuesOfTheModel(const std::string& text) {
    for (const char* const key : {"WriteLog", "DebugView", "LogLevel"}) {
        const std::string value = platform::FindIniValue(text, "OUTLOG", key);
        Require(value == ModelIniValue(text, "OUTLOG", key), "a value is that of the model");
        Require(platform::ParseIniInteger(value) == ModelIniInteger(value), "a number is that of the model");
    }
}

} // namespace

// An input that can begin with a byte order mark is read from a file.
void FuzzIniFile(const uint8_t* data, size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    if (size != 0 && data[0] >= 0xEF) {
        const std::string text = platform::ReadIniFile(FileInMemory(bytes));
        Require(text == ModelIniText(bytes), "the text of a file is that of the model");
        RequireTheValuesOfTheModel(text);
    } else {
        RequireTheValuesOfTheModel(bytes);
    }
    Require(platform::ParseIniInteger(bytes) == ModelIniInteger(bytes), "a number is that of the model");
}
