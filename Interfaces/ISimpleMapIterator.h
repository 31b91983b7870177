// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/IObjectBase.h"

namespace tvx
{

// Walks the entries of a settings map in key order. It holds no reference on the map and must not outlive it; writes to the
// map keep it valid. There is no identifier for it: it is used through the pointer that the map gave.
class ISimpleMapIterator : public IObjectBase
{
public:
    // Slot 7. Gives the current key, owned by the map and valid as long as it, or null at the end.
    // Threads: one at a time for a map and its iterators. Fails: never.
    virtual const char* GetKey() = 0;

    // Slot 8. Gives the current value, owned by the map and valid until that entry is written again, or null at the end.
    // Threads: one at a time for a map and its iterators. Fails: never.
    virtual const char* GetValue() = 0;

    // Slot 9. Moves on and gives 0 when on an entry; at the end it stays there.
    // Threads: one at a time for a map and its iterators. Fails: -1 without a report when at the end now.
    virtual Result Next() = 0;

    // Slot 10. Tells whether the iterator is at the end, and gives 0.
    //   out  receives the answer
    // Threads: one at a time for a map and its iterators. Fails: -4 with a report when out is null.
    virtual Result IsEnd(bool* out) = 0;

protected:
    ~ISimpleMapIterator() = default;
};

}  // namespace tvx
