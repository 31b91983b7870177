// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/ISerializer.h"

namespace tvx
{

// Makes writers and readers of one text format, for example JSON.
class ISerializerFactory : public IObject
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.ISerializerFactory/1.0";

    // Slot 11. Makes a writer, which also answers IStringSerializer.
    //   out  receives one reference, owned by the caller
    // Threads: any. Fails: as the serializer's module says.
    virtual Result CreateSerializer(ISerializer** out) = 0;

    // Slot 12. Makes a reader, which also answers IStringDeserializer.
    //   out  receives one reference, owned by the caller
    // Threads: any. Fails: as the serializer's module says.
    virtual Result CreateDeserializer(IDeserializer** out) = 0;

protected:
    ~ISerializerFactory() = default;
};

// The face of a writer that makes a text.
class IStringSerializer : public IObject
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.IStringSerializer/1.0";

    // Slot 11. Begins a new, empty document.
    // Threads: one at a time. Fails: as the serializer's module says.
    virtual Result Begin() = 0;

    // Slot 12. Ends the document: from now on GetText gives it.
    // Threads: one at a time. Fails: as the serializer's module says.
    virtual Result End() = 0;

    // Slot 13. Gives the text of the ended document.
    //   out  receives one reference, owned by the caller
    // Threads: one at a time. Fails: as the serializer's module says.
    virtual Result GetText(IString** out) = 0;

protected:
    ~IStringSerializer() = default;
};

// The face of a reader that reads a text.
class IStringDeserializer : public IObject
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.IStringDeserializer/1.0";

    // Slot 11. Begins reading the text that SetText gave.
    // Threads: one at a time. Fails: as the serializer's module says.
    virtual Result Begin() = 0;

    // Slot 12. Ends the reading.
    // Threads: one at a time. Fails: as the serializer's module says.
    virtual Result End() = 0;

    // Slot 13. Takes the text to read.
    //   text  kept with one reference until replaced or the reader dies
    // Threads: one at a time. Fails: as the serializer's module says.
    virtual Result SetText(IString* text) = 0;

protected:
    ~IStringDeserializer() = default;
};

}  // namespace tvx

#if __cplusplus < 201703L
[[gnu::weak]] constexpr const char tvx::ISerializerFactory::Id[];
[[gnu::weak]] constexpr const char tvx::IStringSerializer::Id[];
[[gnu::weak]] constexpr const char tvx::IStringDeserializer::Id[];
#endif
