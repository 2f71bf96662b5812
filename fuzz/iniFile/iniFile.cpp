// The reader of ini files, against the model of it.
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
        Require(value == ModelIniValue(text, "OUTLOG", key), "a value is the model's");
        Require(platform::ParseIniInteger(value) == ModelIniInteger(value), "a number is the model's");
    }
}

} // namespace

// What can begin with a byte order mark goes through a file.
void FuzzIniFile(const uint8_t* data, size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    if (size != 0 && data[0] >= 0xEF) {
        const std::string text = platform::ReadIniFile(FileInMemory(bytes));
        Require(text == ModelIniText(bytes), "the text of a file is the model's");
        RequireTheValuesOfTheModel(text);
    } else {
        RequireTheValuesOfTheModel(bytes);
    }
    Require(platform::ParseIniInteger(bytes) == ModelIniInteger(bytes), "a number is the model's");
}
