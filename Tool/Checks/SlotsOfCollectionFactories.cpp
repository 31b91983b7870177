// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/CollectionSlots.h"

namespace tvx::check
{

namespace
{

constexpr const char Format[] = "com.talvere.general.tvx.GenericCollectionImplementationFormat/1.0";

void CreateCollection(Trial& trial)
{
    const auto factory = trial.Get<ICollectionFactory>(CollectionExport);
    const auto collection = Take<ICollection>(
        trial, "CreateCollection by its number", TVX_OK,
        [&](void** out) { return CallICollectionFactoryCreateCollection(ToC<ICollectionFactory>(factory), out); });
    trial.Equal("what the new collection serialises", WriteOut(trial, collection)->calls,
                Texts{"BeginArray Values", "EndArray"});
}

void GetFormatIdOfTheFactory(Trial& trial)
{
    const auto factory = trial.Get<IDeserializable>(CollectionExport);
    CheckFormatIdSlot(trial, ToC<IDeserializable>(factory), &CallIDeserializableGetFormatId, Format);
}

void Deserialize(Trial& trial)
{
    const auto object = MakeRef<ProbeObject>();
    const auto reader = MakeObjectReader({object, object});
    const auto collection = TakeByDeserializeSlot<ICollection>(trial, CollectionExport, reader);
    trial.Equal("the calls of the reader", reader->calls,
                Texts{"BeginArray Values", "ReadObject", "ReadObject", "EndArray"});
    trial.Equal("the count of what was read", collection->GetCount(), 2u);
}

void GetFormatIdOfTheCollection(Trial& trial)
{
    const auto face = trial.QueryAs<ISerializable>(MakeCollection(trial), "a collection");
    CheckFormatIdSlot(trial, ToC<ISerializable>(face), &CallISerializableGetFormatId, Format);
}

void Serialize(Trial& trial)
{
    const AbcCollection abc(trial);
    const auto face = trial.QueryAs<ISerializable>(abc.collection, "a collection");
    CheckSerializeSlot(trial, ToC<ISerializable>(face),
                       {"BeginArray Values", "WriteObject", "WriteObject", "WriteObject", "EndArray"});
}

void OfTheSerializableFace(Trial& trial)
{
    const auto face = trial.QueryAs<ISerializable>(MakeCollection(trial), "a collection");
    CheckBaseSlots(trial, *face, "the ISerializable face");
}

void AreTheSameInBothVersions(Trial& trial)
{
    const AbcCollection abc(trial);
    for (const char* const id : {ICollection::Id, ICollection2::Id})
    {
        const auto face = TakeFromC<ICollection>(trial, std::string("the query for ") + id, TVX_OK,
                                                 [&](void** out) { return abc.collection->QueryInterface(id, out); });
        trial.Same(std::string("the face for ") + id, face.Get(), abc.collection.Get());
        trial.Gives("Add", CallICollectionAdd(ToC<ICollection>(face), abc.x), TVX_OK);
    }
    trial.Equal("the order after Add through each version", abc.ShowOrder(trial), "abcxx");
}

constexpr Check Checks[] = {
    {"slot-collection-13-in-every-version", "The same slot is called through each version of the interface.",
     "ICollection and ICollection2 are one table at one address: a host asks for the version that it knows.",
     AreTheSameInBothVersions},
    {"slot-collection-factory-11-create-collection", "CreateCollection is called by its number.",
     "Slot 11 of ICollectionFactory is CreateCollection: it gives a new, empty collection.", CreateCollection},
    {"slot-collection-deserializable-11-get-format-id", "GetFormatId of the factory is called by its number.",
     "Slot 11 of IDeserializable is GetFormatId.", GetFormatIdOfTheFactory},
    {"slot-collection-deserializable-12-deserialize", "Deserialize is called by its number.",
     "Slot 12 of IDeserializable is Deserialize: it reads a collection by the reader's slots.", Deserialize},
    {"slot-collection-serializable-7-get-format-id", "GetFormatId of a collection is called by its number.",
     "Slot 7 of ISerializable is GetFormatId.", GetFormatIdOfTheCollection},
    {"slot-collection-serializable-8-serialize", "Serialize is called by its number.",
     "Slot 8 of ISerializable is Serialize: it writes the collection by the writer's slots.", Serialize},
    {"slot-collection-serializable-1-to-6-object-base",
     "The operations of IObjectBase are called by their numbers in the table of ISerializable.",
     "Slots 1 to 6 of ISerializable are those of IObjectBase, and count the references of the whole collection.",
     OfTheSerializableFace},
};

}  // namespace

extern const Family SlotsOfCollectionFactoryFamily = {"slots", CollectionExport, Needs::Module, Checks};

}  // namespace tvx::check
