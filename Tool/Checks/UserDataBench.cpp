// SPDX-License-Identifier: MIT
#include "Tool/Checks/UserDataBench.h"

namespace tvx::check
{

Ref<IUserDataContainer> MakeUserDataContainer(Trial& trial)
{
    return trial.QueryAs<IUserDataContainer>(MakeSimpleMap(trial), "a settings map");
}

void Attach(Trial& trial, IUserDataContainer& container, const char* name, IObjectBase* object)
{
    trial.Gives("SetUserData of " + Show(name), container.SetUserData(name, object), TVX_OK);
}

void FindsUserData(Trial& trial, IUserDataContainer& container, const char* name, IObjectBase* object)
{
    const auto what = "GetUserData of " + Show(name);
    const auto before = object->GetRefCount();
    IObjectBase* out = nullptr;
    trial.Gives(what, container.GetUserData(name, &out), TVX_S_VALUE);
    trial.Same("the out of " + what, out, object);
    trial.Equal("the references after " + what, object->GetRefCount(), before + 1);
    const auto owned = Ref<IObjectBase>::Adopt(out);
}

void MissesUserData(Trial& trial, IUserDataContainer& container, const char* name)
{
    const auto what = "GetUserData of " + Show(name) + ", which is absent,";
    const auto mark = MakeRef<BareObject>();
    IObjectBase* out = mark.Get();
    trial.Gives(what, container.GetUserData(name, &out), TVX_S_NOKEY);
    trial.Same("the out of " + what, out, nullptr);
}

Ref<IUserDataIterator> MakeUserDataIterator(Trial& trial, IUserDataContainer& container)
{
    return Make<IUserDataIterator>(trial, "CreateUserDataIterator",
                                   [&](IUserDataIterator** out) { return container.CreateUserDataIterator(out); });
}

std::vector<std::string> GetUserDataNames(Trial& trial, IUserDataContainer& container)
{
    constexpr std::size_t limit = 1000;  // no check attaches as many
    const auto iterator = MakeUserDataIterator(trial, container);
    std::vector<std::string> names;
    while (!iterator->IsEnd() && names.size() < limit)
    {
        const char* const name = iterator->GetKey();
        trial.Expect(name != nullptr, "GetKey before the end to give a name", "null");
        names.push_back(name);
        trial.Gives("Next of a user-data iterator before the end", iterator->Next(), TVX_OK);
    }
    return names;
}

void HasContainerReferences(Trial& trial, const std::string& what, IObjectBase& object, std::uint32_t expected)
{
    trial.Equal("the container's references on " + what, object.GetRefCount() - 1, expected);
}

}  // namespace tvx::check
