// SPDX-License-Identifier: MIT
#include "Tool/Checks/SlotCaller.h"

// What an interface pointer points to: the address of a table of functions.
typedef void (*Slot)(void);

static Slot GetSlot(void* object, int slot)
{
    const Slot* const table = *(const Slot**)object;
    return table[slot - 1];
}

#define TVX_SLOT(result, type, operation, slot, parameters, arguments)                                                 \
    result Call##type##operation parameters                                                                            \
    {                                                                                                                  \
        typedef result(*Function) parameters;                                                                          \
        return ((Function)GetSlot(object, slot))arguments;                                                             \
    }
#define TVX_VOID_SLOT(type, operation, slot, parameters, arguments)                                                    \
    void Call##type##operation parameters                                                                              \
    {                                                                                                                  \
        typedef void(*Function) parameters;                                                                            \
        ((Function)GetSlot(object, slot)) arguments;                                                                   \
    }
#define TVX_HOLDER_SLOT(type, operation, slot, parameters, arguments)                                                  \
    TVX_VOID_SLOT(type, operation, slot, parameters, arguments)

#include "Tool/Checks/Slots.inc"
