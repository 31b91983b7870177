// SPDX-License-Identifier: MIT
#include "Interfaces/IUserDataContainer.h"
#include "Tool/Checks/Objects.h"
#include "Tool/Checks/Serialising.h"
#include "Tool/Fuzz/AnyObject.h"
#include "Tool/Fuzz/ObjectPool.h"
#include "Tool/Fuzz/Refusals.h"
#include "Tool/Fuzz/TableWalker.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <string>
#include <utility>

namespace tvx::fuzz
{

namespace
{

constexpr const char* Names[] = {"", "b", "a", "ab", "B", "\xFF"};

const char* ChooseName(std::uint32_t number)
{
    return Names[number % std::size(Names)];
}

// What refused calls are made with: the iterator is at the end.
struct Subject
{
    Ref<IUserDataContainer> container;
    Ref<IUserDataIterator> ended;
    const char* name;
    IObjectBase* object;

    struct Outs
    {
        IObjectBase* object;
        void* face;

        bool operator==(const Outs&) const = default;
    };
    Outs outs = {object, object};
};

constexpr Refusal<Subject> Refusals[] = {
    {"SetUserData of a null name", NullPointer, TVX_E_POINTER,
     [](Subject& it) { return it.container->SetUserData(nullptr, it.object); }},
    {"SetUserData of a null name and a null object", NullPointer, TVX_E_POINTER,
     [](Subject& it) { return it.container->SetUserData(nullptr, nullptr); }},
    {"GetUserData with a null out", NullPointer, TVX_E_POINTER,
     [](Subject& it) { return it.container->GetUserData(it.name, static_cast<IObjectBase**>(nullptr)); }},
    {"GetUserData of a null name with a null out", NullPointer, TVX_E_POINTER,
     [](Subject& it) { return it.container->GetUserData(nullptr, static_cast<IObjectBase**>(nullptr)); }},
    {"the second GetUserData with a null out", NullPointer, TVX_E_POINTER,
     [](Subject& it) { return it.container->GetUserData(it.name, static_cast<const IObjectBase**>(nullptr)); }},
    {"CreateUserDataIterator with a null out", Silent, TVX_E_POINTER,
     [](Subject& it) { return it.container->CreateUserDataIterator(nullptr); }},
    {"Next at the end", Precondition, TVX_E_PRECONDITION, [](Subject& it) { return it.ended->Next(); }},
    {"GetObject at the end", Precondition, TVX_E_PRECONDITION,
     [](Subject& it) { return it.ended->GetObject(&it.outs.object); }},
    {"GetObject at the end with a null out", Precondition, TVX_E_PRECONDITION,
     [](Subject& it) { return it.ended->GetObject(nullptr); }},
    {"a query of an iterator for IObject", Silent, TVX_E_NOINTERFACE,
     [](Subject& it) { return it.ended->QueryInterface(IObject::Id, &it.outs.face); }},
    {"a query of an iterator for IUserDataContainer", Silent, TVX_E_NOINTERFACE,
     [](Subject& it) { return it.ended->QueryInterface(IUserDataContainer::Id, &it.outs.face); }},
};

// The user data of a settings map beside a map from names to the numbers of objects.
class UserDataModel final : public TableWalker<UserDataModel>
{
public:
    explicit UserDataModel(check::Trial& trial) : trial_(trial) { Begin(); }

    void SetUserData(const Step& step) { Set(ChooseName(step.first), ObjectPool::Choose(step.second)); }

    void GetUserData(const Step& step) { Read(ChooseName(step.first)); }

    void GetUserDataAsConst(const Step& step)
    {
        const auto* const name = ChooseName(step.first);
        const IObjectBase* object = nullptr;
        trial_.Gives("the second GetUserData", container_->GetUserData(name, &object), GetDueResult(name));
        const auto held = Ref<IObjectBase>::Adopt(const_cast<IObjectBase*>(object));
        trial_.Same("the object of the second GetUserData", held.Get(), GetDueObject(name));
    }

    void Iterate(const Step&)
    {
        const auto iterator = MakeIterator();
        for (const auto& [name, object] : model_)
        {
            trial_.Equal("IsEnd on an entry", iterator->IsEnd(), false);
            trial_.Equal("GetKey", iterator->GetKey(), name);
            Ref<IObjectBase> held;
            trial_.Gives("GetObject", iterator->GetObject(held.Receive()), TVX_OK);
            trial_.Same("the object of an entry", held.Get(), Get(object));
            trial_.Gives("Next", iterator->Next(), TVX_OK);
        }
        trial_.Equal("IsEnd behind the last entry", iterator->IsEnd(), true);
    }

