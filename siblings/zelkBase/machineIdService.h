// IMachineIdService: the machine id of this host.
#pragma once

#include "serviceObject.h"
#include "zelkBase/machineIdSource.h"

namespace siblings {

// GetMachineId reads the id from the machine at each call (machineIdSource.h) and fills the whole record: the id, its
// NUL, and zeros. Returns RESULT_OK; RESULT_FAILED if the machine has no id or one that does not fit with its NUL (a
// truncated id would be another id); RESULT_INVALID_ARGUMENT for a null record; RESULT_OUT_OF_MEMORY. On failure the
// record is unchanged. Any thread may call.
class MachineIdService final : public ServiceObject<MachineIdService, IMachineIdService> {
public:
    // Delivers the id, or an empty text. Tests replace it.
    using Source = WideString (*)();

    explicit MachineIdService(const GUID& id = SID_MachineId, Source source = ReadMachineId)
        : ServiceObject(id), m_source(source) {}

    int32_t GetMachineId(MachineIdRecord* record) override;

private:
    friend ServiceObject;
    ~MachineIdService() = default;

    const Source m_source;
};

} // namespace siblings
