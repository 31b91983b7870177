// SPDX-License-Identifier: MIT
#include "Tool/Checks/ObjectClasses.h"

#include "Interfaces/IConfigurable.h"
#include "Interfaces/IImportsContainer.h"
#include "Interfaces/ITVXPlugin.h"
#include "Interfaces/IUserDataContainer.h"
#include "Tool/Checks/ObjectMakers.h"
#include "Tool/Checks/Objects.h"

#include <string_view>

namespace tvx::check
{

namespace
{

constexpr FaceIds DeserializableFace = {{IDeserializable::Id}};
constexpr FaceIds SerializableFace = {{ISerializable::Id}};
constexpr FaceIds ImportsFace = {{IImportsContainer::Id}};
constexpr FaceIds VariantFace = {{IVariant::Id, IObject::Id, IObjectBase::Id}};

// Iterators are used through the pointer that made them and have no identifier of their own.
constexpr FaceIds IteratorFace = {{IObjectBase::Id}};

}  // namespace

// A string and its factory do not answer IObject, though they have its operations: an intended gap.
const ObjectClass StringFactoryClass = {
    "a string factory", StringExport, GiveExport, {{{IStringFactory::Id, IObjectBase::Id}}}};
const ObjectClass StringClass = {"a string", StringExport, NewString, {{{IString::Id, IObjectBase::Id}}}};

const ObjectClass VariantFactoryClass = {"a variant factory",
                                         VariantExport,
                                         GiveExport,
                                         {{{IVariantFactory::Id, IObject::Id, IObjectBase::Id}}, DeserializableFace}};
const ObjectClass BoolVariantClass = {"a bool variant", VariantExport, NewBoolVariant, {VariantFace, SerializableFace}};
const ObjectClass IntVariantClass = {"an int variant", VariantExport, NewIntVariant, {VariantFace, SerializableFace}};
const ObjectClass FloatVariantClass = {
    "a float variant", VariantExport, NewFloatVariant, {VariantFace, SerializableFace}};
const ObjectClass DoubleVariantClass = {
    "a double variant", VariantExport, NewDoubleVariant, {VariantFace, SerializableFace}};
const ObjectClass StringVariantClass = {
    "a string variant", VariantExport, NewStringVariant, {VariantFace, SerializableFace}};
const ObjectClass ObjectVariantClass = {
    "an object variant", VariantExport, NewObjectVariant, {VariantFace, SerializableFace}};

const ObjectClass MapFactoryClass = {
    "a map factory", MapExport, GiveExport, {{{IMapFactory::Id, IObject::Id, IObjectBase::Id}}, DeserializableFace}};
const ObjectClass MapClass = {
    "a map", MapExport, NewMap, {{{IMap::Id, IObject::Id, IObjectBase::Id}}, SerializableFace}};

// The face for imports answers nothing but its own identifier.
const ObjectClass SimpleMapFactoryClass = {
    "a settings map factory",
    SimpleMapExport,
    GiveExport,
    {{{IFactory::Id, IObject::Id, IObjectBase::Id}}, DeserializableFace, ImportsFace}};
const ObjectClass SimpleMapClass = {"a settings map",
                                    SimpleMapExport,
                                    NewSimpleMap,
                                    {{{ISimpleMap5::Id, ISimpleMap4::Id, ISimpleMap3::Id, ISimpleMap2::Id,
                                       ISimpleMap1::Id, ISimpleMap::Id, IObject::Id, IObjectBase::Id}},
                                     SerializableFace,
                                     {{IUserDataContainer::Id}}}};
const ObjectClass IteratorClass = {"an iterator of a settings map", SimpleMapExport, NewIterator, {IteratorFace}};
const ObjectClass NoSubMapsIteratorClass = {
    "an iterator that skips sub-maps", SimpleMapExport, NewNoSubMapsIterator, {IteratorFace}};
const ObjectClass UserDataIteratorClass = {
    "an iterator of user data", SimpleMapExport, NewUserDataIterator, {IteratorFace}};

const ObjectClass CollectionFactoryClass = {"a collection factory",
                                            CollectionExport,
                                            GiveExport,
                                            {{{ICollectionFactory::Id, IObject::Id, IObjectBase::Id}},
                                             DeserializableFace,
                                             {{ITVXPlugin::Id, IConstTVXPlugin::Id}}}};
const ObjectClass CollectionClass = {
    "a collection",
    CollectionExport,
    NewCollection,
    {{{ICollection2::Id, ICollection::Id, IObject::Id, IObjectBase::Id}}, SerializableFace}};

// The one class whose IObject is not its primary face.
const ObjectClass VariantArrayFactoryClass = {
    "a variant array factory",
    VariantArrayExport,
    GiveExport,
    {{{IDeserializable::Id, IObjectBase::Id}}, {{IFactory::Id, IObject::Id}}}};
const ObjectClass VariantArrayClass = {"a variant array",
                                       VariantArrayExport,
                                       NewVariantArray,
                                       {{{IVariantArray::Id, IObject::Id, IObjectBase::Id}}, SerializableFace}};

const ObjectClass ImageFactoryClass = {
    "an image factory", ImageExport, GiveExport, {{{IImageFactory::Id, IObject::Id, IObjectBase::Id}}}};

// IConstImage says of an image that it never changes: an image that does is none, though its interface derives from it.
const ObjectClass ImageClass = {
    "an image", ImageExport, NewImage, {{{IImage::Id, IImageBase::Id, IObject::Id, IObjectBase::Id}}}};
const ObjectClass ConstImageClass = {
    "a const image", ImageExport, NewConstImage, {{{IConstImage::Id, IImageBase::Id, IObject::Id, IObjectBase::Id}}}};

const ObjectClass LoggerClass = {"a logger",
                                 LoggerExport,
                                 GiveExport,
                                 {{{ILogger::Id, IObject::Id, IObjectBase::Id}}, {{IConfigurable::Id}}, ImportsFace}};
const ObjectClass LogRecordClass = {
    "a log record", LoggerExport, NewLogRecord, {{{ILogData::Id, IObject::Id, IObjectBase::Id}}}};

namespace
{

constexpr const ObjectClass* MadeByStrings[] = {&StringClass};
constexpr const ObjectClass* MadeByVariants[] = {&BoolVariantClass,   &IntVariantClass,    &FloatVariantClass,
                                                 &DoubleVariantClass, &StringVariantClass, &ObjectVariantClass};
constexpr const ObjectClass* MadeByMaps[] = {&MapClass};
constexpr const ObjectClass* MadeBySimpleMaps[] = {&SimpleMapClass, &IteratorClass, &NoSubMapsIteratorClass,
                                                   &UserDataIteratorClass};
constexpr const ObjectClass* MadeByCollections[] = {&CollectionClass};
constexpr const ObjectClass* MadeByVariantArrays[] = {&VariantArrayClass};
constexpr const ObjectClass* MadeByImages[] = {&ImageClass, &ConstImageClass};
constexpr const ObjectClass* MadeByLoggers[] = {&LogRecordClass};

}  // namespace

const Offer StringOffer = {StringFactoryClass, MadeByStrings};
const Offer VariantOffer = {VariantFactoryClass, MadeByVariants};
const Offer MapOffer = {MapFactoryClass, MadeByMaps};
const Offer SimpleMapOffer = {SimpleMapFactoryClass, MadeBySimpleMaps};
const Offer CollectionOffer = {CollectionFactoryClass, MadeByCollections};
const Offer VariantArrayOffer = {VariantArrayFactoryClass, MadeByVariantArrays};
const Offer ImageOffer = {ImageFactoryClass, MadeByImages};
const Offer LoggerOffer = {LoggerClass, MadeByLoggers};

std::span<const FaceIds> GetListedFaces(const ObjectClass& objectClass)
{
    std::size_t count = 0;
    while (count < std::size(objectClass.faces) && objectClass.faces[count].ids[0] != nullptr)
        ++count;
    return {objectClass.faces, count};
}

bool IsObjectFace(const FaceIds& face)
{
    const std::string_view id = face.ids[0];
    return id != ISerializable::Id && id != IObjectBase::Id;
}

bool IsObjectClass(const ObjectClass& objectClass)
{
    return IsObjectFace(objectClass.faces[0]);
}

IObject& AsObject(const Specimen& specimen)
{
    return static_cast<IObject&>(*specimen.object);
}

Specimen MakeSpecimen(Trial& trial, const ObjectClass& objectClass)
{
    auto specimen = objectClass.make(trial.GetExport(objectClass.exportId));
    trial.Expect(static_cast<bool>(specimen.object),
                 std::string("the export ") + objectClass.exportId + " to give " + objectClass.name, "none");
    return specimen;
}

std::vector<Ref<IObjectBase>> HoldFaces(Trial& trial, const ObjectClass& objectClass, const Specimen& specimen)
{
    std::vector<Ref<IObjectBase>> faces;
    for (const auto& listed : GetListedFaces(objectClass))
    {
        void* face = nullptr;
        const auto result = specimen.object->QueryInterface(listed.ids[0], &face);
        trial.Gives(std::string("the query of ") + objectClass.name + " for " + listed.ids[0], result, TVX_OK);
        trial.Expect(face != nullptr, std::string(objectClass.name) + " to give a face for " + listed.ids[0], "null");
        faces.push_back(Ref<IObjectBase>::Adopt(static_cast<IObjectBase*>(face)));
    }
    return faces;
}

}  // namespace tvx::check
