// Lifecycle and properties of the receiver.
#include "mordRev/src/mordRev.h"

#include <cstring>
#include <new>

#include "frame/sameIdentifier.h"
#include "logging/logMacros.h"
#include "logging/startLogger.h"
#include "mordRev/src/seededHash.h"

namespace {

uint32_t ReadWord(const void* data) {
    uint32_t word = 0;
    std::memcpy(&word, data, sizeof word); // the host's pointer need not be aligned
    return word;
}

} // namespace

// Some platforms allocate a mutex at its first use and report a failure in their own way. The constructor forces that,
// so that no later operation fails for it: nobody else can hold the lock yet, so a failed try_lock means that memory
// ran out.
CMordRecv::CMordRecv() {
    ProcessHashKeys(); // now, so that no operation waits for the random source under the lock
    if (!m_lock.try_lock()) {
        throw std::bad_alloc();
    }
    m_lock.unlock();
}

// Not reached in a running system, since the process-wide object is never destroyed. Host and report sink are not
// released. The action table is cleared first, by design; the rest follows in reverse order of declaration.
CMordRecv::~CMordRecv() {
    m_started = false;
    m_inited = false;
    m_host = nullptr;
    m_actionTable.clear();
}

void CMordRecv::DestroySelf() {
    Destroy(1);
}

void* CMordRecv::Destroy(uint32_t deleteFlag) {
    void* const address = static_cast<IMordRev*>(this);
    if ((deleteFlag & 1) != 0) {
        ObjectCreator::Destroy(this);
    } else {
        this->~CMordRecv();
    }
    return address;
}

int32_t CMordRecv::AddRef() {
    return 2;
}

int32_t CMordRecv::Release() {
    return 1;
}

uint32_t CMordRecv::QueryInterface(const GUID* iid, void** out) {
    if (!SameIdentifier(iid, IID_IMordRev) && !SameIdentifier(iid, IID_IMordRevSecond)) {
        return RESULT_NO_INTERFACE;
    }
    *out = static_cast<IMordRev*>(this);
    ++m_refCount;
    return RESULT_OK;
}

bool CMordRecv::Init(IDotHost* host) {
    if (m_inited) {
        return true;
    }
    // The log comes first: a null host fails with logging already started.
    if (!InitLogMoudle() || host == nullptr) {
        return false;
    }
    m_host = host;
    m_mid = GetLocalMid(); // an empty id is no failure
    LOG_TRACE(WIDE("init get mid=") << m_mid);
    m_inited = true;
    return true;
}

bool CMordRecv::Uninit() {
    m_inited = false; // host, machine id, tables and the started flag keep their values
    return true;
}

bool CMordRecv::GetProperty(uint32_t, uint32_t, uint32_t) {
    return true;
}

bool CMordRecv::SetProperty(uint32_t key, void* data, uint32_t size) {
    if (data == nullptr || size == 0 || m_host == nullptr) {
        LOG_ERROR(WIDE("param error, set property fail"));
        return false;
    }
    switch (key) {
    case PROP_DEFENDER_MODE:
        m_defenderMode.store(ReadWord(data), std::memory_order_relaxed);
        return true;
    case PROP_EXCEPTION_MODE:
        m_exceptionMode.store(ReadWord(data), std::memory_order_relaxed);
        return true;
    case PROP_ACTION_JSON:
        return ParseActionJson(static_cast<const char*>(data));
    case PROP_MID: {
        std::string mid = static_cast<const char*>(data);
        if (mid.empty()) {
            LOG_ERROR(WIDE("set mid fail"));
            return false;
        }
        m_mid = std::move(mid);
        return true;
    }
    default:
        return false;
    }
}

bool CMordRecv::Start() {
    m_started.store(true, std::memory_order_relaxed);
    return true;
}

// The result is part of the contract; it does not mean a failure.
bool CMordRecv::Stop() {
    m_started.store(false, std::memory_order_relaxed);
    return false;
}

bool CMordRecv::SetReportSink(IReportSink* sink) {
    m_reportSink.store(sink, std::memory_order_release); // publishes the sink's own state to the reporting threads
    return true;
}

bool CMordRecv::InitLogMoudle() {
    const bool settled = StartLogger(WIDE("MORD_Recv"));
    if (settled) {
        LOG_TRACE(WIDE("logger is ready"));
    }
    return settled;
}
