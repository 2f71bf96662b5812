#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include "appendFile.h"
#include "measurements.h"
#include "sampling.h"
#include "shape.h"
#include "workload.h"

namespace bench {

namespace {

using namespace std::chrono_literals;

constexpr int rounds = 250;
constexpr Shape shape{8, 8};

std::string ContentOf(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

// Returns whether a record begins at `at`, the start of a line. Answers and reports span several lines.
bool IsBegin(const std::string& log, size_t at) {
    constexpr size_t sizeOfTime = std::string_view("2026-11-22 14:03:07").size();
    return log.compare(at + sizeOfTime, 9, " [TRACE][") == 0 || log.compare(at + sizeOfTime, 9, " [ERROR][") == 0;
}

std::vector<std::string> RecordsOf(const std::string& log) {
    std::vector<std::string> records;
    size_t begin = 0;
    for (size_t end = log.find('\n'); end != std::string::npos; end = log.find('\n', end + 1)) {
        const size_t next = end + 1;
        if (next == log.size() || (log.size() > next + 28 && IsBegin(log, next))) {
            records.push_back(log.substr(begin, next - begin));
            begin = next;
        }
    }
    return records;
}

} // namespace

void MeasureRecords(IMordRev& receiver, const std::filesystem::path& logFolder) {
    const Workload workload(shape);
    workload.Select();
    const auto decide = [&](uint32_t count) {
        for (uint32_t i = 0; i < count; ++i) {
            workload.Decide(receiver);
        }
    };
    receiver.SetAllowList(AllowListText(10).c_str());
    std::vector<Subject> silent{{"SilentEvent", decide}};
    Measure(silent, rounds, 2ms);

    std::ofstream(logFolder / "Zelklog.ini", std::ios::binary) << "[OUTLOG]\r\nWriteLog=1\r\n";
    receiver.Uninit();
    if (!receiver.Init(&Host())) {
        throw std::runtime_error("the receiver cannot be initialised again");
    }
    const auto log = logFolder / "MORD_Recv.log";
    const size_t before = ContentOf(log).size();
    workload.Decide(receiver);
    const std::vector<std::string> records = RecordsOf(ContentOf(log).substr(before));
    if (records.size() < shape.rules * shape.mids) {
        throw std::runtime_error("the log of an event has too few records");
    }

    const AppendFile file(logFolder / "floor.log");
    std::vector<Subject> recorded{{"RecordedEvent", decide}, {"RecordedEventFloor", [&](uint32_t count) {
                                                                  for (uint32_t i = 0; i < count; ++i) {
                                                                      for (const std::string& record : records) {
                                                                          file.Append(record);
                                                                      }
                                                                  }
                                                              }}};
    Measure(recorded, rounds, 2ms);
    const auto count = static_cast<double>(records.size());
    PrintFigure("RecordsOfEvent", count);
    PrintFigure("Record", (recorded[0].least - silent[0].least) / count);
    PrintFigure("RecordFloor", recorded[1].least / count);
}

} // namespace bench
