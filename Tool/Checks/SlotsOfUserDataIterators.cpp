// SPDX-License-Identifier: MIT
#include "Interfaces/IUserDataContainer.h"
#include "Tool/Checks/Check.h"
#include "Tool/Checks/SlotChecking.h"

namespace tvx::check
{

namespace
{

// An iterator over an object under each name, with its container, which it must not outlive.
struct Walk
{
    explicit Walk(Trial& trial, const Texts& names = {"name"})
        : container(trial.QueryAs<IUserDataContainer>(MakeSimpleMap(trial), "a settings map"))
    {
        for (const auto& name : names)
            Need(trial, "SetUserData", container->SetUserData(name.c_str(), object.Get()) == TVX_OK);
        Need(trial, "SetUserData", object->GetRefCount() == names.size() + 1);
        const Result result = container->CreateUserDataIterator(iterator.Receive());
        Need(trial, "CreateUserDataIterator", result == TVX_OK && iterator && !Query<IObject>(iterator));
        c = ToC<IUserDataIterator>(iterator);
    }

    Ref<BareObject> object = MakeRef<BareObject>();
    Ref<IUserDataContainer> container;
    Ref<IUserDataIterator> iterator;
    void* c = nullptr;
};

void Next(Trial& trial)
{
    const Walk walk(trial, {"first", "second", "third"});
    trial.Gives("Next by its number", CallIUserDataIteratorNext(walk.c), TVX_OK);
    trial.Equal("the name after Next by its number", walk.iterator->GetKey(), "second");
    trial.Gives("Next by its name", walk.iterator->Next(), TVX_OK);
    trial.Equal("the name after Next by its name", walk.iterator->GetKey(), "third");
}

void IsEnd(Trial& trial)
{
    for (const auto& names : {Texts{"name"}, Texts{}})
    {
        const Walk walk(trial, names);
        trial.Equal("IsEnd by its number of " + Show(names.size()) + " names", CallIUserDataIteratorIsEnd(walk.c),
                    names.empty());
        trial.Equal("IsEnd by its name of " + Show(names.size()) + " names", walk.iterator->IsEnd(), names.empty());
    }
}

void GetKey(Trial& trial)
{
    const Walk walk(trial);
    ExpectText(trial, "GetKey by its number", CallIUserDataIteratorGetKey(walk.c), "name");
    trial.Equal("GetKey by its name", walk.iterator->GetKey(), "name");
}

void GetObject(Trial& trial)
{
    const Walk walk(trial);
    const auto numbered =
        TakeObject<IObjectBase>(trial, "GetObject by its number", TVX_OK,
                                [&](void** out) { return CallIUserDataIteratorGetObject(walk.c, out); });
    trial.Same("the object that slot 10 gives", numbered.Get(), walk.object.Get());
    Ref<IObjectBase> named;
    trial.Gives("GetObject by its name", walk.iterator->GetObject(named.Receive()), TVX_OK);
    trial.Same("the object that GetObject gives", named.Get(), walk.object.Get());
}

void OfObjectBase(Trial& trial)
{
    CheckBaseSlots(trial, *Walk(trial).iterator, "an iterator of user data");
}

constexpr Check Checks[] = {
    {"slot-user-data-iterator-7-next", "Next is called by its number.",
     "Slot 7 of IUserDataIterator is Next: it moves to the name that follows.", Next},
    {"slot-user-data-iterator-8-is-end", "IsEnd is called by its number.",
     "Slot 8 of IUserDataIterator is IsEnd: it gives, as its result, whether the iterator is at the end.", IsEnd},
    {"slot-user-data-iterator-9-get-key", "GetKey is called by its number.",
     "Slot 9 of IUserDataIterator is GetKey: it gives the current name.", GetKey},
    {"slot-user-data-iterator-10-get-object", "GetObject is called by its number.",
     "Slot 10 of IUserDataIterator is GetObject: it gives the current object by its out.", GetObject},
    {"slot-user-data-iterator-1-to-6-object-base", "The operations of IObjectBase are called by their numbers.",
     "Slots 1 to 6 of IUserDataIterator are those of IObjectBase.", OfObjectBase},
};

}  // namespace

extern const Family SlotsOfUserDataIteratorFamily = {"slots", SimpleMapExport, Needs::Module, Checks};

}  // namespace tvx::check
