// A library that exports something, but no factory.
#include "platform/callConv.h"

extern "C" MORD_EXPORT int MORD_CDECL NothingOfUse() {
    return 0;
}
