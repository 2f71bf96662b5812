// Makes the parts of a case.
#pragma once

#include <string>
#include <vector>

#include "model/testCase.h"

namespace model {

// A text that a record delivers by the contract; its size includes the NUL.
TextScript DeliveredText(const std::string& value);

RecordScript RuleRecord(const std::string& guid, const std::string& type);

// An event of the system process with these flags and rules; the host answers the query with `answer`.
EventScript EventOf(int32_t flags, std::vector<RecordScript> rules, std::string answer);

// Operations. Hosts and sinks are 0 and 1; 2 is null.
Operation InitOf(uint32_t host);
Operation UninitOf();
Operation StartOf();
Operation StopOf();
Operation SinkOf(uint32_t sink);
Operation NumberOf(uint32_t key, uint32_t value);
Operation TextOf(uint32_t key, std::string value);
Operation NullDataOf(uint32_t key);
Operation ZeroSizeOf(uint32_t key, uint32_t value);
Operation ReadingOf(uint32_t arguments);
Operation AllowListOf(std::string document);
Operation ClearingOf();
Operation HandlingOf(EventScript event);
Operation SiblingsOf(SiblingState siblings);

} // namespace model
