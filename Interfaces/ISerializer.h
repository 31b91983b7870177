// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/IString.h"

namespace tvx
{

// A host's writer: named values of one object, and sequences of items. Slots that say Unused are never called by the module
// and belong to the host.
class ISerializer : public IObjectBase
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.ISerializer/1.0";

    // Slot 7. Writes a bool under a name.
    //   name  borrowed
    // Threads: one at a time. Fails: as the host's writer says.
    virtual Result WriteNamedBool(const char* name, bool value) = 0;

    // Slot 8. Writes a 32-bit integer under a name.
    //   name  borrowed
    // Threads: one at a time. Fails: as the host's writer says.
    virtual Result WriteNamedInt(const char* name, std::int32_t value) = 0;

    // Slot 9. Keeps the place of an operation that is the host's own.
    // Threads: the host's. Fails: as the host says.
    virtual Result UnusedSlot9() = 0;

    // Slot 10. Writes a double under a name.
    //   name  borrowed
    // Threads: one at a time. Fails: as the host's writer says.
    virtual Result WriteNamedDouble(const char* name, double value) = 0;

    // Slot 11. Writes a text under a name.
    //   name  borrowed
    //   text  borrowed
    // Threads: one at a time. Fails: as the host's writer says.
    virtual Result WriteNamedString(const char* name, const char* text) = 0;

    // Slot 12. Writes an object under a name, by its format identifier and what it writes of itself.
    //   name    borrowed
    //   object  borrowed; may be null
    // Threads: one at a time. Fails: as the host's writer says.
    virtual Result WriteNamedObject(const char* name, IObjectBase* object) = 0;

    // Slot 13. Keeps the place of an operation that is the host's own.
    // Threads: the host's. Fails: as the host says.
    virtual Result UnusedSlot13() = 0;

    // Slot 14. Opens a sequence under a name. Items follow until EndArray.
    //   name  borrowed
    // Threads: one at a time. Fails: as the host's writer says.
    virtual Result BeginArray(const char* name) = 0;

    // Slot 15. Keeps the place of an operation that is the host's own.
    // Threads: the host's. Fails: as the host says.
    virtual Result UnusedSlot15() = 0;

    // Slot 16. Keeps the place of an operation that is the host's own.
    // Threads: the host's. Fails: as the host says.
    virtual Result UnusedSlot16() = 0;

    // Slot 17. Keeps the place of an operation that is the host's own.
    // Threads: the host's. Fails: as the host says.
    virtual Result UnusedSlot17() = 0;

    // Slot 18. Keeps the place of an operation that is the host's own.
    // Threads: the host's. Fails: as the host says.
    virtual Result UnusedSlot18() = 0;

    // Slot 19. Writes a text as the next item of the open sequence.
    //   text  borrowed
    // Threads: one at a time. Fails: as the host's writer says.
    virtual Result WriteString(const char* text) = 0;

    // Slot 20. Writes an object as the next item of the open sequence.
    //   object  borrowed; may be null
    // Threads: one at a time. Fails: as the host's writer says.
    virtual Result WriteObject(IObjectBase* object) = 0;

    // Slot 21. Keeps the place of an operation that is the host's own.
    // Threads: the host's. Fails: as the host says.
    virtual Result UnusedSlot21() = 0;

    // Slot 22. Closes the open sequence.
    // Threads: one at a time. Fails: as the host's writer says.
    virtual Result EndArray() = 0;

protected:
    ~ISerializer() = default;
};

// A host's reader, slot for slot the mirror of ISerializer.
class IDeserializer : public IObjectBase
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.IDeserializer/1.0";

    // Slot 7. Reads a bool by its name.
    //   name  borrowed
    //   out   receives the value; left untouched on failure
    // Threads: one at a time. Fails: as the host's reader says.
    virtual Result ReadNamedBool(const char* name, bool* out) = 0;

    // Slot 8. Reads a 32-bit integer by its name.
    //   name  borrowed
    //   out   receives the value; left untouched on failure
    // Threads: one at a time. Fails: as the host's reader says.
    virtual Result ReadNamedInt(const char* name, std::int32_t* out) = 0;

    // Slot 9. Keeps the place of an operation that is the host's own.
    // Threads: the host's. Fails: as the host says.
    virtual Result UnusedSlot9() = 0;

    // Slot 10. Reads a double by its name.
    //   name  borrowed
    //   out   receives the value; left untouched on failure
    // Threads: one at a time. Fails: as the host's reader says.
    virtual Result ReadNamedDouble(const char* name, double* out) = 0;

    // Slot 11. Reads a text by its name.
    //   name  borrowed
    //   out   receives one reference, owned by the caller; left untouched on failure
    // Threads: one at a time. Fails: as the host's reader says.
    virtual Result ReadNamedString(const char* name, IString** out) = 0;

    // Slot 12. Reads an object by its name.
    //   name  borrowed
    //   out   receives one reference, owned by the caller, or null for a written null; left untouched on failure
    // Threads: one at a time. Fails: as the host's reader says.
    virtual Result ReadNamedObject(const char* name, IObjectBase** out) = 0;

    // Slot 13. Keeps the place of an operation that is the host's own.
    // Threads: the host's. Fails: as the host says.
    virtual Result UnusedSlot13() = 0;

    // Slot 14. Opens a sequence by its name and gives the number of its items.
    //   name   borrowed
    //   count  receives the number of items; a hostile document may announce any
    // Threads: one at a time. Fails: as the host's reader says.
    virtual Result BeginArray(const char* name, std::uint32_t* count) = 0;

    // Slot 15. Keeps the place of an operation that is the host's own.
    // Threads: the host's. Fails: as the host says.
    virtual Result UnusedSlot15() = 0;

    // Slot 16. Keeps the place of an operation that is the host's own.
    // Threads: the host's. Fails: as the host says.
    virtual Result UnusedSlot16() = 0;

    // Slot 17. Keeps the place of an operation that is the host's own.
    // Threads: the host's. Fails: as the host says.
    virtual Result UnusedSlot17() = 0;

    // Slot 18. Keeps the place of an operation that is the host's own.
    // Threads: the host's. Fails: as the host says.
    virtual Result UnusedSlot18() = 0;

    // Slot 19. Reads the next item of the open sequence as a text.
    //   out  receives one reference, owned by the caller; left untouched on failure
    // Threads: one at a time. Fails: as the host's reader says.
    virtual Result ReadString(IString** out) = 0;

    // Slot 20. Reads the next item of the open sequence as an object.
    //   out  receives one reference, owned by the caller, or null for a written null; left untouched on failure
    // Threads: one at a time. Fails: as the host's reader says.
    virtual Result ReadObject(IObjectBase** out) = 0;

    // Slot 21. Keeps the place of an operation that is the host's own.
    // Threads: the host's. Fails: as the host says.
    virtual Result UnusedSlot21() = 0;

    // Slot 22. Closes the open sequence.
    // Threads: one at a time. Fails: as the host's reader says.
    virtual Result EndArray() = 0;

protected:
    ~IDeserializer() = default;
};

}  // namespace tvx

#if __cplusplus < 201703L
[[gnu::weak]] constexpr const char tvx::ISerializer::Id[];
[[gnu::weak]] constexpr const char tvx::IDeserializer::Id[];
#endif
