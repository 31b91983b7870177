// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/SlotChecking.h"

namespace tvx::check
{

namespace
{

constexpr const char Format[] = "com.talvere.general.tvx.GenericVariantArrayImplementationFormat/1.0";

void Create(Trial& trial)
{
    const auto factory = trial.Get<IFactory>(VariantArrayExport);
    const auto array =
        TakeObject<IVariantArray>(trial, "Create by its number", TVX_OK,
                                  [&](void** out) { return CallIFactoryCreate(ToC<IFactory>(factory), out); });
    trial.Equal("what the new array serialises", WriteOut(trial, array)->calls, Texts{"WriteNamedInt size 0"});
}

void GetFormatIdOfTheFactory(Trial& trial)
{
    const auto factory = trial.Get<IDeserializable>(VariantArrayExport);
    CheckFormatIdSlot(trial, ToC<IDeserializable>(factory), &CallIDeserializableGetFormatId, Format);
}

void Deserialize(Trial& trial)
{
    const Ref<IVariant> variant = MakeRef<FixedVariant>(5);
    const auto reader = MakeRef<ScriptedReader>();
    reader->named = {{"size", 1}, {"param0", Ref<IObjectBase>(variant)}};
    const auto array = TakeByDeserializeSlot<IVariantArray>(trial, VariantArrayExport, reader);
    trial.Equal("the calls of the reader", reader->calls, Texts{"ReadNamedInt size", "ReadNamedObject param0"});
    trial.Equal("what the array serialises", WriteOut(trial, array)->calls,
                Texts{"WriteNamedInt size 1", "WriteNamedObject param0"});
}

void GetFormatIdOfTheArray(Trial& trial)
{
    const auto face = trial.QueryAs<ISerializable>(MakeVariantArray(trial), "a variant array");
    CheckFormatIdSlot(trial, ToC<ISerializable>(face), &CallISerializableGetFormatId, Format);
}

void Serialize(Trial& trial)
{
    const auto array = MakeVariantArray(trial);
    const auto variant = MakeRef<FixedVariant>(5);
    trial.Gives("AppendVariant", array->AppendVariant(variant.Get()), TVX_OK);
    const auto face = trial.QueryAs<ISerializable>(array, "a variant array");
    CheckSerializeSlot(trial, ToC<ISerializable>(face), {"WriteNamedInt size 1", "WriteNamedObject param0"});
}

void OfTheSerializableFace(Trial& trial)
{
    const auto face = trial.QueryAs<ISerializable>(MakeVariantArray(trial), "a variant array");
    CheckBaseSlots(trial, *face, "the ISerializable face");
}

constexpr Check Checks[] = {
    {"slot-variant-array-factory-11-create", "Create is called by its number.",
     "Slot 11 of IFactory is Create: it gives a new, empty variant array.", Create},
    {"slot-variant-array-deserializable-11-get-format-id", "GetFormatId of the factory is called by its number.",
     "Slot 11 of IDeserializable is GetFormatId.", GetFormatIdOfTheFactory},
    {"slot-variant-array-deserializable-12-deserialize", "Deserialize is called by its number.",
     "Slot 12 of IDeserializable is Deserialize: it reads a variant array by the reader's slots.", Deserialize},
    {"slot-variant-array-serializable-7-get-format-id", "GetFormatId of a variant array is called by its number.",
     "Slot 7 of ISerializable is GetFormatId.", GetFormatIdOfTheArray},
    {"slot-variant-array-serializable-8-serialize", "Serialize is called by its number.",
     "Slot 8 of ISerializable is Serialize: it writes the variant array by the writer's slots.", Serialize},
    {"slot-variant-array-serializable-1-to-6-object-base",
     "The operations of IObjectBase are called by their numbers in the table of ISerializable.",
     "Slots 1 to 6 of ISerializable are those of IObjectBase, and count the references of the whole array.",
     OfTheSerializableFace},
};

}  // namespace

extern const Family SlotsOfVariantArrayFactoryFamily = {"slots", VariantArrayExport, Needs::Module, Checks};

}  // namespace tvx::check
