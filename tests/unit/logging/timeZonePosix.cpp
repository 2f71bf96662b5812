#include "unit/logging/timeZone.h"

#include <cstdlib>
#include <ctime>

void SetTimeZone(const char* zone) {
    setenv("TZ", zone, 1);
    tzset();
}
