// SPDX-License-Identifier: MIT
#include "Src/VariantFactory.h"

#include "Helpers/HandOut.h"
#include "Helpers/Results.h"
#include "Src/String.h"
#include "Src/Variant.h"

namespace tvx
{

namespace
{

constexpr const char ValueName[] = "value";

// Reads the value that a variant of type Class is made of. What the reader answers is not looked at: a value that is not
// there leaves the zero that it started from.
template <class Class, class Value>
Ref<Variant> ReadVariant(IDeserializer& reader, Result (IDeserializer::*read)(const char*, Value*))
{
    Value value{};
    (reader.*read)(ValueName, &value);
    return MakeRef<Class>(value);
}

Ref<Variant> ReadFloat(IDeserializer& reader)
{
    double value = 0.0;
    reader.ReadNamedDouble(ValueName, &value);
    return MakeRef<FloatVariant>(static_cast<float>(value));
}

Ref<Variant> ReadString(IDeserializer& reader)
{
    Ref<IString> value;
    reader.ReadNamedString(ValueName, value.Receive());
    return MakeRef<StringVariant>(std::move(value));
}

// An object that has no IObject face counts as null.
Ref<Variant> ReadObject(IDeserializer& reader)
{
    Ref<IObjectBase> value;
    reader.ReadNamedObject(ValueName, value.Receive());
    return MakeRef<ObjectVariant>(Query<IObject>(value));
}

// Empty for an unknown type.
Ref<Variant> ReadByType(IDeserializer& reader, std::int32_t type)
{
    switch (type)
    {
    case IVariant::TypeBool: return ReadVariant<BoolVariant>(reader, &IDeserializer::ReadNamedBool);
    case IVariant::TypeInt: return ReadVariant<IntVariant>(reader, &IDeserializer::ReadNamedInt);
    case IVariant::TypeFloat: return ReadFloat(reader);
    case IVariant::TypeDouble: return ReadVariant<DoubleVariant>(reader, &IDeserializer::ReadNamedDouble);
    case IVariant::TypeString: return ReadString(reader);
    case IVariant::TypeObject: return ReadObject(reader);
    default: return nullptr;
    }
}

}  // namespace

Result VariantFactory::CreateBool(bool value, IVariant** out)
{
    return HandOutNew<BoolVariant>(out, value);
}

Result VariantFactory::CreateInt(std::int32_t value, IVariant** out)
{
    return HandOutNew<IntVariant>(out, value);
}

Result VariantFactory::CreateFloat(float value, IVariant** out)
{
    return HandOutNew<FloatVariant>(out, value);
}

Result VariantFactory::CreateDouble(double value, IVariant** out)
{
    return HandOutNew<DoubleVariant>(out, value);
}

Result VariantFactory::CreateStringFromIString(IString* string, IVariant** out)
{
    return HandOutNew<StringVariant>(out, Ref<IString>(string));
}

Result VariantFactory::CreateString(const char* text, IVariant** out)
{
    Ref<IString> string;
    if (TVX_FAILED(HandOutNew<String>(string.Receive(), ToText(text))))
        return TVX_E_POINTER;
    return CreateStringFromIString(string.Get(), out);
}

Result VariantFactory::CreateObject(IObject* object, IVariant** out)
{
    return HandOutNew<ObjectVariant>(out, Ref<IObject>(object));
}

Result VariantFactory::GetFormatId(IString** out)
{
    return HandOutNew<String>(out, Variant::FormatId);
}

Result VariantFactory::Deserialize(IDeserializer* reader, IObjectBase** out)
try
{
    TVX_RETURN_EPOINTER_IF_NULL(reader);
    std::int32_t type = -1;
    reader->ReadNamedInt("type", &type);
    const auto variant = ReadByType(*reader, type);
    if (!variant)
        return TVX_E_FAIL;
    if (out != nullptr)
        HandOut(static_cast<IVariant*>(variant.Get()), out);
    return TVX_OK;
}
catch (...)  // a variant that memory does not suffice for is not delivered, and that is no failure here
{
    return TVX_OK;
}

}  // namespace tvx
