// The time zone of the process, as the C library sees it.
#pragma once

// `zone` in the form of the variable TZ: "EST5EDT".
void SetTimeZone(const char* zone);
