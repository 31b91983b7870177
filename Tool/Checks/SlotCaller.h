// SPDX-License-Identifier: MIT
#pragma once

#include <stdbool.h>
#include <stdint.h>

// A consumer of the interfaces that knows no C++: interface pointers, slot numbers, calls. For every line of Slots.inc there
// is a function, such as uint32_t CallIStringGetLength(void* object), that calls the object's slot of that number.

#ifdef __cplusplus
extern "C"
{
#endif

#define TVX_SLOT(result, type, operation, slot, parameters, arguments) result Call##type##operation parameters;
#define TVX_VOID_SLOT(type, operation, slot, parameters, arguments)                                                    \
    TVX_SLOT(void, type, operation, slot, parameters, arguments)
#define TVX_HOLDER_SLOT(type, operation, slot, parameters, arguments)                                                  \
    TVX_SLOT(void, type, operation, slot, parameters, arguments)

#include "Tool/Checks/Slots.inc"

#undef TVX_SLOT
#undef TVX_VOID_SLOT
#undef TVX_HOLDER_SLOT

#ifdef __cplusplus
}
#endif
