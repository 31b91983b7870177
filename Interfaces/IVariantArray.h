// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/IVariant.h"

namespace tvx
{

// A list of variants that only grows. An element may be null.
class IVariantArray : public IObject
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.IVariantArray/1.0";

    // Slot 11. Gives the number of elements.
    //   out  receives the number
    // Threads: one at a time. Fails: -4 with a report when out is null.
    virtual Result GetSize(std::uint32_t* out) = 0;

    // Slot 12. Gives the element at index.
    //   index  from 0
    //   out    receives one reference, owned by the caller, or null; left untouched on failure
    // Threads: one at a time. Fails: -1 with a report when index is not below the size, then -4 without one when out is null.
    virtual Result GetAt(std::uint32_t index, IVariant** out) = 0;

    // Slot 13. Appends an object variant.
    //   object  kept with one reference by the variant; null is a value
    // Threads: one at a time. Fails: -4 without a report when the array cannot grow; a variant that cannot be made becomes a
    // null element.
    virtual Result AppendObject(IObject* object) = 0;

    // Slot 14. Appends a string variant with a copy of text.
    //   text  borrowed; null counts as the empty text
    // Threads: one at a time. Fails: as AppendObject.
    virtual Result AppendString(const char* text) = 0;

    // Slot 15. Appends a double variant.
    // Threads: one at a time. Fails: as AppendObject.
    virtual Result AppendDouble(double value) = 0;

    // Slot 16. Appends a float variant.
    // Threads: one at a time. Fails: as AppendObject.
    virtual Result AppendFloat(float value) = 0;

    // Slot 17. Appends an int variant.
    // Threads: one at a time. Fails: as AppendObject.
    virtual Result AppendInt(std::int32_t value) = 0;

    // Slot 18. Appends a bool variant.
    // Threads: one at a time. Fails: as AppendObject.
    virtual Result AppendBool(bool value) = 0;

    // Slot 19. Appends the variant itself.
    //   variant  kept with one reference until the array dies; null becomes a null element
    // Threads: one at a time. Fails: -4 without a report when the array cannot grow.
    virtual Result AppendVariant(IVariant* variant) = 0;

protected:
    ~IVariantArray() = default;
};

}  // namespace tvx

#if __cplusplus < 201703L
[[gnu::weak]] constexpr const char tvx::IVariantArray::Id[];
#endif
