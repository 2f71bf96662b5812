// The sibling libraries as a test wants them: what they hand out, what they refuse, what they answer.
//
// Relay libraries named ZelkBase and Ferrocore stand in the place of the real ones; the services behind them live here,
// in the test program. There is one script in the process, since the library keeps services as long as the process.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "frame/interfaces.h"
#include "kit/text/callLog.h"

namespace kit {

// A record as the logger received it.
struct WrittenRecord {
    int32_t level;
    std::string text;  // masked, see logRecords.h
    std::string raw{}; // as it came
};

class ScriptedSiblings {
public:
    static ScriptedSiblings& Instance();

    // Puts everything back to its beginning: both libraries loaded, every service handed out, logging off.
    void Reset();

    // Loads and unloads the relays. Services that were handed out stay good.
    void LoadZelkBase();
    void LoadZelkBaseWithoutFactory();
    void UnloadZelkBase();
    void LoadFerrocore();
    void UnloadFerrocore();

    // Writes a Zelklog.ini with this text into the directory that ILogConfig tells.
    void WriteIni(const std::string& text);
    void RemoveIni();

    // What happened, in order: "create IModuleFinder", "refuse ILogWriter", "IModuleFinder.FindModule(module.base)",
    // "ILogWriter.Release", "ILogWriter.Start(MORD_Recv,0)" and so on. Conversions and records are not in it.
    CallLog calls;

    // Services that the factories refuse, by the names used in `calls`.
    std::set<std::string> refused;

    // Services whose factory does what it says not: fills the pointer and refuses by its result, or says yes and leaves
    // the pointer alone.
    std::set<std::string> grudging;
    std::set<std::string> hollow;

    // What the operations of ILogWriter return, and AddRef and Release of every service but the converter.
    int32_t writerResult = 0;
    std::optional<int32_t> countResult;

    enum class Finder { GivesZelkBase, GivesNull, GivesModuleWithoutFactory };
    Finder finder = Finder::GivesZelkBase;

    // What FindModule gives whatever `finder` says: for systems whose modules are not the relays.
    std::optional<void*> foundModule;

    // The factory behind both relays.
    static CreateZelkObjectFunction Factory();

    // The answers of ILogConfig in turn; the last one serves on. No value is a null answer.
    std::vector<std::optional<std::string>> configTexts;

    std::u16string machineId; // cut to the record's 68 units, NUL only if there is room
    int32_t machineIdResult = 0;
    std::function<void()> onMachineIdRelease; // called within IMachineIdService's Release

    // The records that ILogWriter received. They go into `calls` too, as "ILogWriter.WriteRecord(TEXT,LEVEL)" with the
    // masked text, when that is asked for.
    bool logsRecords = false;
    std::vector<WrittenRecord> Records() const;

    // The same as texts alone.
    std::vector<std::string> RecordTexts() const;
    std::vector<std::string> TakeRecordTexts();

    // Requests that ITextConverter received, as "COMMAND codepage=… length=… capacity=… reserved=…"; kept when asked
    // for.
    bool keepsConversions = false;
    std::vector<std::string> Conversions() const;
    bool converterWrites = true;             // false: it leaves the destination as it is
    bool converterWritesNul = true;          // false: fills the whole destination and writes no NUL
    int ConverterReferences() const;         // AddRef less Release, since it was handed out
    bool converterIsReferencedWithin = true; // whether each Convert so far found a reference held beside the first

    // Called within Convert, first. A value is the result, and the conversion is then the test's affair. It must
    // allocate nothing that the test does not mean to count.
    std::function<std::optional<int32_t>(uint32_t command, TextConversionRequest& request)> onConvert;

    // The directory that ILogConfig gives by default, with its last separator.
    std::filesystem::path LogDirectory() const;

private:
    friend struct Services;

    ScriptedSiblings();
    ~ScriptedSiblings();

    std::filesystem::path m_logDirectory;
    mutable std::mutex m_lock;
    std::vector<WrittenRecord> m_records;
    std::vector<std::string> m_conversions;
};

// The names by which `refused` and `calls` know services: IModuleFinder, ITextConverter, BaseServiceOne,
// BaseServiceTwo, BaseServiceThree, FerrocoreService, IMachineIdService, ILogConfig, ILogWriter.
std::string ServiceName(const GUID& id);

} // namespace kit
