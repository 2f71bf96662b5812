// The host interface that the library calls to query and delete dots.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "frame/interfaces.h"
#include "policy/dotQuery.h"
#include "policy/policy.h"

namespace mordhost {

// Answers from a dot store, fails on request and counts the calls. For use by one thread. Its operations throw nothing.
class DotHost final : public IDotHost {
public:
    struct Account {
        size_t queries = 0;
        size_t answers = 0;       // answers that the library received
        size_t givenBack = 0;     // answers that FreeResult received
        size_t toBeKept = 0;      // answers that the library must keep, because its mode requires it
        size_t strayReturns = 0;  // FreeResult calls with any other pointer
        size_t deleted = 0;       // successful DeleteDot calls
        size_t failedDeletes = 0; // failed DeleteDot calls
    };

    explicit DotHost(DotStore& store) : m_store(store) {}

    // Makes all further queries fail as given, or succeed for nullopt.
    void Prescribe(std::optional<Failure> failure) { m_failure = failure; }

    // Whether the library must keep the answers to further queries: true in its mode all-forbid.
    void ExpectKeptAnswers(bool expected) { m_expectsKeptAnswers = expected; }

    // Frees the answers that the library has not returned. Call it between events, in long runs: in its mode all-forbid
    // the library keeps every answer and never reads it again.
    void DropKeptAnswers() { m_handedOut.clear(); }

    const Account& Calls() const { return m_account; }

    // A call of DeleteDot.
    struct Deletion {
        std::string guid;
        std::string type;
        bool done = false; // whether it returned 0
    };

    // The last DeleteDot call since the last TakeDeletion.
    std::optional<Deletion> TakeDeletion() { return std::exchange(m_deletion, std::nullopt); }

    // How the last QueryDot call since the last TakeFailure failed; nullopt if it did not, or if there was none.
    std::optional<Failure> TakeFailure() { return std::exchange(m_metFailure, std::nullopt); }

    int32_t DeleteDot(const char* guid, const char* mid, int32_t kind, const char* type) override;
    int32_t QueryDot(const char* guidJson, const char* mid, char** result) override;
    int32_t FreeResult(char* result) override;

private:
    int32_t Fail(Failure failure);
    int32_t HandOut(std::string_view text, char** result);

    DotStore& m_store;
    DotQuery m_query{m_store};
    std::optional<Failure> m_failure; // prescribed
    bool m_expectsKeptAnswers = false;
    Account m_account;
    std::optional<Deletion> m_deletion;
    std::optional<Failure> m_metFailure;
    // Answers that are not freed yet. The destructor frees those that the library keeps in one of its modes.
    std::vector<std::unique_ptr<char[]>> m_handedOut;
};

} // namespace mordhost
