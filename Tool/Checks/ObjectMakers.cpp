// SPDX-License-Identifier: MIT
#include "Tool/Checks/ObjectMakers.h"

#include "Interfaces/IUserDataContainer.h"
#include "Tool/Checks/Doubles.h"
#include "Tool/Checks/Objects.h"

namespace tvx::check
{

namespace
{

// Asks the object for the interface Maker and makes by a call of it, of (maker, out), what stays with the owner.
template <class Maker, class Made, class Call>
Specimen NewBy(const Ref<IObjectBase>& object, Call&& call, Ref<IObjectBase> owner = nullptr)
{
    const auto maker = Query<Maker>(object);
    Ref<Made> made;
    if (!maker || call(*maker, made.Receive()) != TVX_OK)
        return {};
    return {std::move(owner), std::move(made)};
}

template <class Value>
Specimen NewVariant(const Ref<IObjectBase>& exported, Result (IVariantFactory::*create)(Value, IVariant**), Value value)
{
    return NewBy<IVariantFactory, IVariant>(exported, [&](IVariantFactory& factory, IVariant** out)
                                            { return (factory.*create)(value, out); });
}

// What an export makes without being told how, as it comes from there.
Specimen Create(const Ref<IObjectBase>& exported)
{
    return NewBy<IFactory, IObjectBase>(exported,
                                        [](IFactory& factory, IObjectBase** out) { return factory.Create(out); });
}

// Something of a new settings map that must not outlive it.
template <class Face, class Made>
Specimen NewOfSimpleMap(const Ref<IObjectBase>& exported, Result (Face::*create)(Made**))
{
    const auto map = Create(exported).object;
    return NewBy<Face, Made>(
        map, [&](Face& face, Made** out) { return (face.*create)(out); }, map);
}

}  // namespace

Specimen GiveExport(const Ref<IObjectBase>& exported)
{
    return {nullptr, exported};
}

Specimen NewString(const Ref<IObjectBase>& exported)
{
    return NewBy<IStringFactory, IString>(exported, [](IStringFactory& factory, IString** out)
                                          { return factory.CreateString("text", out); });
}

Specimen NewBoolVariant(const Ref<IObjectBase>& exported)
{
    return NewVariant(exported, &IVariantFactory::CreateBool, true);
}

Specimen NewIntVariant(const Ref<IObjectBase>& exported)
{
    return NewVariant(exported, &IVariantFactory::CreateInt, std::int32_t{42});
}

Specimen NewFloatVariant(const Ref<IObjectBase>& exported)
{
    return NewVariant(exported, &IVariantFactory::CreateFloat, 1.5f);
}

Specimen NewDoubleVariant(const Ref<IObjectBase>& exported)
{
    return NewVariant(exported, &IVariantFactory::CreateDouble, 2.5);
}

Specimen NewStringVariant(const Ref<IObjectBase>& exported)
{
    return NewVariant<const char*>(exported, &IVariantFactory::CreateString, "text");
}

Specimen NewObjectVariant(const Ref<IObjectBase>& exported)
{
    return NewVariant<IObject*>(exported, &IVariantFactory::CreateObject, nullptr);
}

Specimen NewMap(const Ref<IObjectBase>& exported)
{
    return NewBy<IMapFactory, IMap>(exported, [](IMapFactory& factory, IMap** out) { return factory.CreateMap(out); });
}

Specimen NewSimpleMap(const Ref<IObjectBase>& exported)
{
    return Create(exported);
}

Specimen NewIterator(const Ref<IObjectBase>& exported)
{
    return NewOfSimpleMap(exported, &ISimpleMap::GetIterator);
}

Specimen NewNoSubMapsIterator(const Ref<IObjectBase>& exported)
{
    return NewOfSimpleMap(exported, &ISimpleMap::GetIteratorNoSubMaps);
}

Specimen NewUserDataIterator(const Ref<IObjectBase>& exported)
{
    return NewOfSimpleMap(exported, &IUserDataContainer::CreateUserDataIterator);
}

Specimen NewCollection(const Ref<IObjectBase>& exported)
{
    return NewBy<ICollectionFactory, ICollection>(exported, [](ICollectionFactory& factory, ICollection** out)
                                                  { return factory.CreateCollection(out); });
}

Specimen NewVariantArray(const Ref<IObjectBase>& exported)
{
    return Create(exported);
}

Specimen NewImage(const Ref<IObjectBase>& exported)
{
    return NewBy<IImageFactory, IImage>(exported, [](IImageFactory& factory, IImage** out)
                                        { return factory.Create(2, 2, 0, 0, 0, out); });
}

Specimen NewConstImage(const Ref<IObjectBase>& exported)
{
    const auto image = Query<IImage>(NewImage(exported).object);
    if (!image)
        return {};
    return NewBy<IImageFactory, IConstImage>(exported, [&](IImageFactory& factory, IConstImage** out)
                                             { return factory.CreateConstCopy(image.Get(), out); });
}

// A message below the minimum level is written nowhere, and its record is given to the handlers all the same.
Specimen NewLogRecord(const Ref<IObjectBase>& exported)
{
    const auto logger = Query<ILogger>(exported);
    if (!logger)
        return {};
    Specimen specimen;
    const auto handler = MakeRef<RecordingHandler>();
    handler->action = [&](const SeenEvent& event)
    { specimen.object = Ref<IObjectBase>(reinterpret_cast<ILogData*>(static_cast<std::uintptr_t>(event.param))); };
    logger->SetLevel("Check", LogLevel::Fatal);
    logger->AdviseMessageLogged(handler.Get(), 0, true);
    logger->Log("Check", LogLevel::Trace, "source", "scope", "file", 1, "message");
    logger->AdviseMessageLogged(handler.Get(), 0, false);
    return specimen;
}

}  // namespace tvx::check
