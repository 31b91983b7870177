// SPDX-License-Identifier: MIT
#include "Tool/Fuzz/CollectionModel.h"

#include "Tool/Fuzz/AnyObject.h"

#include <iterator>
#include <utility>

namespace tvx::fuzz
{

namespace
{

constexpr EventKind<ICollection2> EventKinds[] = {
    {"ItemAdded", &ICollection2::SubscribeItemAdded},
    {"ItemRemoved", &ICollection2::SubscribeItemRemoved},
    {"ItemMoved", &ICollection2::SubscribeItemMoved},
    {"Updated", &ICollection2::SubscribeUpdated},
};

constexpr auto Names = GetNames(CollectionModel::Operations);

constexpr std::uint32_t NoIndex = 0xFFFFFFFF;

// What an event says: the item, where it stands first at that moment, and among how many.
std::string Describe(std::size_t item, std::size_t index, std::size_t count)
{
    return "of " + std::to_string(item) + (index < count ? " at " + std::to_string(index) : "") + " among " +
           std::to_string(count);
}

}  // namespace

CollectionModel::CollectionModel(check::Trial& trial)
    : trial_(trial),
      listeners_(EventKinds, [this](const check::SeenEvent& event) { return DescribeFromWithin(event); }),
      factory_(trial.Get<ICollectionFactory>(check::CollectionExport))
{
    Begin(check::MakeCollection(trial));
}

void CollectionModel::Add(const Step& step)
{
    const auto item = ObjectPool::Choose(step.first);
    trial_.Gives("Add", collection_->Add(items_.Get(item)), TVX_OK);
    model_.push_back(item);
    Fires("ItemAdded", item);
}

void CollectionModel::Insert(const Step& step)
{
    InsertAt(ChooseIndex(step.second), ObjectPool::Choose(step.first));
}

// An index that is far behind the end, and may be mistaken for one in front of the first.
void CollectionModel::InsertFar(const Step& step)
{
    InsertAt(NoIndex - step.second % 2, ObjectPool::Choose(step.first));
}

void CollectionModel::InsertBefore(const Step& step)
{
    const auto item = ObjectPool::Choose(step.first);
    const auto before = ChooseAny(step.second);
    const auto call = [&] { return collection_->InsertBefore(items_.Get(item), Get(before)); };
    if (IsRefused("InsertBefore", before, call))
        return;
    const auto index = Find(before);
    trial_.Gives("InsertBefore", call(), TVX_OK);
    InsertIntoModel(index, item);
    Fires("ItemAdded", item);
}

void CollectionModel::RemoveAt(const Step& step)
{
    const auto index = ChooseIndex(step.first);
    if (index >= model_.size())
    {
        trial_.Reports("RemoveAt behind the end", "TVX_CHECK_PRECOND", TVX_E_PRECONDITION,
                       [&] { return collection_->RemoveAt(index); });
        return;
    }
    trial_.Gives("RemoveAt", collection_->RemoveAt(index), TVX_OK);
    Fires("ItemRemoved", TakeFromModel(index));
}

void CollectionModel::RemoveLast(const Step&)
{
    if (model_.empty())
    {
        trial_.Reports("RemoveLast of an empty collection", "TVX_RETURN_FAIL_IF", TVX_E_FAIL,
                       [&] { return collection_->RemoveLast(); });
        return;
    }
    trial_.Gives("RemoveLast", collection_->RemoveLast(), TVX_OK);
    Fires("ItemRemoved", TakeFromModel(model_.size() - 1));
}

void CollectionModel::Remove(const Step& step)
{
    const auto index = Find(ObjectPool::Choose(step.first));
    if (index == model_.size())
        return;
    trial_.Gives("Remove", collection_->Remove(items_.Get(model_[index])), TVX_OK);
    Fires("ItemRemoved", TakeFromModel(index));
}

// Also what is null or not there.
void CollectionModel::RemoveAny(const Step& step)
{
    const auto item = ChooseAny(step.first);
    if (!IsRefused("Remove", item, [&] { return collection_->Remove(Get(item)); }))
        Remove({step.operation, static_cast<std::uint32_t>(item), 0});
}

void CollectionModel::Move(const Step& step)
{
    MoveTo(ChooseIndex(step.first), ChooseIndex(step.second));
}

void CollectionModel::MoveFar(const Step& step)
{
    MoveTo(ChooseIndex(step.first), NoIndex - step.second % 2);
}

void CollectionModel::MoveItem(const Step& step)
{
    const auto item = ChooseAny(step.first);
    const auto to = ChooseIndex(step.second);
    const auto call = [&] { return collection_->MoveItem(Get(item), to); };
    if (IsRefused("MoveItem", item, call))
        return;
    trial_.Gives("MoveItem", call(), TVX_OK);
    MoveInModel(Find(item), std::min<std::size_t>(to, model_.size()));
}

void CollectionModel::MoveBefore(const Step& step)
{
    const auto from = Find(ObjectPool::Choose(step.first));
    const auto before = Find(ObjectPool::Choose(step.second));
    if (from == model_.size() || before == model_.size())
        return;
    trial_.Gives("MoveBefore", collection_->MoveBefore(items_.Get(model_[from]), items_.Get(model_[before])), TVX_OK);
    MoveInModel(from, before);
}

// Also of what is null or not there. In front of null is the end; what to move in front of is looked for first.
void CollectionModel::MoveBeforeAny(const Step& step)
{
    const auto item = ChooseAny(step.first);
    const auto before = ChooseAny(step.second);
    const auto call = [&] { return collection_->MoveBefore(Get(item), Get(before)); };
    if (before != 0 && IsRefused("MoveBefore of another", before, call))
        return;
    if (IsRefused("MoveBefore", item, call))
        return;
    trial_.Gives("MoveBefore", call(), TVX_OK);
    MoveInModel(Find(item), Find(before));
}

// Seldom, or every walk would end with a short collection.
void CollectionModel::Clear(const Step& step)
{
    if (step.first % 16 != 0)
        return;
    trial_.Gives("Clear", collection_->Clear(), TVX_OK);
    while (!model_.empty())
        Fires("ItemRemoved", TakeFromModel(model_.size() - 1));
}

void CollectionModel::SetEventsEnabled(const Step& step)
{
    events_ = step.first % 4 != 0;
    trial_.Gives("SetEventsEnabled", collection_->SetEventsEnabled(events_), TVX_OK);
}

void CollectionModel::GetEventsEnabled(const Step&)
{
    bool enabled = !events_;
    trial_.Gives("GetEventsEnabled", collection_->GetEventsEnabled(&enabled), TVX_OK);
    trial_.Equal("the answer of GetEventsEnabled", enabled, events_);
}

void CollectionModel::NotifyUpdated(const Step& step)
{
    const auto item = ObjectPool::Choose(step.first);
    const bool present = Find(item) < model_.size();
    trial_.Gives("NotifyUpdated", collection_->NotifyUpdated(items_.Get(item)), present ? TVX_OK : TVX_E_FAIL);
    if (present)
        FiresUpdated(item);
}

void CollectionModel::Subscribe(const Step& step)
{
    listeners_.Subscribe(step.first, step.first / 4, step.second);
}

void CollectionModel::Unsubscribe(const Step& step)
{
    listeners_.Unsubscribe(step.first, step.first / 4, step.second);
}

void CollectionModel::SubscribeNull(const Step& step)
{
    listeners_.SubscribeNull(step.first, step.second);
}

// Seldom, or nobody would hear much.
void CollectionModel::UnsubscribeNull(const Step& step)
{
    if (step.second % 4 == 0)
        listeners_.UnsubscribeNull(step.first, step.second);
}

void CollectionModel::Compare()
{
    trial_.Equal("GetCount", collection_->GetCount(), static_cast<std::uint32_t>(model_.size()));
    for (std::uint32_t index = 0; index < model_.size(); ++index)
    {
        Ref<IObject> item;
        trial_.Gives("GetItem", collection_->GetItem(index, item.Receive()), TVX_OK);
        trial_.Same("the item " + std::to_string(index), item.Get(), items_.Get(model_[index]));
    }
    items_.Compare(trial_, [&](std::size_t item) { return std::count(model_.begin(), model_.end(), item); });
    CompareCount(trial_, "an object that was never put in", *stranger_, 1);
    CompareCount(trial_, "a collection", *collection_, 1);
    listeners_.Compare(trial_);
}

// As at the start of every walk: one handler hears everything.
void CollectionModel::Begin(Ref<ICollection2> collection)
{
    collection_ = std::move(collection);
    listeners_.Watch(*collection_);
    for (std::uint32_t kind = 0; kind < std::size(EventKinds); ++kind)
        listeners_.Subscribe(kind, 0, kind + 1);
    events_ = true;
}

void CollectionModel::InsertAt(std::uint32_t index, std::size_t item)
{
    trial_.Gives("Insert", collection_->Insert(index, items_.Get(item)), TVX_OK);
    InsertIntoModel(std::min<std::size_t>(index, model_.size()), item);
    Fires("ItemAdded", item);
}

void CollectionModel::MoveTo(std::uint32_t from, std::uint32_t to)
{
    if (from >= model_.size())
    {
        trial_.Reports("Move from behind the end", "TVX_CHECK_PRECOND", TVX_E_PRECONDITION,
                       [&] { return collection_->Move(from, to); });
        return;
    }
    trial_.Gives("Move", collection_->Move(from, to), TVX_OK);
    MoveInModel(from, std::min<std::size_t>(to, model_.size()));
}

void CollectionModel::InsertIntoModel(std::size_t index, std::size_t item)
{
    model_.insert(model_.begin() + static_cast<std::ptrdiff_t>(index), item);
}

std::size_t CollectionModel::TakeFromModel(std::size_t index)
{
    const auto item = model_[index];
    model_.erase(model_.begin() + static_cast<std::ptrdiff_t>(index));
    return item;
}

// In front of what stood at the place before.
void CollectionModel::MoveInModel(std::size_t from, std::size_t to)
{
    if (from == to)
        return;
    const auto item = TakeFromModel(from);
    InsertIntoModel(to > from ? to - 1 : to, item);
    Fires("ItemMoved", item);
}

void CollectionModel::Fires(const char* event, std::size_t item)
{
    if (!events_)
        return;
    listeners_.Expect(event, Describe(item, Find(item), model_.size()));
    FiresUpdated(item);
}

void CollectionModel::FiresUpdated(std::size_t item)
{
    listeners_.Expect("Updated", Describe(item, Find(item), model_.size()));
}

// As the collection answers inside the event; one that is on its end should tell of nothing.
std::string CollectionModel::DescribeFromWithin(const check::SeenEvent& event) const
{
    if (!collection_)
        return "at the end";
    auto* const item = reinterpret_cast<IObject*>(static_cast<std::uintptr_t>(event.param));
    const auto number = items_.Find(item);
    std::uint32_t index = NoIndex;
    if (item != nullptr && number < ObjectPool::Size)
        static_cast<void>(collection_->IndexOf(item, &index));
    return Describe(number, index, collection_->GetCount());
}

const Walk CollectionWalk = {"collection", check::CollectionExport, Names, &CollectionModel::Start};

}  // namespace tvx::fuzz
