// SPDX-License-Identifier: MIT
#include "Tool/Checks/Objects.h"
#include "Tool/Fuzz/ObjectPool.h"
#include "Tool/Fuzz/TableWalker.h"

#include <algorithm>
#include <string>
#include <vector>

namespace tvx::fuzz
{

namespace
{

// A collection beside a vector of the same items, and the events beside the ones that are due. There are few items, so that
// the same one often stands in it more than once; one of them is null.
class CollectionModel final : public TableWalker<CollectionModel>
{
public:
    explicit CollectionModel(check::Trial& trial)
        : trial_(trial),
          handler_(MakeRef<check::RecordingHandler>()),
          collection_(check::MakeCollection(trial))
    {
        collection_->SubscribeItemAdded(handler_.Get(), 1, true);
        collection_->SubscribeItemRemoved(handler_.Get(), 2, true);
        collection_->SubscribeItemMoved(handler_.Get(), 3, true);
        collection_->SubscribeUpdated(handler_.Get(), 4, true);
    }

    void Add(const Step& step)
    {
        const auto item = ObjectPool::Choose(step.first);
        Gives("Add", collection_->Add(items_.Get(item)), TVX_OK);
        model_.push_back(item);
        Fires("ItemAdded", item);
    }

    void Insert(const Step& step)
    {
        const auto item = ObjectPool::Choose(step.first);
        const auto index = ChooseIndex(step.second);
        Gives("Insert", collection_->Insert(index, items_.Get(item)), TVX_OK);
        InsertIntoModel(std::min<std::size_t>(index, model_.size()), item);
        Fires("ItemAdded", item);
    }

    void RemoveAt(const Step& step)
    {
        const auto index = ChooseIndex(step.first);
        if (index >= model_.size())
        {
            trial_.Reports("RemoveAt behind the end", "TVX_CHECK_PRECOND", TVX_E_PRECONDITION,
                           [&] { return collection_->RemoveAt(index); });
            return;
        }
        Gives("RemoveAt", collection_->RemoveAt(index), TVX_OK);
        Fires("ItemRemoved", TakeFromModel(index));
    }

    void RemoveLast(const Step&)
    {
        if (model_.empty())
        {
            trial_.Reports("RemoveLast of an empty collection", "TVX_RETURN_FAIL_IF", TVX_E_FAIL,
                           [&] { return collection_->RemoveLast(); });
            return;
        }
        Gives("RemoveLast", collection_->RemoveLast(), TVX_OK);
        Fires("ItemRemoved", TakeFromModel(model_.size() - 1));
    }

    void Move(const Step& step)
    {
        const auto from = ChooseIndex(step.first);
        const auto to = ChooseIndex(step.second);
        if (from >= model_.size())
        {
            trial_.Reports("Move from behind the end", "TVX_CHECK_PRECOND", TVX_E_PRECONDITION,
                           [&] { return collection_->Move(from, to); });
            return;
        }
        Gives("Move", collection_->Move(from, to), TVX_OK);
        MoveInModel(from, std::min<std::size_t>(to, model_.size()));
    }

    void MoveBefore(const Step& step)
    {
        const auto from = Find(ObjectPool::Choose(step.first));
        const auto before = Find(ObjectPool::Choose(step.second));
        if (from == model_.size() || before == model_.size())
            return;
        Gives("MoveBefore", collection_->MoveBefore(items_.Get(model_[from]), items_.Get(model_[before])), TVX_OK);
        MoveInModel(from, before);
    }

    void Remove(const Step& step)
    {
        const auto index = Find(ObjectPool::Choose(step.first));
        if (index == model_.size())
            return;
        Gives("Remove", collection_->Remove(items_.Get(model_[index])), TVX_OK);
        Fires("ItemRemoved", TakeFromModel(index));
    }

