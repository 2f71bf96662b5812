// The three documents.
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/expansion.h"
#include "fuzz/receiver/receiverPair.h"
#include "fuzz/receiver/vocabulary.h"
#include "fuzz/require.h"
#include "fuzz/targets.h"
#include "kit/host/midSets.h"

namespace {

constexpr uint32_t eventsOneIn = 4; // an event takes more time than a document
constexpr int mostDocuments = 8;

// The answers of an event's records: no flags, type "G"; the guids "K", "" and "G"; and words in turn.
constexpr uint8_t recordBytes[] = {0, 0, 0, 0, 1, 0, 3, 0, 0, 0, 0, 0, 1, 0, 3, 0, 2, 0, 0, 0, 1};

// Gives both receivers the documents of the input in turn by `give`, which returns the receiver's result.
template <typename Give>
void GiveDocuments(const uint8_t* data, size_t size, const Give& give) {
    ReceiverPair& pair = ReceiverPair::Instance();
    pair.Begin(IsOneIn(recordsOneIn, data, size));
    const std::string text = Expand(data, size, IsOneIn(scaleOneIn, data, size));
    std::string_view rest(text);
    for (int i = 0; i < mostDocuments; ++i) {
        const std::string_view document = rest.substr(0, rest.find('\0'));
        std::vector<char> copy = Copy(document);
        const bool result = give(pair.library, copy.data());
        copy = Copy(document); // whatever became of the first
        Require(result == give(pair.modelReceiver, copy.data()), "a document is accepted if the model accepts it");
        pair.RequireTheSame();
        if (document.size() == rest.size()) {
            break;
        }
        rest.remove_prefix(document.size() + 1);
    }
    pair.RequireKnownMatches();
    if (IsOneIn(eventsOneIn, data, size)) {
        pair.RequireKnownDecision();
    }
    pair.RequireTheSame();
}

void RequireTheAnswerOfTheModel(const model::ReceiverModel::Answer& expected, const QueryResultTable& table) {
    Require(table.Size() == expected.size(), "an answer has as many guids as in the model");
    for (const auto& [guid, mids] : expected) {
        const MidSet* const found = table.Find(guid);
        Require(found != nullptr && kit::TextsOf(*found) == std::set<std::string>(mids.begin(), mids.end()),
                "a guid has the machine ids of the model");
    }
}

} // namespace

void FuzzAllowList(const uint8_t* data, size_t size) {
    GiveDocuments(data, size, [](IMordRev& receiver, char* text) { return receiver.SetAllowList(text); });
}

void FuzzActionTable(const uint8_t* data, size_t size) {
    GiveDocuments(data, size,
                  [](IMordRev& receiver, char* text) { return receiver.SetProperty(PROP_ACTION_JSON, text, 1); });
}

void FuzzQueryResult(const uint8_t* data, size_t size) {
    ReceiverPair& pair = ReceiverPair::Instance();
    pair.Begin(IsOneIn(recordsOneIn, data, size));
    const auto text = std::make_unique<std::string>(Expand(data, size, IsOneIn(scaleOneIn, data, size)));
    const auto table = std::make_unique<QueryResultTable>();
    model::ReceiverModel::Answer answer;
    const bool result = pair.library.ParseQueryResult(*text, table.get());
    Require(result == pair.modelReceiver.ParseQueryResult(*text, answer),
            "an answer is accepted if the model accepts it");
    RequireTheAnswerOfTheModel(answer, *table);
    pair.RequireTheSame();

    // The same text as the host's answer decides an event.
    if (!IsOneIn(eventsOneIn, data, size)) {
        return;
    }
    HostScript script;
    script.answer = *text;
    const FuzzInput records(recordBytes, sizeof recordBytes);
    pair.librarySide.Begin(script, records);
    pair.modelSide.Begin(script, records);
    pair.librarySide.HandleEvent(3);
    pair.modelSide.HandleEvent(3);
    pair.RequireTheSame();
}
