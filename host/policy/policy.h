// What a host is set up with: the contents of a policy document.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "document/sourceText.h"
#include "dots/dotTable.h"
#include "net/ipAddress.h"

namespace mordhost {

// From the first port to the last, both included.
struct PortRange {
    uint16_t first = 0;
    uint16_t last = 0;

    bool operator==(const PortRange&) const = default;
};

// A rule, and the connections to which it applies: those that meet each condition. An empty list is no condition.
struct Rule {
    std::string guid;
    std::string type;
    std::vector<PortRange> localPorts;
    std::vector<AddressRange> localAddresses;
    std::vector<AddressRange> remoteAddresses;
};

// A document that the library reads, as its author wrote it, and where it stands.
struct LibraryDocument {
    std::string text;
    Location where;
};

// How a query is to fail.
enum class Failure {
    networkError, // QueryDot returns the network error
    queryError,   // QueryDot returns another error
    brokenAnswer, // QueryDot answers, but the text is cut short
};

struct PrescribedFailure {
    Failure failure = Failure::networkError;
    Location where; // of the event's name in the policy
};

// A file in which a part of the policy stands.
struct PolicyFile {
    std::string what; // "the allow list"
    std::string name;
    bool holdsDots = false;
};

struct Policy {
    std::vector<PolicyFile> files;        // the policy itself, and those that it names
    std::optional<std::string> machineId; // without one, the library asks the machine
    std::optional<uint32_t> defenderMode; // without one, the library's default holds; so too below
    std::optional<uint32_t> exceptionMode;
    std::optional<LibraryDocument> allowList;
    std::optional<LibraryDocument> actions;
    std::vector<Rule> rules; // in the order in which they go to the library
    DotTable dots;
    std::map<std::string, PrescribedFailure> failures; // by the name of the event
    // What events can name to come from a real process, by that name. A file with a directory is told from the policy's
    // place; one without is yet to be found.
    std::map<std::string, std::filesystem::path> programs;
};

} // namespace mordhost