    void AskForItem(const Step& step)
    {
        const auto item = ObjectPool::Choose(step.first);
        bool contained = true;
        Gives("Contains", collection_->Contains(items_.Get(item), &contained), TVX_OK);
        trial_.Equal("the answer of Contains", contained, Find(item) < model_.size());
        if (item == 0)
            return;
        std::uint32_t index = 0;
        const bool present = Find(item) < model_.size();
        Gives("IndexOf", collection_->IndexOf(items_.Get(item), &index), present ? TVX_OK : TVX_E_FAIL);
        trial_.Equal("the index of IndexOf", index, present ? static_cast<std::uint32_t>(Find(item)) : 0xFFFFFFFFu);
    }

    void SetEventsEnabled(const Step& step)
    {
        events_ = step.first % 4 != 0;
        Gives("SetEventsEnabled", collection_->SetEventsEnabled(events_), TVX_OK);
    }

    void NotifyUpdated(const Step& step)
    {
        const auto item = ObjectPool::Choose(step.first);
        const bool present = Find(item) < model_.size();
        Gives("NotifyUpdated", collection_->NotifyUpdated(items_.Get(item)), present ? TVX_OK : TVX_E_FAIL);
        if (present)
            due_.push_back(Describe("Updated", item));
    }

    // Seldom, or every walk would end with a short collection.
    void Clear(const Step& step)
    {
        if (step.first % 16 != 0)
            return;
        Gives("Clear", collection_->Clear(), TVX_OK);
        while (!model_.empty())
            Fires("ItemRemoved", TakeFromModel(model_.size() - 1));
    }

    void Compare() override
    {
        trial_.Equal("GetCount", collection_->GetCount(), static_cast<std::uint32_t>(model_.size()));
        for (std::uint32_t index = 0; index < model_.size(); ++index)
        {
            Ref<IObject> item;
            Gives("GetItem", collection_->GetItem(index, item.Receive()), TVX_OK);
            trial_.Same("the item " + std::to_string(index), item.Get(), items_.Get(model_[index]));
        }
        items_.Compare(trial_, [&](std::size_t item) { return std::count(model_.begin(), model_.end(), item); });
        CompareEvents();
    }

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
    };

private:
    void Gives(const char* what, Result came, Result expected) { trial_.Gives(what, came, expected); }

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

    void InsertIntoModel(std::size_t index, std::size_t item)
    {
        model_.insert(model_.begin() + static_cast<std::ptrdiff_t>(index), item);
    }

    std::size_t TakeFromModel(std::size_t index)
    {
        const auto item = model_[index];
        model_.erase(model_.begin() + static_cast<std::ptrdiff_t>(index));
        return item;
    }

    // In front of what stood at the place before.
    void MoveInModel(std::size_t from, std::size_t to)
    {
        if (from == to)
            return;
        const auto item = TakeFromModel(from);
        InsertIntoModel(to > from ? to - 1 : to, item);
        Fires("ItemMoved", item);
    }

    static std::string Describe(const std::string& event, std::size_t item)
    {
        return event + " " + std::to_string(item);
    }

    void Fires(const char* event, std::size_t item)
    {
        if (!events_)
            return;
        due_.push_back(Describe(event, item));
        due_.push_back(Describe("Updated", item));
    }

    std::string Describe(const check::SeenEvent& event) const
    {
        return Describe(event.eventName, items_.Find(reinterpret_cast<const IObject*>(event.param)));
    }

    void CompareEvents()
    {
        std::vector<std::string> came;
        for (const auto& event : handler_->events)
            came.push_back(Describe(event));
        trial_.Equal("the events since the last comparison", came, due_);
        handler_->events.clear();
        due_.clear();
    }

    check::Trial& trial_;
    ObjectPool items_;
    Ref<check::RecordingHandler> handler_;
    Ref<ICollection2> collection_;
    std::vector<std::size_t> model_;
    std::vector<std::string> due_;
    bool events_ = true;
};

constexpr auto Names = GetNames(CollectionModel::Operations);

}  // namespace

const Walk CollectionWalk = {"collection", check::CollectionExport, Names, &CollectionModel::Start};

}  // namespace tvx::fuzz
