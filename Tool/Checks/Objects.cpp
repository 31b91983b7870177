// SPDX-License-Identifier: MIT
#include "Tool/Checks/Objects.h"

namespace tvx::check
{

namespace
{

// By one of the creations of the variant factory.
template <class Value>
Ref<IVariant> MakeVariant(Trial& trial, const char* what, Result (IVariantFactory::*create)(Value, IVariant**),
                          Value value)
{
    const auto factory = trial.Get<IVariantFactory>(VariantExport);
    return Make<IVariant>(trial, what, [&](IVariant** out) { return (factory.Get()->*create)(value, out); });
}

// By an export that makes objects without being told how.
template <class Interface>
Ref<Interface> Create(Trial& trial, const char* exportId)
{
    const auto factory = trial.Get<IFactory>(exportId);
    const auto object = Make<IObjectBase>(trial, std::string("Create of ") + exportId,
                                          [&](IObjectBase** out) { return factory->Create(out); });
    return trial.QueryAs<Interface>(object, std::string("what ") + exportId + " makes");
}

}  // namespace

Ref<IString> MakeString(Trial& trial, const char* text)
{
    const auto factory = trial.Get<IStringFactory>(StringExport);
    return Make<IString>(trial, "CreateString", [&](IString** out) { return factory->CreateString(text, out); });
}

Ref<IVariant> MakeBool(Trial& trial, bool value)
{
    return MakeVariant(trial, "CreateBool", &IVariantFactory::CreateBool, value);
}

Ref<IVariant> MakeInt(Trial& trial, std::int32_t value)
{
    return MakeVariant(trial, "CreateInt", &IVariantFactory::CreateInt, value);
}

Ref<IVariant> MakeFloat(Trial& trial, float value)
{
    return MakeVariant(trial, "CreateFloat", &IVariantFactory::CreateFloat, value);
}

Ref<IVariant> MakeDouble(Trial& trial, double value)
{
    return MakeVariant(trial, "CreateDouble", &IVariantFactory::CreateDouble, value);
}

Ref<IVariant> MakeText(Trial& trial, const char* value)
{
    return MakeVariant(trial, "CreateString", &IVariantFactory::CreateString, value);
}

Ref<IVariant> MakeObject(Trial& trial, IObject* value)
{
    return MakeVariant(trial, "CreateObject", &IVariantFactory::CreateObject, value);
}

Ref<IMap> MakeMap(Trial& trial)
{
    const auto factory = trial.Get<IMapFactory>(MapExport);
    return Make<IMap>(trial, "CreateMap", [&](IMap** out) { return factory->CreateMap(out); });
}

Ref<ISimpleMap5> MakeSimpleMap(Trial& trial)
{
    return Create<ISimpleMap5>(trial, SimpleMapExport);
}

Ref<ISimpleMap5> MakeImmediateSimpleMap(Trial& trial)
{
    auto map = MakeSimpleMap(trial);
    trial.Gives("SetBatchUpdatingMode(false)", map->SetBatchUpdatingMode(false), TVX_OK);
    return map;
}

Ref<ICollection2> MakeCollection(Trial& trial)
{
    const auto factory = trial.Get<ICollectionFactory>(CollectionExport);
    const auto collection =
        Make<ICollection>(trial, "CreateCollection", [&](ICollection** out) { return factory->CreateCollection(out); });
    return trial.QueryAs<ICollection2>(collection, "a collection");
}

Ref<IVariantArray> MakeVariantArray(Trial& trial)
{
    return Create<IVariantArray>(trial, VariantArrayExport);
}

Ref<IImage> MakeImage(Trial& trial, std::int32_t width, std::int32_t height, std::int32_t colorFormat,
                      std::int32_t dataType, std::int32_t rowOrder)
{
    const auto factory = trial.Get<IImageFactory>(ImageExport);
    return Make<IImage>(trial, "Create of an image",
                        [&](IImage** out)
                        { return factory->Create(width, height, colorFormat, dataType, rowOrder, out); });
}

}  // namespace tvx::check
