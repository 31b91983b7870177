// SPDX-License-Identifier: MIT
#include "Interfaces/IUserDataContainer.h"
#include "Tool/Checks/Check.h"
#include "Tool/Checks/SlotChecking.h"

namespace tvx::check
{

namespace
{

Ref<IUserDataContainer> MakeContainer(Trial& trial)
{
    return trial.QueryAs<IUserDataContainer>(MakeSimpleMap(trial), "a settings map");
}

// A container with an object under each name.
struct FilledContainer
{
    explicit FilledContainer(Trial& trial, const Texts& names = {"name"}) : container(MakeContainer(trial))
    {
        for (const auto& name : names)
            Need(trial, "SetUserData", container->SetUserData(name.c_str(), object.Get()) == TVX_OK);
        Need(trial, "SetUserData", object->GetRefCount() == names.size() + 1);
    }

    Ref<BareObject> object = MakeRef<BareObject>();
    Ref<IUserDataContainer> container;
    void* c = ToC<IUserDataContainer>(container);
};

void SetUserData(Trial& trial)
{
    const auto container = MakeContainer(trial);
    const auto object = MakeRef<BareObject>();
    trial.Gives("SetUserData by its number",
                CallIUserDataContainerSetUserData(ToC<IUserDataContainer>(container), "name", ToC<IObjectBase>(object)),
                TVX_OK);
    trial.Equal("the references on the object", object->GetRefCount(), 2u);
    Ref<IObjectBase> found;
    Need(trial, "GetUserData", container->GetUserData("name", found.Receive()) == TVX_S_VALUE);
    trial.Same("the object under the name", found.Get(), object.Get());
}

using GetSlot = int32_t (*)(void* object, const char* name, void** out);

void CheckGet(Trial& trial, GetSlot get)
{
    const FilledContainer empty(trial, {});
    void* absent = empty.c;
    trial.Gives("GetUserData of an absent name", get(empty.c, "name", &absent), TVX_S_NOKEY);
    trial.Same("the out for an absent name", absent, nullptr);
    const FilledContainer filled(trial);
    const auto found = TakeObject<IObjectBase>(trial, "GetUserData by its number", TVX_S_VALUE,
                                               [&](void** out) { return get(filled.c, "name", out); });
    trial.Same("the object that the slot gives", found.Get(), filled.object.Get());
}

void GetUserData(Trial& trial)
{
    CheckGet(trial, &CallIUserDataContainerGetUserData);
}

void GetConstUserData(Trial& trial)
{
    CheckGet(trial, &CallIUserDataContainerGetConstUserData);
}

// The holder comes back through a place that the caller gives.
void GetUserDataIterator(Trial& trial)
{
    const auto container = MakeContainer(trial);
    const auto byNumber = [&](void** holder)
    {
        CallIUserDataContainerGetUserDataIterator(holder, ToC<IUserDataContainer>(container));
        return TVX_OK;
    };
    const auto numbered = TakeIterator<IUserDataIterator>(trial, "GetUserDataIterator by its number", byNumber);
    trial.Equal("the references on the iterator by slot 14", numbered->GetRefCount(), 1u);
    const auto named = container->GetUserDataIterator();
    trial.Expect(static_cast<bool>(named), "GetUserDataIterator by its name to give an iterator", "null");
    trial.Equal("the references on the iterator by its name", named->GetRefCount(), 1u);
}

void CreateUserDataIterator(Trial& trial)
{
    const auto container = MakeContainer(trial);
    void* const c = ToC<IUserDataContainer>(container);
    const auto numbered = TakeIterator<IUserDataIterator>(
        trial, "CreateUserDataIterator by its number",
        [&](void** out) { return CallIUserDataContainerCreateUserDataIterator(c, out); });
    trial.Equal("the references on the iterator by slot 15", numbered->GetRefCount(), 1u);
    const auto named =
        Make<IUserDataIterator>(trial, "CreateUserDataIterator by its name",
                                [&](IUserDataIterator** out) { return container->CreateUserDataIterator(out); });
    trial.Equal("the references on the iterator by its name", named->GetRefCount(), 1u);
}

void ClearUserData(Trial& trial)
{
    const FilledContainer empty(trial, {});
    trial.Gives("ClearUserData of an empty container", CallIUserDataContainerClearUserData(empty.c), TVX_OK);
    const FilledContainer filled(trial, {"first", "second"});
    trial.Gives("ClearUserData by its number", CallIUserDataContainerClearUserData(filled.c), TVX_OK);
    trial.Equal("the references on the object after it", filled.object->GetRefCount(), 1u);
}

constexpr Check Checks[] = {
    {"slot-user-data-11-set-user-data", "SetUserData is called by its number.",
     "Slot 11 of IUserDataContainer is SetUserData: it attaches an object under a name and keeps one reference on it.",
     SetUserData},
    {"slot-user-data-12-get-user-data", "GetUserData is called by its number.",
     "Slot 12 of IUserDataContainer is GetUserData: it gives 102 and the object, or 101 and null.", GetUserData},
    {"slot-user-data-13-get-const-user-data", "The second form of GetUserData is called by its number.",
     "Slot 13 of IUserDataContainer is GetUserData for an object to look at: it gives 102 and the object, or 101 and "
     "null.",
     GetConstUserData},
    {"slot-user-data-14-get-user-data-iterator", "GetUserDataIterator is called by its number.",
     "Slot 14 of IUserDataContainer is GetUserDataIterator: it gives a new iterator in a holder of one pointer, by "
     "value.",
     GetUserDataIterator},
    {"slot-user-data-15-create-user-data-iterator", "CreateUserDataIterator is called by its number.",
     "Slot 15 of IUserDataContainer is CreateUserDataIterator: it gives a new iterator by its out.",
     CreateUserDataIterator},
    {"slot-user-data-16-clear-user-data", "ClearUserData is called by its number.",
     "Slot 16 of IUserDataContainer is ClearUserData: it releases every object.", ClearUserData},
};

}  // namespace

extern const Family SlotsOfUserDataFamily = {"slots", SimpleMapExport, Needs::Module, Checks};

}  // namespace tvx::check
