// The lifecycle and the properties, and what all steps share.
#include "model/receiverModel.h"

#include <algorithm>
#include <cstring>

#include "model/siblings.h"

namespace model {

bool TextOrder::operator()(const std::string& left, const std::string& right) const {
    for (size_t i = 0; i < std::min(left.size(), right.size()); ++i) {
        const auto leftByte = static_cast<unsigned char>(left[i]);
        const auto rightByte = static_cast<unsigned char>(right[i]);
        if (leftByte != rightByte) {
            return leftByte < rightByte;
        }
    }
    return left.size() < right.size();
}

std::string UpToNul(const std::string& text) {
    return text.c_str();
}

std::string_view Logged(std::string_view value) {
    return value.substr(0, value.find('\0'));
}

void ReceiverModel::LogTrace(std::string_view function, Trace::Parts message) {
    if (m_logging) {
        m_trace.AddLog(30, "CMordRecv::", function, message);
    }
}

void ReceiverModel::LogError(std::string_view function, Trace::Parts message) {
    if (m_logging) {
        m_trace.AddLog(35, "CMordRecv::", function, message);
    }
}

bool ReceiverModel::InitLogMoudle() {
    if (!m_siblings.settlesLogging) {
        return false;
    }
    if (m_siblings.writesLog) {
        m_trace.Add({"siblings: log level ", Decimal(logLevel)});
        m_trace.Add("siblings: start logger MORD_Recv 0");
        m_logging = true; // never cleared
    }
    LogTrace("InitLogMoudle", "logger is ready");
    return true;
}

std::string ReceiverModel::GetLocalMid() {
    if (!m_mid.empty()) {
        Took(Branch::MidKept);
        return m_mid;
    }
    if (!m_hasMidService) {
        m_trace.Add("siblings: machine id service");
        m_hasMidService = true;
    }
    m_trace.Add("siblings: machine id");
    if (m_siblings.machineIdResult != 0) {
        Took(Branch::MidServiceFailed);
        LogTrace("GetLocalMid", "Get local mid failed!");
        return "";
    }
    if (m_siblings.machineId.empty()) {
        Took(Branch::MidServiceEmpty);
        return "";
    }
    Took(Branch::MidFromService);
    m_mid = m_siblings.machineId;
    m_trace.Add({"siblings: narrow ", m_mid});
    LogTrace("GetLocalMid", {"GetLocalMid()-Get local mid is:", Logged(m_mid)});
    return m_mid;
}

bool ReceiverModel::Init(IDotHost* host) {
    if (m_inited) {
        Took(Branch::InitRepeated);
        return true;
    }
    if (!InitLogMoudle()) {
        Took(Branch::InitLoggingUnsettled);
        return false;
    }
    if (host == nullptr) {
        Took(Branch::InitNullHost);
        return false;
    }
    Took(m_host == nullptr ? Branch::InitFresh : Branch::InitAgainAfterUninit);
    m_host = host;
    m_mid = GetLocalMid();
    LogTrace("Init", {"init get mid=", Logged(m_mid)});
    m_inited = true;
    return true;
}

bool ReceiverModel::Uninit() {
    m_inited = false;
    return true;
}

bool ReceiverModel::GetProperty(uint32_t, uint32_t, uint32_t) {
    return true;
}

bool ReceiverModel::SetProperty(uint32_t key, void* data, uint32_t size) {
    CountEntry(false, key == 20);
    if (data == nullptr || size == 0 || m_host == nullptr) {
        Took(data == nullptr ? Branch::PropertyNullData
             : size == 0     ? Branch::PropertyZeroSize
                             : Branch::PropertyNoHost);
        LogError("SetProperty", "param error, set property fail");
        return false;
    }
    if (key == 8) {
        Took(Branch::PropertyDefenderMode);
        std::memcpy(&m_defenderMode, data, 4);
        return true;
    }
    if (key == 9) {
        Took(Branch::PropertyExceptionMode);
        std::memcpy(&m_exceptionMode, data, 4);
        return true;
    }
    if (key == 20) {
        Took(Branch::PropertyActions);
        return ParseActionJson(static_cast<const char*>(data));
    }
    if (key == 6) {
        const std::string mid = static_cast<const char*>(data);
        if (mid.empty()) {
            Took(Branch::PropertyMidEmpty);
            LogError("SetProperty", "set mid fail");
            return false;
        }
        Took(Branch::PropertyMid);
        m_mid = mid;
        return true;
    }
    Took(Branch::PropertyUnknown);
    return false;
}

bool ReceiverModel::Start() {
    CountEntry(false, false);
    m_started = true;
    return true;
}

bool ReceiverModel::Stop() {
    CountEntry(false, false);
    m_started = false;
    return false;
}

bool ReceiverModel::SetReportSink(IReportSink* sink) {
    m_reportSink = sink;
    return true;
}

int32_t ReceiverModel::Int32Of(IEventRecord* record, const char* name) {
    int32_t value = 0;
    if (record->GetInt32(name, &value) != 0) {
        Took(value == 0 ? Branch::NumberFailed : Branch::NumberFailedButWritten);
        return 0;
    }
    TookIf(value < 0, Branch::NumberNegative);
    TookIf(value == INT32_MAX || value == INT32_MIN, Branch::NumberAtEdge);
    return value;
}

int64_t ReceiverModel::Int64Of(IEventRecord* record, const char* name) {
    int64_t value = 0;
    if (record->GetInt64(name, &value) != 0) {
        Took(Branch::LongNumberFailed);
    }
    TookIf(value == INT64_MAX || value == INT64_MIN, Branch::LongNumberAtEdge);
    return value;
}

std::string ReceiverModel::TextOf(IEventRecord* record, const char* name) {
    int32_t size = 0;
    if (record->GetString(name, nullptr, &size) != 201) {
        Took(Branch::TextAbsent);
        return "";
    }
    if (size <= 0) {
        Took(Branch::TextSizeNotPositive);
        return "";
    }
    std::vector<char> buffer(static_cast<size_t>(size));
    if (record->GetString(name, buffer.data(), &size) != 0) {
        Took(Branch::TextSecondCallFailed);
        return "";
    }
    const std::string text(buffer.begin(), std::find(buffer.begin(), buffer.end(), '\0'));
    CountText(buffer, text);
    return text;
}

} // namespace model
