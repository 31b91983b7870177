// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/Serialising.h"

#include <utility>

// Records as variants write them, and what they are read to.
namespace tvx::check
{

// A reader of a record with a type, and a value unless it is left out.
inline Ref<ScriptedReader> MakeRecord(std::int32_t type)
{
    auto reader = MakeRef<ScriptedReader>();
    reader->named["type"] = type;
    return reader;
}

inline Ref<ScriptedReader> MakeRecord(std::int32_t type, ScriptedReader::Value value)
{
    auto reader = MakeRecord(type);
    reader->named["value"] = std::move(value);
    return reader;
}

inline Ref<IVariant> ReadVariant(Trial& trial, const Ref<ScriptedReader>& reader, std::int32_t type)
{
    auto variant = ReadAs<IVariant>(trial, VariantExport, *reader);
    trial.Equal("the type of what was read", variant->GetType(), type);
    trial.Equal("the reference count of what was read", variant->GetRefCount(), 1u);
    trial.Equal("the reader's reference count afterwards", reader->GetRefCount(), 1u);
    return variant;
}

// The value of a variant by the getter of its type.
template <class Number>
void ExpectNumber(Trial& trial, IVariant& variant, Result (IVariant::*get)(Number*), Number expected)
{
    auto came = static_cast<Number>(expected == Number{} ? 1 : 0);
    trial.Gives("the getter of the type that was read", (variant.*get)(&came), TVX_OK);
    trial.Equal("the value that was read", came, expected);
}

}  // namespace tvx::check
