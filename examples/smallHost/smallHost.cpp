// A small host: loads mordRev and its siblings, passes five connection events to it and prints the results.
//
//     smallHost [FOLDER]     FOLDER contains mordRev, ZelkBase and Ferrocore; default: the system's search path
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "frame/interfaces.h"
#include "frame/values.h"
#include "loadLibrary.h"

namespace {

// An event or a rule.
class Record final : public IEventRecord {
public:
    std::map<std::string, int64_t, std::less<>> numbers;
    std::map<std::string, std::string, std::less<>> texts;

    int32_t GetInt32(const char* name, int32_t* value) override {
        const auto number = numbers.find(name);
        if (number == numbers.end()) {
            return 1;
        }
        *value = static_cast<int32_t>(number->second);
        return RECORD_DELIVERED;
    }

    int32_t GetInt64(const char* name, int64_t* value) override {
        const auto number = numbers.find(name);
        if (number == numbers.end()) {
            return 1;
        }
        *value = number->second;
        return RECORD_DELIVERED;
    }

    // The first call requests the size, the second one supplies the buffer.
    int32_t GetString(const char* name, char* buffer, int32_t* size) override {
        const auto text = texts.find(name);
        if (text == texts.end()) {
            return 1;
        }
        const size_t needed = text->second.size() + 1;
        if (buffer == nullptr) {
            *size = static_cast<int32_t>(needed);
            return RECORD_BUFFER_NEEDED;
        }
        if (static_cast<size_t>(*size) < needed) {
            return 1;
        }
        std::memcpy(buffer, text->second.c_str(), needed);
        return RECORD_DELIVERED;
    }
};

// The dots that this host holds. Several event threads call it concurrently.
class Dots final : public IDotHost {
public:
    using Table = std::map<std::string, std::set<std::string>, std::less<>>; // rule guid to machine ids

    explicit Dots(Table table) : m_table(std::move(table)) {}

    int32_t DeleteDot(const char* guid, const char*, int32_t, const char*) override {
        const std::lock_guard lock(m_lock);
        const auto dot = m_table.find(guid);
        if (dot == m_table.end()) {
            return 1;
        }
        m_table.erase(dot);
        std::printf("  the dot of %s is deleted\n", guid);
        return 0;
    }

    // Returns all dots: additional rules do no harm. The texts here need no JSON escapes; other texts do. The host
    // allocates the answer here and frees it in FreeResult.
    int32_t QueryDot(const char*, const char*, char** result) override {
        const std::lock_guard lock(m_lock);
        std::string answer;
        for (const auto& [guid, mids] : m_table) {
            std::string names;
            for (const std::string& mid : mids) {
                names += (names.empty() ? "\"" : ", \"") + mid + "\": 1";
            }
            answer += (answer.empty() ? "\"" : ", \"") + guid + "\": {\"value\": 1, \"mid\": {" + names + "}}";
        }
        answer = "{" + answer + "}";
        *result = static_cast<char*>(std::malloc(answer.size() + 1));
        if (*result == nullptr) {
            return 1;
        }
        std::memcpy(*result, answer.c_str(), answer.size() + 1);
        return DOT_QUERY_ANSWERED;
    }

    int32_t FreeResult(char* result) override {
        std::free(result);
        return 0;
    }

private:
    std::mutex m_lock;
    Table m_table;
};

class Reports final : public IReportSink {
public:
    int32_t Report(int32_t, const char* text, uint32_t size) override {
        std::printf("%.*s\n", static_cast<int>(size), text);
        return 0;
    }
};

Record Event(const char* remoteIp, int32_t localPort, uint32_t flags) {
    Record event;
    event.numbers = {
        {"flags", flags}, {"pid", 4}, {"remote_addr_port", 49152}, {"local_addr_port", localPort}, {"net_drv", 20001}};
    event.texts = {{"remote_addr_ip", remoteIp}, {"local_addr_ip", "192.0.2.1"}};
    return event;
}

Record Rule(const char* guid, const char* type) {
    Record rule;
    rule.texts = {{"guid", guid}, {"type", type}};
    return rule;
}

void Decide(IMordRev* receiver, const char* what, Record event, std::vector<Record> rules) {
    std::vector<IEventRecord*> pointers;
    for (Record& rule : rules) {
        pointers.push_back(&rule);
    }
    std::printf("%s\n", what);
    uint32_t reply = REPLY_BLOCK;
    receiver->HandleEvent(&event, pointers.data(), static_cast<uint32_t>(pointers.size()), &reply);
    // The reply is the verdict; the result of HandleEvent is not.
    std::printf("  %s\n", reply == REPLY_BLOCK ? "block" : reply == REPLY_ALLOW ? "allow" : "allow, flagged");
}

// Sets the properties and the allow list, after Init.
bool SetUp(IMordRev* receiver) {
    uint32_t mode = MODE_ACTION_TABLE;
    char actions[] = R"({"print": 1})";
    return receiver->SetProperty(PROP_DEFENDER_MODE, &mode, sizeof mode) &&
           receiver->SetProperty(PROP_ACTION_JSON, actions, sizeof actions) &&
           receiver->SetAllowList(R"({"mid_list": [{"mid": "LAPTOP-12", "protocol": ["ssh", "rule-web-intranet"]}]})");
}

} // namespace

int main(int argc, char** argv) {
    const std::string folder = argc > 1 ? argv[1] : "";
    // Load the siblings first: mordRev searches for them among the loaded libraries and never loads them.
    for (const char* sibling : {"ZelkBase", "Ferrocore"}) {
        if (LoadFrom(folder, sibling) == nullptr) {
            return EXIT_FAILURE;
        }
    }
    void* const library = LoadFrom(folder, "mordRev");
    if (library == nullptr) {
        return EXIT_FAILURE;
    }
    const auto create = reinterpret_cast<CreateZelkObjectFunction>(FindExport(library, "CreateZelkObject"));
    void* object = nullptr;
    if (create == nullptr || create(&IID_IMordRev, &object) != RESULT_OK) {
        std::fprintf(stderr, "smallHost: the library does not provide IMordRev\n");
        return EXIT_FAILURE;
    }
    auto* const receiver = static_cast<IMordRev*>(object);

    Dots dots({{"rule-ssh", {"LAPTOP-12"}}, {"rule-web-intranet", {"LAPTOP-7", "LAPTOP-12"}}});
    Reports reports;
    if (!receiver->Init(&dots) || !SetUp(receiver)) {
        std::fprintf(stderr, "smallHost: cannot set up the receiver\n");
        return EXIT_FAILURE;
    }
    receiver->SetReportSink(&reports);
    receiver->Start();

    Decide(receiver, "ssh from a machine on the list", Event("192.0.2.12", 22, 0), {Rule("rule-ssh", "ssh")});
    Decide(receiver, "the same once more, its dot being used", Event("192.0.2.12", 22, 0), {Rule("rule-ssh", "ssh")});
    Decide(receiver, "the intranet, by the second rule, flagged", Event("192.0.2.12", 443, EVENT_FLAG_REPLY_TWO),
           {Rule("rule-ssh", "ssh"), Rule("rule-web-intranet", "web")});
    Decide(receiver, "printing, which the action table lets through", Event("192.0.2.30", 9100, 0),
           {Rule("rule-print", "print")});
    Decide(receiver, "a disconnect", Event("192.0.2.30", 9100, EVENT_FLAG_DISCONNECT), {Rule("rule-print", "print")});

    receiver->Stop();
    receiver->Uninit();
    return EXIT_SUCCESS;
}
