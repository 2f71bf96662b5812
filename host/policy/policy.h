// The contents of a policy document.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "document/ipAddress.h"
#include "document/jsonDocument.h"
#include "policy/actionRows.h"
#include "policy/allowListEntries.h"
#include "policy/dotTable.h"
#include "policy/timestamp.h"

namespace mordhost {

// The ports from `first` to `last`, inclusive.
struct PortRange {
    uint16_t first = 0;
    uint16_t last = 0;

    bool operator==(const PortRange&) const = default;
};

// Where the elements of a rule's conditions are, in their order.
struct ConditionPlaces {
    std::vector<Location> localPorts;
    std::vector<Location> localAddresses;
    std::vector<Location> remoteAddresses;
};

// A rule and its conditions. It applies to the connections that meet every condition. An empty list is no condition.
struct Rule {
    std::string guid;
    std::string type;
    std::vector<PortRange> localPorts;
    std::vector<AddressRange> localAddresses;
    std::vector<AddressRange> remoteAddresses;
    DocumentPlace place{};             // of its object
    ConditionPlaces conditionPlaces{}; // empty if no document has the rule
};

// A document for the library, as its author wrote it.
struct LibraryDocument {
    std::string text;
    Location where; // of its first character
};

// The end of a defender mode.
struct ModeEnd {
    UtcTime until;
    uint32_t then = 0;   // the defender mode from `until` on
    DocumentPlace place; // of the member "until"
};

// How a query fails.
enum class Failure {
    networkError, // QueryDot returns the network error
    queryError,   // QueryDot returns another error
    brokenAnswer, // QueryDot returns a truncated answer
};

struct PrescribedFailure {
    Failure failure = Failure::networkError;
    Location where; // of the event's name in the policy
};

// A file that holds the policy or a part of it.
struct PolicyFile {
    std::string what; // for messages: "the allow list"
    std::string name;
    bool holdsDots = false;
    std::string sha256; // of its bytes, in hexadecimal digits
};

struct Policy {
    std::vector<PolicyFile> files;        // of the policy itself and of the parts that it names
    size_t skippedParts = 0;              // the number of parts of the library's documents that it skips or changes
    std::optional<std::string> machineId; // if absent, the library asks the machine
    std::optional<uint32_t> defenderMode; // if absent, the default of the library applies; also below
    DocumentPlace defenderModePlace;      // of its value
    std::optional<ModeEnd> defenderModeEnd;
    std::optional<uint32_t> exceptionMode;
    DocumentPlace exceptionModePlace; // of its value
    std::optional<LibraryDocument> allowList;
    std::vector<AllowListEntry> allowListEntries; // of `allowList`, as the library takes them
    std::optional<LibraryDocument> actions;
    std::vector<ActionRow> actionRows; // of `actions`, as the library takes them
    std::vector<Rule> rules;           // in the order of the document
    DotTable dots;
    std::map<std::string, DocumentPlace> dotPlaces;    // of the names of the members, by guid
    std::map<std::string, PrescribedFailure> failures; // by event name
    // The programs that events can name, by that name. A file with a directory is relative to the policy and resolved
    // here; a file without one is not.
    std::map<std::string, std::filesystem::path> programs;
};

} // namespace mordhost
