// ZelkBase's only export, and the table of its services.
#include "heldService.h"
#include "serviceFactory.h"
#include "zelkBase/hostLogService.h"
#include "zelkBase/logConfig.h"
#include "zelkBase/machineIdService.h"
#include "zelkBase/moduleFinder.h"
#include "zelkBase/textConverter.h"

namespace {

using namespace siblings;

constexpr ServiceEntry services[] = {
    {SID_ModuleFinder, MakeService<ModuleFinder>},
    {SID_BaseServiceOne, MakeService<HeldService>},
    {SID_BaseServiceTwo, MakeService<HeldService>},
    {SID_BaseServiceThree, MakeService<HeldService>},
    {SID_TextConverter, MakeService<TextConverter>},
    // ZelkBase is also the module with the key "module.base".
    {SID_MachineId, MakeService<MachineIdService>},
    {SID_LogConfig, MakeService<LogConfig>},
    {SID_LogWriter, MakeLogWriter},
    // For the host; the component does not ask for it.
    {SID_HostLog, MakeService<HostLogService>},
};

} // namespace

extern "C" MORD_EXPORT uint32_t MORD_CDECL CreateZelkObject(const GUID* iid, void** out) {
    return CreateService(services, iid, out);
}
