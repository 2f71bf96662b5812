#include "zelkBase/machineIdService.h"

#include <algorithm>
#include <iterator>

#include "serviceGuard.h"

namespace siblings {

int32_t MachineIdService::GetMachineId(MachineIdRecord* record) {
    if (record == nullptr) {
        return Signed(RESULT_INVALID_ARGUMENT);
    }
    return Signed(Guarded([this, record] {
        const WideString id = m_source();
        if (id.empty() || id.size() >= std::size(record->machineId)) {
            return RESULT_FAILED;
        }
        *record = {};
        std::copy(id.begin(), id.end(), record->machineId);
        return RESULT_OK;
    }));
}

} // namespace siblings
