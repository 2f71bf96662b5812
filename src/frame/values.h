// The values that host and receiver exchange. They are wire values: the numbers never change.
#pragma once

#include <stdint.h>

// Keys of IMordBase::SetProperty.
enum PropertyKey : uint32_t {
    PROP_MID = 6,            // NUL-terminated narrow text: the machine id of this host; empty is refused
    PROP_DEFENDER_MODE = 8,  // 32-bit unsigned integer: a DefenderMode
    PROP_EXCEPTION_MODE = 9, // 32-bit unsigned integer: an ExceptionMode
    PROP_ACTION_JSON = 20,   // NUL-terminated narrow text: an action document
};

// What the receiver does with its decisions. Any other value, 0 and 2 included, is accepted and changes nothing: the
// rules alone decide.
enum DefenderMode : uint32_t {
    MODE_ALL_FORBID = 1,           // an answered query gives block; the answer is ignored
    MODE_ACTION_TABLE = 3,         // the default: the action table can turn a block into an allow
    MODE_ALLOW_AFTER_DECISION = 4, // the whole decision runs, then the reply is allow
    MODE_EMERGENCY = 5,            // allow at once: no query, no report
};

// The reply to an event whose query ends in a network error. Any other value acts like EXCEPTION_BLOCK.
enum ExceptionMode : uint32_t {
    EXCEPTION_ALLOW = 1,
    EXCEPTION_BLOCK = 2, // the default
};

// The verdict of IMordRev::HandleEvent, in `*reply`.
enum ReplyCode : uint32_t {
    REPLY_BLOCK = 0,
    REPLY_ALLOW = 1,
    REPLY_ALLOW_FLAGGED = 2, // allow, for an event with EVENT_FLAG_REPLY_TWO
};

// Bits of an event's "flags". The other bits are ignored.
enum EventFlag : uint32_t {
    EVENT_FLAG_DISCONNECT = 0x04, // needs no decision: allow, no query, no report
    EVENT_FLAG_REPLY_TWO = 0x10,  // a final reply of allow becomes REPLY_ALLOW_FLAGGED
};

// Result codes of the interfaces.
constexpr uint32_t RESULT_OK = 0;
constexpr uint32_t RESULT_NO_INTERFACE = 0x80004002; // CreateZelkObject, QueryInterface
constexpr int32_t DOT_QUERY_ANSWERED = 0;            // IDotHost::QueryDot; a code not listed is a query error
constexpr int32_t DOT_QUERY_NETWORK_ERROR = 1007;    // IDotHost::QueryDot; the ExceptionMode decides
constexpr int32_t RECORD_DELIVERED = 0;              // IEventRecord
constexpr int32_t RECORD_BUFFER_NEEDED = 201;        // IEventRecord::GetString: the size is stored
