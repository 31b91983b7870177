// SPDX-License-Identifier: MIT
#include "Src/Variant.h"

#include "Helpers/HandOut.h"
#include "Helpers/Results.h"
#include "Src/String.h"

namespace tvx
{

namespace
{

constexpr const char ValueName[] = "value";

// What the getter of a variant's own type does: the only one that succeeds, and the only one that reports a null out.
template <class Value>
Result Deliver(Value value, Value* out)
{
    TVX_RETURN_EPOINTER_IF_NULL(out);
    *out = value;
    return TVX_OK;
}

template <class Interface>
Result DeliverShared(const Ref<Interface>& value, Interface** out)
{
    TVX_RETURN_EPOINTER_IF_NULL(out);
    HandOut(value.Get(), out);
    return TVX_OK;
}

}  // namespace

Result Variant::GetBool(bool*)
{
    return TVX_E_FAIL;
}

Result Variant::GetInt(std::int32_t*)
{
    return TVX_E_FAIL;
}

Result Variant::GetFloat(float*)
{
    return TVX_E_FAIL;
}

Result Variant::GetDouble(double*)
{
    return TVX_E_FAIL;
}

Result Variant::GetString(IString**)
{
    return TVX_E_FAIL;
}

Result Variant::GetObject(IObject**)
{
    return TVX_E_FAIL;
}

Result Variant::GetFormatId(IString** out)
{
    return HandOutNew<String>(out, FormatId);
}

Result Variant::Serialize(ISerializer* writer)
{
    TVX_RETURN_EPOINTER_IF_NULL(writer);
    writer->WriteNamedInt("type", GetType());
    WriteValue(*writer);
    return TVX_OK;
}

std::int32_t BoolVariant::GetType()
{
    return TypeBool;
}

Result BoolVariant::GetBool(bool* out)
{
    return Deliver(value_, out);
}

void BoolVariant::WriteValue(ISerializer& writer)
{
    writer.WriteNamedBool(ValueName, value_);
}

std::int32_t IntVariant::GetType()
{
    return TypeInt;
}

Result IntVariant::GetInt(std::int32_t* out)
{
    return Deliver(value_, out);
}

void IntVariant::WriteValue(ISerializer& writer)
{
    writer.WriteNamedInt(ValueName, value_);
}

std::int32_t FloatVariant::GetType()
{
    return TypeFloat;
}

Result FloatVariant::GetFloat(float* out)
{
    return Deliver(value_, out);
}

void FloatVariant::WriteValue(ISerializer& writer)
{
    writer.WriteNamedDouble(ValueName, static_cast<double>(value_));
}

std::int32_t DoubleVariant::GetType()
{
    return TypeDouble;
}

Result DoubleVariant::GetDouble(double* out)
{
    return Deliver(value_, out);
}

void DoubleVariant::WriteValue(ISerializer& writer)
{
    writer.WriteNamedDouble(ValueName, value_);
}

std::int32_t StringVariant::GetType()
{
    return TypeString;
}

Result StringVariant::GetString(IString** out)
{
    return DeliverShared(value_, out);
}

void StringVariant::WriteValue(ISerializer& writer)
{
    writer.WriteNamedString(ValueName, value_ ? value_->GetText() : "");
}

std::int32_t ObjectVariant::GetType()
{
    return TypeObject;
}

Result ObjectVariant::GetObject(IObject** out)
{
    return DeliverShared(value_, out);
}

void ObjectVariant::WriteValue(ISerializer& writer)
{
    writer.WriteNamedObject(ValueName, value_.Get());
}

}  // namespace tvx
