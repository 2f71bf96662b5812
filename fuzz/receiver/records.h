// The log records that the receiver writes while an input runs, against those that the model says.
#pragma once

#include <cstdint>

#include "model/trace.h"
#include "platform/wideChar.h"

// Keeps a record, as the logger gets it.
void TakeRecord(const WideChar* text, int32_t level);

// Forgets what was kept.
void ForgetRecords();

// Requires that the kept records are whole and say what the model's lines say, in order.
void RequireRecords(const model::Trace& expected);
