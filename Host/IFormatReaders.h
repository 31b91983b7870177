// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/ISerializable.h"

namespace tvx::host
{

// What this host's library manager offers to serializers besides ILibManager: the way from a format identifier in a document
// to the export that reads it. A module reaches it through its import of the library manager.
class IFormatReaders : public IObject
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.host.IFormatReaders/1.0";

    // Slot 11. Gives the factory whose module declares formatId as its serialisation format, loading the module if need be.
    //   formatId  borrowed
    //   out       receives one reference, owned by the caller; left untouched on failure
    // Threads: one at a time. Fails: -1 when no module declares the format or the one that does cannot be used; -4 when
    // formatId or out is null.
    virtual Result FindReader(const char* formatId, IDeserializable** out) = 0;

protected:
    ~IFormatReaders() = default;
};

}  // namespace tvx::host
