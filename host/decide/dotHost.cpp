#include "decide/dotHost.h"

#include <algorithm>
#include <exception>
#include <iterator>

#include "frame/values.h"

namespace mordhost {

namespace {

constexpr int32_t carriedOut = 0;
constexpr int32_t failed = 1; // any code without a special meaning

} // namespace

int32_t DotHost::DeleteDot(const char* guid, const char*, int32_t, const char* type) {
    try {
        m_deletion = Deletion{guid, type, m_store.Delete(guid)};
        if (m_deletion->done) {
            ++m_account.deleted;
            return carriedOut;
        }
    } catch (const std::exception&) { // out of memory
    }
    ++m_account.failedDeletes;
    return failed;
}

int32_t DotHost::QueryDot(const char* guidJson, const char*, char** result) {
    ++m_account.queries;
    m_metFailure.reset();
    if (m_failure == Failure::networkError || m_failure == Failure::queryError) {
        return Fail(*m_failure);
    }
    try {
        std::string_view answer;
        switch (m_query.Answer(guidJson, answer)) {
        case DotStore::Result::networkError:
            return Fail(Failure::networkError);
        case DotStore::Result::failed:
            return Fail(Failure::queryError);
        case DotStore::Result::answered:
            break;
        }
        if (m_failure == Failure::brokenAnswer) {
            answer.remove_suffix(1); // the closing brace
            m_metFailure = Failure::brokenAnswer;
        }
        return HandOut(answer, result);
    } catch (const std::exception&) { // out of memory
        return Fail(Failure::queryError);
    }
}

int32_t DotHost::Fail(Failure failure) {
    m_metFailure = failure;
    return failure == Failure::networkError ? DOT_QUERY_NETWORK_ERROR : failed;
}

int32_t DotHost::HandOut(std::string_view text, char** result) {
    std::unique_ptr<char[]> answer(new char[text.size() + 1]);
    *std::copy(text.begin(), text.end(), answer.get()) = '\0';
    *result = m_handedOut.emplace_back(std::move(answer)).get();
    ++m_account.answers;
    m_account.toBeKept += m_expectsKeptAnswers ? 1 : 0;
    return DOT_QUERY_ANSWERED;
}

int32_t DotHost::FreeResult(char* result) {
    if (result == nullptr) {
        return carriedOut;
    }
    // Searches backwards, because the library frees the latest answer first.
    const auto answer = std::find_if(m_handedOut.rbegin(), m_handedOut.rend(),
                                     [result](const auto& handedOut) { return handedOut.get() == result; });
    if (answer == m_handedOut.rend()) {
        ++m_account.strayReturns;
        return failed;
    }
    m_handedOut.erase(std::next(answer).base());
    ++m_account.givenBack;
    return carriedOut;
}

} // namespace mordhost
