// The machine id of this host.
#include <algorithm>
#include <iterator>

#include "frame/serviceLookup.h"
#include "logging/logMacros.h"
#include "mordRev/src/mordRev.h"
#include "text/textConvert.h"

std::string CMordRecv::GetLocalMid() {
    if (!m_mid.empty()) {
        return m_mid;
    }
    if (!m_midService) {
        const auto factory = FindBaseModuleFactory();
        if (factory == nullptr) {
            return {};
        }
        m_midService.Create(factory, SID_MachineId);
        if (!m_midService) {
            return {};
        }
    }
    MachineIdRecord record{};
    if (m_midService->GetMachineId(&record) != 0) {
        LOG_TRACE(WIDE("Get local mid failed!"));
        return {};
    }
    // Without a NUL the text ends at the end of the array.
    const std::basic_string<WideChar> wide(
        record.machineId, std::find(std::begin(record.machineId), std::end(record.machineId), WideChar{}));
    std::string mid = WideToUtf8(wide.c_str());
    if (mid.empty()) {
        return {};
    }
    m_mid = mid;
    LOG_TRACE(WIDE("GetLocalMid()-Get local mid is:") << m_mid);
    return mid;
}
