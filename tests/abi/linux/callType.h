/* Calling conventions of Linux, for slots.h: the system's one convention for all. */
#pragma once

#define ABI_MEMBER
#define ABI_FACTORY
#define ABI_EXPORT __attribute__((visibility("default")))
