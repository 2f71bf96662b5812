#include <algorithm>
#include <cstdio>
#include <iterator>
#include <utility>

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "output.h"
#include "platform/unicode.h"

namespace mordinspect {

namespace {

using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

void Text(Writer& json, const std::string& text) {
    json.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

void Value(Writer& json, const WideText& text) {
    Text(json, platform::ToUtf8({reinterpret_cast<const char16_t*>(text.data()), text.size()}));
}

void Value(Writer& json, uint32_t number) {
    json.Uint(number);
}

void Address(Writer& json, uint64_t address) {
    char digits[24];
    std::snprintf(digits, sizeof digits, "0x%llx", static_cast<unsigned long long>(address));
    json.String(digits);
}

void Value(Writer& json, const Refusal& refusal) {
    json.StartObject();
    json.Key("unavailable");
    Text(json, refusal.step);
    switch (refusal.kind) {
    case Refusal::Kind::status:
        json.Key("status");
        Text(json, Hex(refusal.code));
        break;
    case Refusal::Kind::error:
        json.Key("error");
        json.Uint(refusal.code);
        break;
    case Refusal::Kind::limit:
        json.Key("limit");
        Value(json, refusal.text);
        break;
    case Refusal::Kind::seen:
        json.Key("seen");
        Value(json, refusal.text);
        break;
    }
    json.EndObject();
}

template <typename T>
void Value(Writer& json, const Reading<T>& reading);

void Value(Writer& json, const Module& module) {
    json.StartObject();
    json.Key("base");
    Address(json, module.base);
    json.Key("size");
    json.Uint(module.size);
    json.Key("path");
    Value(json, module.path);
    if (module.pathIsCut) {
        json.Key("truncated");
        json.Bool(true);
    }
    json.EndObject();
}

void Value(Writer& json, const Thread& thread) {
    json.StartObject();
    json.Key("id");
    json.Uint(thread.id);
    if (thread.file.value) {
        json.Key("start");
        Address(json, thread.start);
    }
    json.Key("file");
    Value(json, thread.file);
    json.EndObject();
}

void Value(Writer& json, const ProcessData& process) {
    json.StartObject();
    json.Key("process");
    json.Uint(process.processId);
    json.Key("parent");
    json.Uint(process.parentProcessId);
    json.Key("image");
    Value(json, process.imageName);
    json.EndObject();
}

template <typename T>
void Value(Writer& json, const std::vector<T>& values) {
    json.StartArray();
    for (const T& value : values) {
        Value(json, value);
    }
    json.EndArray();
}

template <typename T>
void Value(Writer& json, const Reading<T>& reading) {
    if (reading.value) {
        Value(json, *reading.value);
    } else {
        Value(json, reading.refusal);
    }
}

template <typename T>
void Value(Writer& json, const Listing<T>& list) {
    if (list.value) {
        Value(json, *list.value);
    } else {
        Value(json, list.refusal);
    }
}

// Writes the incomplete lists, each with its reason.
void WriteIncompleteLists(Writer& json, const Inspection& inspection) {
    const std::pair<const char*, const std::optional<Refusal>&> lists[] = {
        {"modules_32", inspection.modules32.cut},
        {"modules_64", inspection.modules64.cut},
        {"threads", inspection.threads.cut},
    };
    if (std::none_of(std::begin(lists), std::end(lists), [](const auto& list) { return list.second.has_value(); })) {
        return;
    }
    json.Key("incomplete");
    json.StartObject();
    for (const auto& [name, cut] : lists) {
        if (cut) {
            json.Key(name);
            Value(json, *cut);
        }
    }
    json.EndObject();
}

} // namespace

void WriteJson(std::ostream& out, const Inspection& inspection) {
    rapidjson::StringBuffer buffer;
    Writer json(buffer);
    json.StartObject();
    json.Key("process");
    json.Uint(inspection.processId);
    json.Key("bits");
    json.Int(inspection.bits);
    json.Key("parent");
    Value(json, inspection.parent);
    json.Key("image_path");
    Value(json, inspection.imagePath);
    json.Key("command_line");
    Value(json, inspection.commandLine);
    json.Key("current_directory");
    Value(json, inspection.currentDirectory);
    json.Key("modules_32");
    Value(json, inspection.modules32);
    json.Key("modules_64");
    Value(json, inspection.modules64);
    json.Key("threads");
    Value(json, inspection.threads);
    WriteIncompleteLists(json, inspection);
    json.EndObject();
    out << buffer.GetString() << '\n';
}

void WriteJson(std::ostream& out, const std::vector<ProcessData>& processes) {
    rapidjson::StringBuffer buffer;
    Writer json(buffer);
    json.StartObject();
    json.Key("processes");
    Value(json, processes);
    json.EndObject();
    out << buffer.GetString() << '\n';
}

} // namespace mordinspect