    // A clone has no user data, and the entries of the map know nothing of them.
    void Clone(const Step&)
    {
        Ref<ISimpleMap> clone;
        trial_.Gives("Clone", map_->Clone(clone.Receive()), TVX_OK);
        const auto container = trial_.QueryAs<IUserDataContainer>(clone, "a clone");
        Ref<IUserDataIterator> iterator;
        trial_.Gives("CreateUserDataIterator", container->CreateUserDataIterator(iterator.Receive()), TVX_OK);
        trial_.Expect(iterator && iterator->IsEnd(), "a clone to have no user data", "some");
    }

    void ClearUserData(const Step& step)
    {
        if (step.first % 8 != 0)
            return;
        trial_.Gives("ClearUserData", container_->ClearUserData(), TVX_OK);
        model_.clear();
    }

    // Of an object that answers nothing but IObjectBase.
    void SetBareObject(const Step& step) { Set(ChooseName(step.first), Bare); }

    void Refuse(const Step& step)
    {
        const auto ended = MakeIterator();
        for (std::size_t entry = 0; entry < model_.size(); ++entry)
            trial_.Gives("Next", ended->Next(), TVX_OK);
        TryRefused(trial_, Refusals, step.first, Subject{container_, ended, ChooseName(step.second), objects_.Get(1)});
        trial_.Same("GetKey at the end", ended->GetKey(), nullptr);
    }

    // It is absent, also while the empty name is there.
    void GetNullName(const Step&)
    {
        IObjectBase* out = objects_.Get(1);
        trial_.Gives("GetUserData of null", container_->GetUserData(nullptr, &out), TVX_S_NOKEY);
        trial_.Same("the out of GetUserData of null", out, nullptr);
        const IObjectBase* second = objects_.Get(1);
        trial_.Gives("the second GetUserData of null", container_->GetUserData(nullptr, &second), TVX_S_NOKEY);
        trial_.Same("the out of the second GetUserData of null", second, nullptr);
    }

    // The reference on it outlives that of the map, if the object is replaced meanwhile.
    void KeepObject(const Step& step)
    {
        Ref<IObjectBase> object;
        static_cast<void>(container_->GetUserData(ChooseName(step.first), object.Receive()));
        if (object.Get() != bare_.Get())
            objects_.Keep(step.second, std::move(object));
    }

    // An iterator in a holder is one like any other: it holds nothing, and an entry gives nothing to a null out.
    void AskIterator(const Step&)
    {
        const auto iterator = container_->GetUserDataIterator();
        trial_.Expect(static_cast<bool>(iterator), "GetUserDataIterator to give an iterator", "an empty holder");
        CompareCount(trial_, "an iterator", *iterator, 1);
        trial_.Same("the IObjectBase of an iterator", trial_.QueryAs<IObjectBase>(iterator, "an iterator").Get(),
                    iterator.Get());
        trial_.Equal("IsEnd of a new iterator", iterator->IsEnd(), model_.empty());
        if (!model_.empty())
            trial_.Gives("GetObject with a null out", iterator->GetObject(nullptr), TVX_E_POINTER);
        CompareCounts();
    }

    // User data is not written with the map.
    void Serialize(const Step&)
    {
        check::ExpectWritten(trial_, "a map of user data", map_, {"BeginArray Values", "EndArray"});
        const auto copy = check::Copy<ISimpleMap5>(trial_, check::SimpleMapExport, map_);
        const auto container = trial_.QueryAs<IUserDataContainer>(copy, "a copy");
        const auto iterator = container->GetUserDataIterator();
        trial_.Expect(iterator && iterator->IsEnd(), "what was read to have no user data", "some");
    }

    void AskAsObject(const Step& step)
    {
        trial_.Same("the IObject of user data", trial_.QueryAs<IObject>(container_, "user data").Get(), map_.Get());
        fuzz::AskAsObject(trial_, "a map of user data", map_, step.first);
        fuzz::AskAsObject(trial_, "user data", container_, step.second);
    }

