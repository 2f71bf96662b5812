// The log records of the receiver while an input runs, compared with those of the model.
#pragma once

#include <cstdint>

#include "model/trace.h"
#include "platform/wideChar.h"

// Keeps a record in the form that the logger gets.
void TakeRecord(const WideChar* text, int32_t level);

// Discards the kept records.
void ForgetRecords();

// Requires that the kept records are complete and have the texts of the model's lines, in order.
void RequireRecords(const model::Trace& expected);
