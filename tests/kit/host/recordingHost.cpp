#include "kit/host/recordingHost.h"

#include <algorithm>

namespace kit {

RecordingHost::~RecordingHost() {
    for (const auto& [text, number] : m_answers) {
        delete[] text;
    }
}

size_t RecordingHost::AnswersOut() const {
    const std::lock_guard lock(m_lock);
    return m_answers.size();
}

int32_t RecordingHost::DeleteDot(const char* guid, const char* mid, int32_t kind, const char* type) {
    Log(std::string("DeleteDot(") + guid + "," + mid + "," + std::to_string(kind) + "," + type + ")");
    if (onDelete) {
        onDelete();
    }
    return deleteCode;
}

int32_t RecordingHost::QueryDot(const char* guidJson, const char* mid, char** result) {
    Log(std::string("QueryDot(") + guidJson + "," + mid + ")" +
        (*result == nullptr ? "" : " result not preset to null"));
    if (onQuery) {
        onQuery();
    }
    if (answer) {
        char* const text = new char[answer->size() + 1];
        std::copy_n(answer->c_str(), answer->size() + 1, text);
        const std::lock_guard lock(m_lock);
        m_answers[text] = ++m_handedOut;
        *result = text;
    }
    return queryCode;
}

int32_t RecordingHost::FreeResult(char* result) {
    if (result == nullptr) {
        Log("FreeResult(null)");
        return freeCode;
    }
    std::unique_lock lock(m_lock);
    const auto found = m_answers.find(result);
    if (found == m_answers.end()) {
        lock.unlock();
        Log("FreeResult(unknown)");
        return freeCode;
    }
    const int number = found->second;
    m_answers.erase(found);
    lock.unlock();
    delete[] result;
    Log("FreeResult(answer " + std::to_string(number) + ")");
    return freeCode;
}

void RecordingHost::Log(std::string call) {
    if (logsCalls) {
        m_calls.Add(std::move(call));
    }
}

std::vector<std::string> RecordingSink::Reports() const {
    const std::lock_guard lock(m_lock);
    return m_reports;
}

int32_t RecordingSink::Report(int32_t kind, const char* text, uint32_t size) {
    std::string report(text, size);
    const bool ended = text[size] == '\0';
    m_calls.Add("Report(" + std::to_string(kind) + "," + report + ")" + (ended ? "" : " not ended by a NUL"));
    {
        const std::lock_guard lock(m_lock);
        m_reports.push_back(std::move(report));
    }
    if (onReport) {
        onReport();
    }
    return result;
}

} // namespace kit
