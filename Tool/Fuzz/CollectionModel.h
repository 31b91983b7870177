// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/Objects.h"
#include "Tool/Fuzz/Listeners.h"
#include "Tool/Fuzz/ObjectPool.h"
#include "Tool/Fuzz/Refusals.h"
#include "Tool/Fuzz/Sequences.h"
#include "Tool/Fuzz/TableWalker.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

namespace tvx::fuzz
{

// A collection beside a vector of the same items, and the events beside the ones that are due. There are few items, so that
// the same one often stands in it more than once; one of them is null.
class CollectionModel final : public TableWalker<CollectionModel>
{
public:
    explicit CollectionModel(check::Trial& trial);

    void Add(const Step& step);
    void Insert(const Step& step);
    void InsertFar(const Step& step);
    void InsertBefore(const Step& step);
    void RemoveAt(const Step& step);
    void RemoveLast(const Step& step);
    void Remove(const Step& step);
    void RemoveAny(const Step& step);
    void Move(const Step& step);
    void MoveFar(const Step& step);
    void MoveItem(const Step& step);
    void MoveBefore(const Step& step);
    void MoveBeforeAny(const Step& step);
    void Clear(const Step& step);

    void AskForItem(const Step& step);
    void AskForStranger(const Step& step);
    void GetItem(const Step& step);
    void KeepItem(const Step& step);
    void Refuse(const Step& step);
    void AskAsObject(const Step& step);
    void End(const Step& step);

    void SetEventsEnabled(const Step& step);
    void GetEventsEnabled(const Step& step);
    void NotifyUpdated(const Step& step);
    void Subscribe(const Step& step);
    void Unsubscribe(const Step& step);
    void SubscribeNull(const Step& step);
    void UnsubscribeNull(const Step& step);

    void Serialize(const Step& step);
    void ReadBack(const Step& step);
    void ReadDamaged(const Step& step);

    void Compare() override;

    static constexpr Operation<CollectionModel> Operations[] = {
        {"add", &CollectionModel::Add},
        {"insert", &CollectionModel::Insert},
        {"remove-at", &CollectionModel::RemoveAt},
        {"remove-last", &CollectionModel::RemoveLast},
        {"remove", &CollectionModel::Remove},
        {"move", &CollectionModel::Move},
        {"move-before", &CollectionModel::MoveBefore},
        {"ask-for-item", &CollectionModel::AskForItem},
        {"set-events-enabled", &CollectionModel::SetEventsEnabled},
        {"notify-updated", &CollectionModel::NotifyUpdated},
        {"clear", &CollectionModel::Clear},
        {"insert-far", &CollectionModel::InsertFar},
        {"insert-before", &CollectionModel::InsertBefore},
        {"remove-any", &CollectionModel::RemoveAny},
        {"move-far", &CollectionModel::MoveFar},
        {"move-item", &CollectionModel::MoveItem},
        {"move-before-any", &CollectionModel::MoveBeforeAny},
        {"get-item", &CollectionModel::GetItem},
        {"keep-item", &CollectionModel::KeepItem},
        {"ask-for-stranger", &CollectionModel::AskForStranger},
        {"refuse", &CollectionModel::Refuse},
        {"get-events-enabled", &CollectionModel::GetEventsEnabled},
        {"subscribe", &CollectionModel::Subscribe},
        {"unsubscribe", &CollectionModel::Unsubscribe},
        {"subscribe-null", &CollectionModel::SubscribeNull},
        {"unsubscribe-null", &CollectionModel::UnsubscribeNull},
        {"serialize", &CollectionModel::Serialize},
        {"read-back", &CollectionModel::ReadBack},
        {"read-damaged", &CollectionModel::ReadDamaged},
        {"ask-as-object", &CollectionModel::AskAsObject},
        {"end", &CollectionModel::End},
    };

private:
    // The number of an object that is never in it, behind those of the pool.
    static constexpr std::size_t Stranger = ObjectPool::Size;

    static std::size_t ChooseAny(std::uint32_t number) { return number % (ObjectPool::Size + 1); }

    // Goes on with a collection that nobody has subscribed to.
    void Begin(Ref<ICollection2> collection);

    IObject* Get(std::size_t item) const { return item == Stranger ? stranger_.Get() : items_.Get(item); }

    // Also behind the end.
    std::uint32_t ChooseIndex(std::uint32_t number) const
    {
        return number % (static_cast<std::uint32_t>(model_.size()) + 3);
    }

    // The place of the first, or the end; a null is never found.
    std::size_t Find(std::size_t item) const
    {
        if (item == 0)
            return model_.size();
        return static_cast<std::size_t>(std::find(model_.begin(), model_.end(), item) - model_.begin());
    }

    // What names an item that is null or not there is refused: IndexOf reports a null one, and the caller its failure.
    template <class Call>
    bool IsRefused(const char* what, std::size_t item, Call&& call)
    {
        if (Find(item) < model_.size())
            return false;
        check::ReportsInOrder(trial_, what, GetLines(item == 0 ? PreconditionForwarded : Forwarded),
                              item == 0 ? TVX_E_PRECONDITION : TVX_E_FAIL, call);
        return true;
    }

    void InsertAt(std::uint32_t index, std::size_t item);
    void MoveTo(std::uint32_t from, std::uint32_t to);
    void InsertIntoModel(std::size_t index, std::size_t item);
    std::size_t TakeFromModel(std::size_t index);
    void MoveInModel(std::size_t from, std::size_t to);
    void Fires(const char* event, std::size_t item);
    void FiresUpdated(std::size_t item);
    std::string DescribeFromWithin(const check::SeenEvent& event) const;
    Ref<IDeserializable> GetReading();

    template <class Change>
    Ref<IObjectBase> ReadCopy(Change&& change);
    void CompareCopy(ICollection2& copy, std::size_t count);

    check::Trial& trial_;
    ObjectPool items_;
    Ref<check::ProbeObject> stranger_ = MakeRef<check::ProbeObject>();
    Listeners<ICollection2> listeners_;
    Ref<ICollectionFactory> factory_;
    Ref<ICollection2> collection_;
    std::vector<std::size_t> model_;
    bool events_ = true;
};

}  // namespace tvx::fuzz
