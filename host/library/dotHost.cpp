#include "library/dotHost.h"

#include <cstring>
#include <exception>

#include "dots/queryAnswer.h"
#include "frame/values.h"

namespace mordhost {

namespace {

constexpr int32_t carriedOut = 0;
constexpr int32_t failed = 1; // any code but those with a meaning of their own

} // namespace

int32_t DotHost::DeleteDot(const char* guid, const char*, int32_t, const char* type) {
    try {
        m_deletion = {guid, type, m_store.Delete(guid)};
        if (m_deletion.done) {
            ++m_account.deleted;
            return carriedOut;
        }
    } catch (const std::exception&) { // memory ran out
    }
    ++m_account.failedDeletes;
    return failed;
}

int32_t DotHost::QueryDot(const char* guidJson, const char*, char** result) {
    ++m_account.queries;
    if (m_failure == Failure::networkError) {
        return DOT_QUERY_NETWORK_ERROR;
    }
    if (m_failure == Failure::queryError) {
        return failed;
    }
    try {
        std::optional<std::string> answer = AnswerQuery(m_store, guidJson);
        if (!answer) {
            return failed;
        }
        if (m_failure == Failure::brokenAnswer) {
            answer->pop_back(); // its closing brace
        }
        return HandOut(*answer, result);
    } catch (const std::exception&) { // memory ran out
        return failed;
    }
}

int32_t DotHost::HandOut(const std::string& text, char** result) {
    auto answer = std::make_unique<char[]>(text.size() + 1);
    std::memcpy(answer.get(), text.c_str(), text.size() + 1);
    char* const address = answer.get();
    m_answers.emplace(address, std::move(answer));
    *result = address;
    ++m_account.answers;
    return DOT_QUERY_ANSWERED;
}

int32_t DotHost::FreeResult(char* result) {
    if (result == nullptr) {
        return carriedOut;
    }
    if (m_answers.erase(result) == 0) {
        ++m_account.strayReturns;
        return failed;
    }
    ++m_account.givenBack;
    return carriedOut;
}

} // namespace mordhost
