#include "unit/logging/timeZone.h"

#include <cstdlib>
#include <string>

#include <time.h>

void SetTimeZone(const char* zone) {
    _putenv((std::string("TZ=") + zone).c_str());
    _tzset();
}
