// What the library calls to query and delete dots.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "dots/dotStore.h"
#include "dots/queryAnswer.h"
#include "frame/interfaces.h"
#include "policy/policy.h"

namespace mordhost {

// Answers from a dot store, fails as prescribed, and keeps account of every call. For one thread. No exception leaves
// its operations.
class DotHost final : public IDotHost {
public:
    struct Account {
        size_t queries = 0;
        size_t answers = 0;       // texts handed out
        size_t givenBack = 0;     // of these, those that FreeResult took back
        size_t strayReturns = 0;  // FreeResult of what was not handed out, or was back already
        size_t deleted = 0;       // dots
        size_t failedDeletes = 0; // DeleteDot that did not return 0
    };

    explicit DotHost(DotStore& store) : m_store(store) {}

    // How the queries from now on fail; nothing: not at all.
    void Prescribe(std::optional<Failure> failure) { m_failure = failure; }

    const Account& Calls() const { return m_account; }

    // The last call of DeleteDot.
    struct Deletion {
        std::string guid;
        std::string type;
        bool done = false; // it returned 0
    };

    // The last deletion since the last such call; an empty one when there was none.
    Deletion TakeDeletion() { return std::exchange(m_deletion, {}); }

    int32_t DeleteDot(const char* guid, const char* mid, int32_t kind, const char* type) override;
    int32_t QueryDot(const char* guidJson, const char* mid, char** result) override;
    int32_t FreeResult(char* result) override;

private:
    int32_t HandOut(std::string_view text, char** result);

    DotStore& m_store;
    QueryAnswerer m_answerer{m_store};
    std::optional<Failure> m_failure;
    Account m_account;
    Deletion m_deletion;
    // What was handed out and is not back. It goes with the host: the library keeps the answers of one of its modes.
    std::vector<std::unique_ptr<char[]>> m_handedOut;
};

} // namespace mordhost
