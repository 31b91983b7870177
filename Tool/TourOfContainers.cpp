// SPDX-License-Identifier: MIT
#include "Interfaces/ICollection.h"
#include "Interfaces/IFactory.h"
#include "Interfaces/ISerializable.h"
#include "Interfaces/ITVXPlugin.h"
#include "Interfaces/IVariantArray.h"
#include "Tool/Narration.h"
#include "Tool/Tour.h"

namespace tvx::tool
{

namespace
{

constexpr const char CollectionExport[] = "com.talvere.general.tvx.GenericCollectionImplementation/1.1";
constexpr const char DictionaryExport[] = "com.talvere.general.tvx.GenericMapImplementation/1.1";
constexpr const char VariantArrayExport[] = "com.talvere.general.tvx.GenericVariantArrayImplementation/1.0";

// Empty when the factory makes no array.
Ref<IVariantArray> MakeArray(IFactory& factory)
{
    Ref<IObjectBase> made;
    factory.Create(made.Receive());
    auto array = Query<IVariantArray>(made);
    if (!array)
        return nullptr;
    array->AppendInt(7);
    array->AppendString("seven");
    array->AppendBool(true);
    return array;
}

// Gives whether what the plug-in says of itself can be shown, or it says nothing.
bool SayPlugin(const Ref<ICollectionFactory>& factory)
{
    Ref<IString> name;
    Ref<IString> version;
    const auto plugin = Query<ITVXPlugin>(factory);
    if (!plugin || plugin->GetName(name.Receive()) != TVX_S_VALUE ||
        plugin->GetVersion(version.Receive()) != TVX_S_VALUE)
        return true;
    if (!name || !version)
        return false;
    Say("  the plug-in says of itself: ", name->GetText(), ", version ", version->GetText());
    return true;
}

// Adds what the collection is to hold, the dictionary in front, with somebody listening.
void FillCollection(ICollection& collection, IObject* array, IObject* dictionary)
{
    const auto narrator = MakeRef<Narrator>();
    collection.SubscribeItemAdded(narrator.Get(), 0, true);
    collection.SubscribeItemMoved(narrator.Get(), 0, true);
    collection.Add(array);
    collection.Add(dictionary);
    collection.MoveBefore(dictionary, array);
    collection.SubscribeItemAdded(nullptr, 0, false);
}

}  // namespace

bool Tour::UseContainers()
{
    OpenChapter(
        "Put objects together: a dictionary of objects, an array of values, a collection that tells its changes.");
    Ref<ICollection> collection;
    Ref<IMap> dictionary;
    if (!MakeContainers(collection, dictionary) ||
        !Expect("SetValue", dictionary->SetValue("settings", map_.Get()), TVX_OK))
        return false;
    const auto arrays = manager_->GetExportAs<IFactory>(VariantArrayExport);
    if (!arrays)
        return Fail(arrays.GetError());
    const auto array = MakeArray(**arrays);
    if (!array)
        return Fail(
            {host::ErrorKind::Misbehaved, std::string("the export \"") + VariantArrayExport + "\" makes no array"});
    FillCollection(*collection, array.Get(), dictionary.Get());
    return RepeatCollection(*collection);
}

bool Tour::MakeContainers(Ref<ICollection>& collection, Ref<IMap>& dictionary)
{
    const auto collections = manager_->GetExportAs<ICollectionFactory>(CollectionExport);
    if (!collections)
        return Fail(collections.GetError());
    const auto dictionaries = manager_->GetExportAs<IMapFactory>(DictionaryExport);
    if (!dictionaries)
        return Fail(dictionaries.GetError());
    if (!SayPlugin(*collections))
        return FailForNull("the plug-in object");
    return Expect("CreateCollection", (*collections)->CreateCollection(collection.Receive()), TVX_OK, collection) &&
           Expect("CreateMap", (*dictionaries)->CreateMap(dictionary.Receive()), TVX_OK, dictionary);
}

// Writes the collection with all that it holds, and reads it back.
bool Tour::RepeatCollection(ICollection& collection)
{
    std::string text;
    Ref<IObjectBase> object;
    if (!Expect("the serializer", WriteToText(*serializers_, Query<ISerializable>(&collection).Get(), text), TVX_OK) ||
        !Expect("the deserializer", ReadFromText(*serializers_, text, object), TVX_OK, object))
        return false;
    const auto read = Query<ICollection>(object);
    std::string again;
    if (!read ||
        !Expect("the serializer", WriteToText(*serializers_, Query<ISerializable>(read).Get(), again), TVX_OK) ||
        again != text)
        return Fail({host::ErrorKind::Misbehaved, "the collection read back differs from the one written"});
    Say("  all of it in ", text.size(), " bytes of JSON, read back equal: ", read->GetCount(), " items");
    return true;
}

}  // namespace tvx::tool