    // A map that knows its user data and is gone has released it.
    void End(const Step& step)
    {
        if (step.first % 16 != 0)
            return;
        container_ = nullptr;
        EndBeforeWitnesses(trial_, "a map of user data", map_);
        model_.clear();
        Begin();
    }

    void Compare() override
    {
        for (const auto* const name : Names)
            Read(name);
        CompareCounts();
        trial_.Equal("the number of events that user data fires", handler_->events.size(), std::size_t{0});
    }

    static constexpr Operation<UserDataModel> Operations[] = {
        {"set-user-data", &UserDataModel::SetUserData},
        {"get-user-data", &UserDataModel::GetUserData},
        {"get-user-data-as-const", &UserDataModel::GetUserDataAsConst},
        {"iterate", &UserDataModel::Iterate},
        {"clone", &UserDataModel::Clone},
        {"clear-user-data", &UserDataModel::ClearUserData},
        {"set-bare-object", &UserDataModel::SetBareObject},
        {"refuse", &UserDataModel::Refuse},
        {"get-null-name", &UserDataModel::GetNullName},
        {"keep-object", &UserDataModel::KeepObject},
        {"ask-iterator", &UserDataModel::AskIterator},
        {"serialize", &UserDataModel::Serialize},
        {"ask-as-object", &UserDataModel::AskAsObject},
        {"end", &UserDataModel::End},
    };

private:
    // The number of the object that is no IObject, behind those of the pool.
    static constexpr std::size_t Bare = ObjectPool::Size;

    // A new map out of batch updating mode: user data would be told at once, if it were told.
    void Begin()
    {
        map_ = check::MakeImmediateSimpleMap(trial_);
        map_->SubscribeChanged(handler_.Get(), 0, true);
        map_->SubscribeBatchUpdatingModeChanged(handler_.Get(), 0, true);
        container_ = trial_.QueryAs<IUserDataContainer>(map_, "a settings map");
    }

    IObjectBase* Get(std::size_t object) const
    {
        return object == Bare ? static_cast<IObjectBase*>(bare_.Get()) : objects_.Get(object);
    }

    // Null removes the entry.
    void Set(const char* name, std::size_t object)
    {
        trial_.Gives("SetUserData", container_->SetUserData(name, Get(object)), TVX_OK);
        if (object == 0)
            model_.erase(name);
        else
            model_[name] = object;
    }

    Ref<IUserDataIterator> MakeIterator()
    {
        return check::Make<IUserDataIterator>(trial_, "CreateUserDataIterator",
                                              [&](IUserDataIterator** out)
                                              { return container_->CreateUserDataIterator(out); });
    }

    std::size_t Count(std::size_t object) const
    {
        return static_cast<std::size_t>(
            std::count_if(model_.begin(), model_.end(), [&](const auto& entry) { return entry.second == object; }));
    }

    // Both faces of the map count as one object.
    void CompareCounts()
    {
        objects_.Compare(trial_, [&](std::size_t object) { return Count(object); });
        CompareCount(trial_, "the object that is no IObject", *bare_, 1 + Count(Bare));
        CompareCount(trial_, "a map of user data", *map_, 2);
    }

    Result GetDueResult(const std::string& name) const { return model_.count(name) == 1 ? TVX_S_VALUE : TVX_S_NOKEY; }

    IObjectBase* GetDueObject(const std::string& name) const
    {
        const auto found = model_.find(name);
        return found == model_.end() ? nullptr : Get(found->second);
    }

    void Read(const char* name)
    {
        IObjectBase* out = objects_.Get(1);
        trial_.Gives("GetUserData", container_->GetUserData(name, &out), GetDueResult(name));
        trial_.Same("the object of GetUserData", out, GetDueObject(name));
        static_cast<void>(Ref<IObjectBase>::Adopt(out));
    }

    check::Trial& trial_;
    ObjectPool objects_;
    Ref<check::BareObject> bare_ = MakeRef<check::BareObject>();
    Ref<check::RecordingHandler> handler_ = MakeRef<check::RecordingHandler>();
    Ref<ISimpleMap5> map_;
    Ref<IUserDataContainer> container_;
    std::map<std::string, std::size_t> model_;
};

constexpr auto OperationNames = GetNames(UserDataModel::Operations);

}  // namespace

const Walk UserDataWalk = {"user-data", check::SimpleMapExport, OperationNames, &UserDataModel::Start};

}  // namespace tvx::fuzz
