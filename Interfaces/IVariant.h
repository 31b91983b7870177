// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/IString.h"

namespace tvx
{

// A value of one of six types that never changes and never converts: every getter but the one of its own type refuses.
class IVariant : public IObject
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.IVariant/1.0";

    // The tags that GetType gives and that a serialised variant carries.
    enum Type : std::int32_t
    {
        TypeBool = 1,
        TypeInt = 2,
        TypeFloat = 3,
        TypeDouble = 4,
        TypeString = 5,
        TypeObject = 6
    };

    // Slot 11. Gives the type's tag, 1 to 6.
    // Threads: any. Fails: never.
    virtual std::int32_t GetType() = 0;

    // Slot 12. Gives the value of a bool variant.
    //   out  receives the value; left untouched on failure
    // Threads: any. Fails: -1 without a report for every other type; -4 with a report when out is null.
    virtual Result GetBool(bool* out) = 0;

    // Slot 13. Gives the value of an int variant.
    //   out  receives the value; left untouched on failure
    // Threads: any. Fails: -1 without a report for every other type; -4 with a report when out is null.
    virtual Result GetInt(std::int32_t* out) = 0;

    // Slot 14. Gives the value of a float variant.
    //   out  receives the value; left untouched on failure
    // Threads: any. Fails: -1 without a report for every other type; -4 with a report when out is null.
    virtual Result GetFloat(float* out) = 0;

    // Slot 15. Gives the value of a double variant.
    //   out  receives the value; left untouched on failure
    // Threads: any. Fails: -1 without a report for every other type; -4 with a report when out is null.
    virtual Result GetDouble(double* out) = 0;

    // Slot 16. Gives the very string that a string variant holds, not a copy; null only where one was made of a null string.
    //   out  receives one reference, owned by the caller; left untouched on failure
    // Threads: any. Fails: -1 without a report for every other type; -4 with a report when out is null.
    virtual Result GetString(IString** out) = 0;

    // Slot 17. Gives the object that an object variant holds, which may be null.
    //   out  receives one reference, owned by the caller; left untouched on failure
    // Threads: any. Fails: -1 without a report for every other type; -4 with a report when out is null.
    virtual Result GetObject(IObject** out) = 0;

protected:
    ~IVariant() = default;
};

// Makes variants.
class IVariantFactory : public IObject
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.IVariantFactory/1.0";

    // Slot 11. Makes a bool variant.
    //   out  receives one reference, owned by the caller
    // Threads: any. Fails: -4 without a report when out is null or memory is exhausted.
    virtual Result CreateBool(bool value, IVariant** out) = 0;

    // Slot 12. Makes an int variant.
    //   out  receives one reference, owned by the caller
    // Threads: any. Fails: -4 without a report when out is null or memory is exhausted.
    virtual Result CreateInt(std::int32_t value, IVariant** out) = 0;

    // Slot 13. Makes a float variant.
    //   out  receives one reference, owned by the caller
    // Threads: any. Fails: -4 without a report when out is null or memory is exhausted.
    virtual Result CreateFloat(float value, IVariant** out) = 0;

    // Slot 14. Makes a double variant.
    //   out  receives one reference, owned by the caller
    // Threads: any. Fails: -4 without a report when out is null or memory is exhausted.
    virtual Result CreateDouble(double value, IVariant** out) = 0;

    // Slot 15. Makes a string variant that shares string.
    //   string  kept with one reference until the variant dies; null stays null and is written as the empty text
    //   out     receives one reference, owned by the caller
    // Threads: any. Fails: -4 without a report when out is null or memory is exhausted.
    virtual Result CreateStringFromIString(IString* string, IVariant** out) = 0;

    // Slot 16. Makes a string variant holding a new string with a copy of text.
    //   text  borrowed; null counts as the empty text
    //   out   receives one reference, owned by the caller
    // Threads: any. Fails: -4 without a report when out is null or memory is exhausted.
    virtual Result CreateString(const char* text, IVariant** out) = 0;

    // Slot 17. Makes an object variant that shares object.
    //   object  kept with one reference until the variant dies; null is a value
    //   out     receives one reference, owned by the caller
    // Threads: any. Fails: -4 without a report when out is null or memory is exhausted.
    virtual Result CreateObject(IObject* object, IVariant** out) = 0;

protected:
    ~IVariantFactory() = default;
};

}  // namespace tvx

#if __cplusplus < 201703L
[[gnu::weak]] constexpr const char tvx::IVariant::Id[];
[[gnu::weak]] constexpr const char tvx::IVariantFactory::Id[];
#endif
