#include <fstream>
#include <stdexcept>

#include "measurements.h"
#include "sampling.h"
#include "shape.h"
#include "system/hostSystem.h"
#include "workload.h"

namespace bench {

namespace {

using namespace std::chrono_literals;

constexpr int rounds = 250;
constexpr Shape shape{8, 8};

// A record of ClearAllowList, whose text is one literal: nothing but what each record has.
constexpr auto shortRecord = WIDE(
    "2026-11-16 14:03:07 [TRACE][allowList.cpp 000][CMordRecv::ClearAllowList] [4312] ClearAllowList_mids start\r\n");

size_t LinesOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        throw std::runtime_error("there is no log at " + file.string());
    }
    size_t lines = 0;
    for (std::string line; std::getline(stream, line);) {
        // The answer and the report are texts of several lines.
        lines += line.find(" [TRACE][") != std::string::npos || line.find(" [ERROR][") != std::string::npos ? 1 : 0;
    }
    return lines;
}

} // namespace

void MeasureRecords(IMordRev& receiver, const std::filesystem::path& logFolder, ILogWriter& writer) {
    const Workload workload(shape);
    workload.Select();
    receiver.SetAllowList(AllowListText(10).c_str());
    const auto decide = [&](uint32_t count) {
        for (uint32_t i = 0; i < count; ++i) {
            workload.Decide(receiver);
        }
    };
    // The work under the records: the same without logging.
    std::vector<Subject> silent{{"SilentEvent", decide},
                                {"SilentClear",
                                 [&](uint32_t count) {
                                     for (uint32_t i = 0; i < count; ++i) {
                                         receiver.ClearAllowList();
                                     }
                                 }},
                                {"WriterRecord", [&](uint32_t count) {
                                     for (uint32_t i = 0; i < count; ++i) {
                                         writer.WriteRecord(shortRecord, 30);
                                     }
                                 }}};
    writer.Start(WIDE("writer"), 0);
    std::vector<Subject> recorded{
        {"RecordedEvent", decide}, {"RecordedClear", silent[1].run}, {"WriterRecord", silent[2].run}};
    Measure(silent, rounds, 2ms);

    std::ofstream(logFolder / "Zelklog.ini", std::ios::binary) << "[OUTLOG]\r\nWriteLog=1\r\n";
    receiver.Uninit();
    if (!receiver.Init(&Host())) {
        throw std::runtime_error("the receiver cannot be initialised again");
    }
    receiver.SetAllowList(AllowListText(10).c_str());
    const auto log = logFolder / "MORD_Recv.log";
    const size_t before = LinesOf(log);
    workload.Decide(receiver);
    const size_t recordsOfEvent = LinesOf(log) - before;
    Measure(recorded, rounds, 2ms);
    PrintFigure("RecordsOfEvent", static_cast<double>(recordsOfEvent));
    PrintFigures(silent);
    PrintFigures(recorded);
    PrintFigure("Record/event", (recorded[0].least - silent[0].least) / static_cast<double>(recordsOfEvent));
    PrintFigure("Record/short", recorded[1].least - silent[1].least);
}

} // namespace bench
