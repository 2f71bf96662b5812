// A host compiled in the Microsoft ABI: it calls every operation of the receiver through C++ virtual calls, with its
// own objects as host, records and sink, and prints what happens. Its last act is to delete the receiver.
#include "abi/msvcHost/hostObjects.h"

namespace {

constexpr uint32_t notLoadable = 4;

const char* const allowList = R"({"mid_list": [{"mid": "MID-7", "protocol": ["TYPE-1", "GUID-2"]}]})";

const NamedValue eventValues[] = {
    {"flags", nullptr, 0x10},
    {"pid", nullptr, 4},
    {"remote_addr_ip", "10.0.0.2", 0},
    {"remote_addr_port", nullptr, 49152},
    {"local_addr_ip", "10.0.0.1", 0},
    {"local_addr_port", nullptr, 445},
    {"net_drv", nullptr, -0x123456789LL},
};
const NamedValue firstRuleValues[] = {{"guid", "GUID-1", 0}, {"type", "TYPE-1", 0}};
const NamedValue secondRuleValues[] = {{"guid", "GUID-2", 0}, {"type", "web", 0}};

void* Load(const wchar_t* name) {
    void* const module = LoadLibraryW(BesideTheProgram(name));
    if (module == nullptr) {
        PrintLine("cannot be loaded: ", name);
        ExitProcess(notLoadable);
    }
    return module;
}

void Handle(Receiver* receiver, EventRecord* event, EventRecord** rules, uint32_t ruleCount) {
    uint32_t reply = 77;
    const bool result = receiver->HandleEvent(event, rules, ruleCount, &reply);
    PrintLine("HandleEvent: ", result, ", reply ", reply);
}

void CallEveryOperation(Receiver* receiver) {
    Host host;
    Sink sink;
    Record event(eventValues);
    Record firstRule(firstRuleValues);
    Record secondRule(secondRuleValues);
    EventRecord* rules[] = {&firstRule, &secondRule};
    uint32_t mode = 3;

    PrintLine("AddRef: ", static_cast<uint32_t>(receiver->AddRef()));
    PrintLine("Release: ", static_cast<uint32_t>(receiver->Release()));
    void* out = nullptr;
    const uint32_t found = receiver->QueryInterface(&secondReceiverId, &out);
    PrintLine("QueryInterface: ", found, ", ", out == receiver ? "the receiver" : "something else");

    PrintLine("SetProperty: ", receiver->SetProperty(8, &mode, sizeof mode));
    PrintLine("Init: ", receiver->Init(&host));
    PrintLine("SetProperty: ", receiver->SetProperty(8, &mode, sizeof mode));
    PrintLine("GetProperty: ", receiver->GetProperty(8, 1, 2));
    PrintLine("SetReportSink: ", receiver->SetReportSink(&sink));
    PrintLine("SetAllowList: ", receiver->SetAllowList(allowList));
    PrintLine("Start: ", receiver->Start());
    Handle(receiver, &event, rules, 2);
    PrintLine("ClearAllowList: ", receiver->ClearAllowList());
    Handle(receiver, &event, rules, 1);
    PrintLine("Stop: ", receiver->Stop());
    PrintLine("Uninit: ", receiver->Uninit());
}

} // namespace

extern "C" void __cdecl Entry() {
    Load(L"ZelkBase.dll");
    Load(L"Ferrocore.dll");
    void* const library = Load(L"..\\..\\..\\bin\\mordRev.dll");
    const auto create = reinterpret_cast<Factory>(GetProcAddress(library, "CreateZelkObject"));

    void* out = nullptr;
    PrintLine("CreateZelkObject: ", create(&receiverId, &out));
    auto* const receiver = static_cast<Receiver*>(out);
    CallEveryOperation(receiver);
    delete receiver;
    PrintLine("deleted");
    ExitProcess(0);
}
