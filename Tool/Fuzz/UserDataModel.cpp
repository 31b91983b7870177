// SPDX-License-Identifier: MIT
#include "Interfaces/IUserDataContainer.h"
#include "Tool/Checks/Objects.h"
#include "Tool/Fuzz/ObjectPool.h"
#include "Tool/Fuzz/TableWalker.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <string>

namespace tvx::fuzz
{

namespace
{

constexpr const char* Names[] = {"", "b", "a", "ab", "B", "\xFF"};

const char* ChooseName(std::uint32_t number)
{
    return Names[number % std::size(Names)];
}

// The user data of a settings map beside a map from names to the numbers of objects.
class UserDataModel final : public TableWalker<UserDataModel>
{
public:
    explicit UserDataModel(check::Trial& trial)
        : trial_(trial),
          map_(check::MakeSimpleMap(trial)),
          container_(trial.QueryAs<IUserDataContainer>(map_, "a settings map"))
    {
    }

    // Null removes the entry.
    void SetUserData(const Step& step)
    {
        const auto* const name = ChooseName(step.first);
        const auto object = ObjectPool::Choose(step.second);
        trial_.Gives("SetUserData", container_->SetUserData(name, objects_.Get(object)), TVX_OK);
        if (object == 0)
            model_.erase(name);
        else
            model_[name] = object;
    }

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
        Ref<IUserDataIterator> iterator;
        trial_.Gives("CreateUserDataIterator", container_->CreateUserDataIterator(iterator.Receive()), TVX_OK);
        trial_.Expect(static_cast<bool>(iterator), "CreateUserDataIterator to give an iterator", "null");
        for (const auto& [name, object] : model_)
        {
            trial_.Equal("IsEnd on an entry", iterator->IsEnd(), false);
            trial_.Equal("GetKey", iterator->GetKey(), name);
            Ref<IObjectBase> held;
            trial_.Gives("GetObject", iterator->GetObject(held.Receive()), TVX_OK);
            trial_.Same("the object of an entry", held.Get(), static_cast<IObjectBase*>(objects_.Get(object)));
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

    void Compare() override
    {
        for (const auto* const name : Names)
            Read(name);
        objects_.Compare(trial_,
                         [&](std::size_t object) {
                             return std::count_if(model_.begin(), model_.end(),
                                                  [&](const auto& entry) { return entry.second == object; });
                         });
    }

    static constexpr Operation<UserDataModel> Operations[] = {
        {"set-user-data", &UserDataModel::SetUserData},
        {"get-user-data", &UserDataModel::GetUserData},
        {"get-user-data-as-const", &UserDataModel::GetUserDataAsConst},
        {"iterate", &UserDataModel::Iterate},
        {"clone", &UserDataModel::Clone},
        {"clear-user-data", &UserDataModel::ClearUserData},
    };

private:
    Result GetDueResult(const std::string& name) const { return model_.count(name) == 1 ? TVX_S_VALUE : TVX_S_NOKEY; }

    IObjectBase* GetDueObject(const std::string& name) const
    {
        const auto found = model_.find(name);
        return found == model_.end() ? nullptr : objects_.Get(found->second);
    }

    void Read(const char* name)
    {
        Ref<IObjectBase> object;
        trial_.Gives("GetUserData", container_->GetUserData(name, object.Receive()), GetDueResult(name));
        trial_.Same("the object of GetUserData", object.Get(), GetDueObject(name));
    }

    check::Trial& trial_;
    ObjectPool objects_;
    Ref<ISimpleMap5> map_;
    Ref<IUserDataContainer> container_;
    std::map<std::string, std::size_t> model_;
};

constexpr auto OperationNames = GetNames(UserDataModel::Operations);

}  // namespace

const Walk UserDataWalk = {"user-data", check::SimpleMapExport, OperationNames, &UserDataModel::Start};

}  // namespace tvx::fuzz
