// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/ISerializer.h"

namespace tvx
{

// An object that writes itself. The format identifier tells which IDeserializable reads it back.
class ISerializable : public IObjectBase
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.ISerializable/1.0";

    // Slot 7. Gives the identifier of the format that Serialize writes.
    //   out  receives one reference to a new string, owned by the caller
    // Threads: any. Fails: -4 without a report when out is null or memory is exhausted.
    virtual Result GetFormatId(IString** out) = 0;

    // Slot 8. Writes the object into writer. What the writer's operations answer is not looked at.
    //   writer  borrowed
    // Threads: one at a time. Fails: -4 with a report when writer is null.
    virtual Result Serialize(ISerializer* writer) = 0;

protected:
    ~ISerializable() = default;
};

// Reads objects of one format back.
class IDeserializable : public IObject
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.IDeserializable/1.0";

    // Slot 11. Gives the identifier of the format that Deserialize reads.
    //   out  receives one reference to a new string, owned by the caller
    // Threads: any. Fails: -4 without a report when out is null or memory is exhausted.
    virtual Result GetFormatId(IString** out) = 0;

    // Slot 12. Builds a new object from reader.
    //   reader  borrowed
    //   out     receives one reference, owned by the caller; left untouched on failure
    // Threads: any, one at a time for a reader. Fails: as the class says, usually -1 for a document that it cannot read and
    // -4 for a null pointer.
    virtual Result Deserialize(IDeserializer* reader, IObjectBase** out) = 0;

protected:
    ~IDeserializable() = default;
};

}  // namespace tvx

#if __cplusplus < 201703L
[[gnu::weak]] constexpr const char tvx::ISerializable::Id[];
[[gnu::weak]] constexpr const char tvx::IDeserializable::Id[];
#endif
