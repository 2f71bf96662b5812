#include "native/chooseNative.h"

#include "native/nativeWow64.h"
#include "native/x86Native.h"

std::unique_ptr<Native> ChooseNative(platform::Handle process) {
    if (platform::GetNativeSystemInfo().wProcessorArchitecture == platform::PROCESSOR_ARCHITECTURE_INTEL_32) {
        return std::unique_ptr<Native>(new x86Native(process));
    }
    int32_t callerIsWow64 = 0;
    platform::IsWow64Process(platform::GetCurrentProcess(), &callerIsWow64);
    if (callerIsWow64 == 1) {
        return std::unique_ptr<Native>(new NativeWow64(process));
    }
    return std::make_unique<Native>(process);
}
