// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/IObject.h"
#include "Tool/Checks/Trial.h"

#include <span>
#include <string>
#include <vector>

// What the eight exports make, as data for the checks that are the same for all of them.
namespace tvx::check
{

// An object of a class, held by its primary face.
struct Specimen
{
    Ref<IObjectBase> owner;   // what the object looks at, when it must not outlive that
    Ref<IObjectBase> object;  // empty when none could be had
};

// The identifiers that an object answers with one of its faces, the face's own interface first; null behind the last.
struct FaceIds
{
    const char* ids[9];
};

struct ObjectClass
{
    const char* name;      // with an article
    const char* exportId;  // of the export that makes such objects, or is one

    // Makes one from the export, or gives the export. May run on any thread.
    Specimen (*make)(const Ref<IObjectBase>& exported);

    FaceIds faces[4];  // the primary one first; empty behind the last
};

std::span<const FaceIds> GetListedFaces(const ObjectClass& objectClass);

// Whether the face has the ten slots of IObject. The serialisable face and the iterators have the six of IObjectBase.
bool IsObjectFace(const FaceIds& face);

// Whether the class has the ten operations of IObject, as its primary face then has.
bool IsObjectClass(const ObjectClass& objectClass);

// The primary face of a specimen of such a class. A string is one, though it does not answer the identifier.
IObject& AsObject(const Specimen& specimen);

// An object of the class. Fails the check when there is none to be had.
Specimen MakeSpecimen(Trial& trial, const ObjectClass& objectClass);

// A face of the specimen for each one in the list, in its order. Fails the check when one is refused.
std::vector<Ref<IObjectBase>> HoldFaces(Trial& trial, const ObjectClass& objectClass, const Specimen& specimen);

// An export: what it is, and what it makes.
struct Offer
{
    const ObjectClass& exported;
    std::span<const ObjectClass* const> made;
};

extern const ObjectClass StringFactoryClass, StringClass;
extern const ObjectClass VariantFactoryClass, BoolVariantClass, IntVariantClass, FloatVariantClass, DoubleVariantClass,
    StringVariantClass, ObjectVariantClass;
extern const ObjectClass MapFactoryClass, MapClass;
extern const ObjectClass SimpleMapFactoryClass, SimpleMapClass, IteratorClass, NoSubMapsIteratorClass,
    UserDataIteratorClass;
extern const ObjectClass CollectionFactoryClass, CollectionClass;
extern const ObjectClass VariantArrayFactoryClass, VariantArrayClass;
extern const ObjectClass ImageFactoryClass, ImageClass, ConstImageClass;
extern const ObjectClass LoggerClass, LogRecordClass;

extern const Offer StringOffer, VariantOffer, MapOffer, SimpleMapOffer, CollectionOffer, VariantArrayOffer, ImageOffer,
    LoggerOffer;

}  // namespace tvx::check
