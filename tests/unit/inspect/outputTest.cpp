// What mordinspect writes.
#include <sstream>

#include "output.h"

using namespace mordinspect;

namespace {

Inspection Example() {
    return {312,
            32,
            {std::nullopt, ByStatus("the process's basic information", static_cast<NtStatus>(0xC0000138))},
            {WideText(WIDE("C:\\\u00C4\\Program.exe")), {}},
            {WideText(WIDE("\"Program\" -x")), {}},
            {std::nullopt, ByLimit("the text's header", "10 seconds")},
            {std::vector<Module>{{0x400000, 0x5000, {WideText(WIDE("C:\\Program.exe")), {}}, false},
                                 {0x500000, 0x1000, {WideText(WIDE("C:\\Long")), {}}, true},
                                 {0, 0, {std::nullopt, ByStatus("the path", static_cast<NtStatus>(0x8000000D))}, false},
                                 {0x77000000, 0x190000, {WideText(), {}}, false}},
             {},
             ByLimit("the next module", "16384 reads")},
            {std::nullopt, ByStatus("the loader's data", static_cast<NtStatus>(0xC0000005)), {}},
            {std::vector<Thread>{{9, 0x401000, {WideText(WIDE("C:\\Program.exe")), {}}},
                                 {10, 0, {std::nullopt, ByError("the thread", 5)}},
                                 {11, 0, {std::nullopt, Seen("no drive letter", WIDE("\\Device\\\u00C4\x1B"))}}},
             {},
             ByError("the next thread", 24)}};
}

template <typename Shown>
std::string TextOf(const Shown& shown) {
    std::ostringstream out;
    WriteText(out, shown);
    return out.str();
}

template <typename Shown>
std::string JsonOf(const Shown& shown) {
    std::ostringstream out;
    WriteJson(out, shown);
    return out.str();
}

} // namespace

TEST(InspectionText, ShowsEachPartOrWhyItIsNotThere) {
    EXPECT_EQ(TextOf(Example()), "process           312, 32-bit\n"
                                 "parent            unavailable: the process's basic information (status 0xC0000138)\n"
                                 "image path        C:\\\xC3\x84\\Program.exe\n"
                                 "command line      \"Program\" -x\n"
                                 "current directory unavailable: the text's header (the limit of 10 seconds was "
                                 "reached)\n"
                                 "32-bit modules\n"
                                 "  00400000     5000  C:\\Program.exe\n"
                                 "  00500000     1000  C:\\Long (truncated)\n"
                                 "  00000000        0  unavailable: the path (status 0x8000000D)\n"
                                 "  77000000   190000  (unnamed)\n"
                                 "  incomplete: the next module (the limit of 16384 reads was reached)\n"
                                 "64-bit modules    unavailable: the loader's data (status 0xC0000005)\n"
                                 "threads\n"
                                 "  9  starts at 00401000 in C:\\Program.exe\n"
                                 "  10  start unavailable: the thread (error 5)\n"
                                 "  11  start unavailable: no drive letter (seen: \\Device\\\xC3\x84?)\n"
                                 "  incomplete: the next thread (error 24)\n");
}

TEST(InspectionText, ShowsAddressesAsWideAsTheProcess) {
    Inspection inspection = Example();
    inspection.bits = 64;
    inspection.parent = {7, {}};
    inspection.modules64 = {
        std::vector<Module>{{0x7FF600400000, 0x5000, {WideText(WIDE("C:\\P.exe")), {}}, false}}, {}, {}};
    inspection.threads = {std::nullopt, Seen("the threads", std::string("none")), {}};
    const std::string text = TextOf(inspection);
    EXPECT_NE(text.find("parent            7\n"), std::string::npos) << text;
    EXPECT_NE(text.find("  00007ff600400000     5000  C:\\P.exe\n"), std::string::npos) << text;
    EXPECT_NE(text.find("threads           unavailable: the threads (seen: none)\n"), std::string::npos) << text;
}

TEST(InspectionText, ShowsTextThatATerminalWouldObeyAsQuestionMarks) {
    Inspection inspection = Example();
    inspection.imagePath = {WideText(WIDE("C:\\\x1B[2J\n\u009B.exe")), {}};
    EXPECT_NE(TextOf(inspection).find("image path        C:\\?[2J??.exe\n"), std::string::npos) << TextOf(inspection);
}

TEST(InspectionJson, HasEachPartOrAnObjectThatTellsWhyItIsNotThere) {
    EXPECT_EQ(JsonOf(Example()),
              R"({"process":312,"bits":32,)"
              R"("parent":{"unavailable":"the process's basic information","status":"0xC0000138"},)"
              "\"image_path\":\"C:\\\\\xC3\x84\\\\Program.exe\","
              R"("command_line":"\"Program\" -x",)"
              R"("current_directory":{"unavailable":"the text's header","limit":"10 seconds"},)"
              R"("modules_32":[{"base":"0x400000","size":20480,"path":"C:\\Program.exe"},)"
              R"({"base":"0x500000","size":4096,"path":"C:\\Long","truncated":true},)"
              R"({"base":"0x0","size":0,"path":{"unavailable":"the path","status":"0x8000000D"}},)"
              R"({"base":"0x77000000","size":1638400,"path":""}],)"
              R"("modules_64":{"unavailable":"the loader's data","status":"0xC0000005"},)"
              R"("threads":[{"id":9,"start":"0x401000","file":"C:\\Program.exe"},)"
              R"({"id":10,"file":{"unavailable":"the thread","error":5}},)"
              R"({"id":11,"file":{"unavailable":"no drive letter","seen":"\\Device\\)"
              "\xC3\x84\\u001B\"}}],"
              R"("incomplete":{"modules_32":{"unavailable":"the next module","limit":"16384 reads"},)"
              R"("threads":{"unavailable":"the next thread","error":24}}})"
              "\n");
}

TEST(InspectionJson, HasALoneSurrogateAsAReplacementCharacter) {
    const std::vector<ProcessData> processes = {{8, 4, WideText(1, WideChar{0xD800})}};
    EXPECT_EQ(JsonOf(processes), "{\"processes\":[{\"process\":8,\"parent\":4,\"image\":\"\xEF\xBF\xBD\"}]}\n");
}

TEST(ProcessList, IsATableOrAnObject) {
    const std::vector<ProcessData> processes = {{4, 0, WIDE("System")}, {3000, 4, WIDE("client.exe")}};
    EXPECT_EQ(TextOf(processes), " process   parent  image\n"
                                 "       4        0  System\n"
                                 "    3000        4  client.exe\n");
    EXPECT_EQ(JsonOf(processes), R"({"processes":[{"process":4,"parent":0,"image":"System"},)"
                                 R"({"process":3000,"parent":4,"image":"client.exe"}]})"
                                 "\n");
}
