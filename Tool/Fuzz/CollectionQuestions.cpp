// SPDX-License-Identifier: MIT
#include "Tool/Fuzz/AnyObject.h"
#include "Tool/Fuzz/CollectionModel.h"

#include <utility>

namespace tvx::fuzz
{

namespace
{

// What refused calls are made with: the index is behind the end.
struct Subject
{
    Ref<ICollection2> collection;
    Ref<ISerializable> writing;
    Ref<ICollectionFactory> factory;
    Ref<IDeserializable> reading;
    std::uint32_t index;
    IObject* item;
    Ref<check::ScriptedReader> reader = MakeRef<check::ScriptedReader>();

    struct Outs
    {
        IObject* item;
        IObjectBase* object;
        std::uint32_t index = 4711;

        bool operator==(const Outs&) const = default;
    };
    Outs outs = {item, item};
};

constexpr Refusal<Subject> Refusals[] = {
    {"GetItem behind the end", FailIf, TVX_E_FAIL,
     [](Subject& it) { return it.collection->GetItem(it.index, &it.outs.item); }},
    {"GetItem behind the end with a null out", FailIf, TVX_E_FAIL,
     [](Subject& it) { return it.collection->GetItem(it.index, nullptr); }},
    {"RemoveAt far behind the end", Precondition, TVX_E_PRECONDITION,
     [](Subject& it) { return it.collection->RemoveAt(it.index); }},
    {"Move from behind the end to the start", Precondition, TVX_E_PRECONDITION,
     [](Subject& it) { return it.collection->Move(it.index, 0); }},
    {"Move of what is behind the end to where it is", Precondition, TVX_E_PRECONDITION,
     [](Subject& it) { return it.collection->Move(it.index, it.index); }},
    {"IndexOf of null", Precondition, TVX_E_PRECONDITION,
     [](Subject& it) { return it.collection->IndexOf(nullptr, &it.outs.index); }},
    {"IndexOf with a null out", Precondition, TVX_E_PRECONDITION,
     [](Subject& it) { return it.collection->IndexOf(it.item, nullptr); }},
    {"Contains with a null out", Precondition, TVX_E_PRECONDITION,
     [](Subject& it) { return it.collection->Contains(it.item, nullptr); }},
    {"Contains of null with a null out", Precondition, TVX_E_PRECONDITION,
     [](Subject& it) { return it.collection->Contains(nullptr, nullptr); }},
    {"GetEventsEnabled with a null out", Precondition, TVX_E_PRECONDITION,
     [](Subject& it) { return it.collection->GetEventsEnabled(nullptr); }},
    {"MoveItem of null to behind the end", PreconditionForwarded, TVX_E_PRECONDITION,
     [](Subject& it) { return it.collection->MoveItem(nullptr, it.index); }},
    {"MoveBefore of null in front of null", PreconditionForwarded, TVX_E_PRECONDITION,
     [](Subject& it) { return it.collection->MoveBefore(nullptr, nullptr); }},
    {"InsertBefore of null in front of null", PreconditionForwarded, TVX_E_PRECONDITION,
     [](Subject& it) { return it.collection->InsertBefore(nullptr, nullptr); }},
    {"Serialize with a null writer", NullPointer, TVX_E_POINTER,
     [](Subject& it) { return it.writing->Serialize(nullptr); }},
    {"GetFormatId of a collection with a null out", Silent, TVX_E_POINTER,
     [](Subject& it) { return it.writing->GetFormatId(nullptr); }},
    {"GetFormatId of the factory with a null out", Silent, TVX_E_POINTER,
     [](Subject& it) { return it.reading->GetFormatId(nullptr); }},
    {"CreateCollection with a null out", Silent, TVX_E_POINTER,
     [](Subject& it) { return it.factory->CreateCollection(nullptr); }},
    {"Deserialize with a null reader", NullPointer, TVX_E_POINTER,
     [](Subject& it) { return it.reading->Deserialize(nullptr, &it.outs.object); }},
    {"Deserialize with a null out", NullPointer, TVX_E_POINTER,
     [](Subject& it) { return it.reading->Deserialize(it.reader.Get(), nullptr); }},
};

}  // namespace

void CollectionModel::AskForItem(const Step& step)
{
    const auto item = ObjectPool::Choose(step.first);
    bool contained = true;
    trial_.Gives("Contains", collection_->Contains(items_.Get(item), &contained), TVX_OK);
    trial_.Equal("the answer of Contains", contained, Find(item) < model_.size());
    if (item == 0)
        return;
    std::uint32_t index = 0;
    const bool present = Find(item) < model_.size();
    trial_.Gives("IndexOf", collection_->IndexOf(items_.Get(item), &index), present ? TVX_OK : TVX_E_FAIL);
    trial_.Equal("the index of IndexOf", index, present ? static_cast<std::uint32_t>(Find(item)) : 0xFFFFFFFFu);
}

void CollectionModel::AskForStranger(const Step&)
{
    std::uint32_t index = 0;
    trial_.Gives("IndexOf of a stranger", collection_->IndexOf(stranger_.Get(), &index), TVX_E_FAIL);
    trial_.Equal("the index of a stranger", index, 0xFFFFFFFFu);
    bool contained = true;
    trial_.Gives("Contains of a stranger", collection_->Contains(stranger_.Get(), &contained), TVX_OK);
    trial_.Equal("whether a stranger is contained", contained, false);
    trial_.Gives("NotifyUpdated of a stranger", collection_->NotifyUpdated(stranger_.Get()), TVX_E_FAIL);
}

// What stands in the out before is neither used nor released; a null out is looked at after the index.
void CollectionModel::GetItem(const Step& step)
{
    if (model_.empty())
        return;
    const auto index = step.first % static_cast<std::uint32_t>(model_.size());
    trial_.Gives("GetItem with a null out", collection_->GetItem(index, nullptr), TVX_E_POINTER);
    IObject* out = stranger_.Get();
    trial_.Gives("GetItem", collection_->GetItem(index, &out), TVX_OK);
    trial_.Same("the out of GetItem", out, items_.Get(model_[index]));
    static_cast<void>(Ref<IObject>::Adopt(out));
}

// The reference on it outlives that of the collection, if the item is removed meanwhile.
void CollectionModel::KeepItem(const Step& step)
{
    if (model_.empty())
        return;
    Ref<IObject> item;
    const auto index = step.first % static_cast<std::uint32_t>(model_.size());
    trial_.Gives("GetItem", collection_->GetItem(index, item.Receive()), TVX_OK);
    items_.Keep(step.second, Ref<IObjectBase>(item));
}

void CollectionModel::Refuse(const Step& step)
{
    const auto behind = static_cast<std::uint32_t>(model_.size()) + step.second % 3;
    const auto index = step.second % 4 == 3 ? 0xFFFFFFFF : behind;
    TryRefused(trial_, Refusals, step.first,
               Subject{collection_, trial_.QueryAs<ISerializable>(collection_, "a collection"), factory_, GetReading(),
                       index, items_.Get(1)});
}

void CollectionModel::AskAsObject(const Step& step)
{
    trial_.Same("the ICollection of a collection", trial_.QueryAs<ICollection>(collection_, "a collection").Get(),
                collection_.Get());
    AskForWriting(trial_, "a collection", collection_);
    fuzz::AskAsObject(trial_, "a collection", collection_, step.first);
}

// The items are released with the collection, which tells of its own end only.
void CollectionModel::End(const Step& step)
{
    if (step.first % 16 != 0)
        return;
    EndBeforeWitnesses(trial_, "a collection", collection_);
    model_.clear();
    Begin(check::MakeCollection(trial_));
}

// What the writer answers is not looked at.
void CollectionModel::Serialize(const Step& step)
{
    check::Lines due(model_.size(), "WriteObject");
    due.insert(due.begin(), "BeginArray Values");
    due.emplace_back("EndArray");
    const auto writer = MakeRef<check::RecordingWriter>(step.first % 2 == 0 ? TVX_OK : -42);
    const auto face = trial_.QueryAs<ISerializable>(collection_, "a collection");
    trial_.Gives("Serialize", face->Serialize(writer.Get()), TVX_OK);
    trial_.Equal("the calls that write a collection", writer->calls, due);
    for (std::size_t index = 0; index < model_.size(); ++index)
        trial_.Same("a written item", writer->objects[index].Get(), items_.Get(model_[index]));
}

// The copy takes the place of the collection now and then. Null items are written, but cannot be read.
void CollectionModel::ReadBack(const Step& step)
{
    const auto read = ReadCopy([](check::ScriptedReader&) {});
    if (read && step.first % 4 == 0)
        Begin(trial_.QueryAs<ICollection2>(read, "a copy"));
}

void CollectionModel::ReadDamaged(const Step& step)
{
    static_cast<void>(ReadCopy([&](check::ScriptedReader& reader) { Damage(reader, step); }));
}

Ref<IDeserializable> CollectionModel::GetReading()
{
    return trial_.QueryAs<IDeserializable>(factory_, "the factory of collections");
}

// Reads what the collection writes after something was done to it, and compares. Null when it cannot be read.
template <class Change>
Ref<IObjectBase> CollectionModel::ReadCopy(Change&& change)
{
    auto read = ReadWritten(trial_, collection_, *GetReading(), {"ReadObject"}, change);
    if (read.object)
        CompareCopy(*trial_.QueryAs<ICollection2>(read.object, "a copy"), read.entries);
    return read.object;
}

// It holds the first items, and its events are enabled as in every new collection.
void CollectionModel::CompareCopy(ICollection2& copy, std::size_t count)
{
    trial_.Equal("GetCount of a copy", copy.GetCount(), static_cast<std::uint32_t>(count));
    for (std::uint32_t index = 0; index < count; ++index)
    {
        Ref<IObject> item;
        trial_.Gives("GetItem of a copy", copy.GetItem(index, item.Receive()), TVX_OK);
        trial_.Same("an item of a copy", item.Get(), items_.Get(model_[index]));
    }
    bool enabled = false;
    trial_.Gives("GetEventsEnabled of a copy", copy.GetEventsEnabled(&enabled), TVX_OK);
    trial_.Equal("whether the events of a copy are enabled", enabled, true);
}

}  // namespace tvx::fuzz
