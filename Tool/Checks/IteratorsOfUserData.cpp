// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/UserDataBench.h"

namespace tvx::check
{

namespace
{

using Names = std::vector<std::string>;

void WalksTheNamesInByteOrder(Trial& trial)
{
    const auto object = MakeRef<BareObject>();
    const auto container = MakeUserDataContainer(trial);
    for (const char* const name : {"b", "\xFF", "ab", "a", "A", "", "a\\b"})
        Attach(trial, *container, name, object.Get());
    const Names expected = {"", "A", "a", "a\\b", "ab", "b", "\xFF"};
    trial.Equal("the names in the iterator's order", GetUserDataNames(trial, *container), expected);
}

void StandsAtTheEndOfNothing(Trial& trial)
{
    const auto container = MakeUserDataContainer(trial);
    const auto iterator = MakeUserDataIterator(trial, *container);
    trial.Equal("IsEnd without user data", iterator->IsEnd(), true);
    trial.Same("GetKey at the end", iterator->GetKey(), nullptr);
}

void GivesEachObject(Trial& trial)
{
    const auto first = MakeRef<BareObject>();
    const auto second = MakeRef<BareObject>();
    const auto container = MakeUserDataContainer(trial);
    Attach(trial, *container, "a", first.Get());
    Attach(trial, *container, "b", second.Get());
    const auto iterator = MakeUserDataIterator(trial, *container);
    for (const auto& object : {first, second})
    {
        trial.Equal("IsEnd on an entry", iterator->IsEnd(), false);
        const auto before = object->GetRefCount();
        Ref<IObjectBase> out;
        trial.Gives("GetObject", iterator->GetObject(out.Receive()), TVX_OK);
        trial.Same("the object of an entry", out.Get(), object.Get());
        trial.Equal("the references after GetObject", object->GetRefCount(), before + 1);
        trial.Gives("Next of a user-data iterator before the end", iterator->Next(), TVX_OK);
    }
    trial.Equal("IsEnd behind the last entry", iterator->IsEnd(), true);
}

void RefusesANullOutForTheObject(Trial& trial)
{
    const auto object = MakeRef<BareObject>();
    const auto container = MakeUserDataContainer(trial);
    Attach(trial, *container, "a", object.Get());
    const auto iterator = MakeUserDataIterator(trial, *container);
    trial.Gives("GetObject with a null out", iterator->GetObject(nullptr), TVX_E_POINTER);
    HasContainerReferences(trial, "an object that nobody received", *object, 1);
}

void RefusesANullOutForTheIterator(Trial& trial)
{
    const auto container = MakeUserDataContainer(trial);
    trial.Gives("CreateUserDataIterator with a null out", container->CreateUserDataIterator(nullptr), TVX_E_POINTER);
}

void ComesInAHolder(Trial& trial)
{
    const auto object = MakeRef<BareObject>();
    const auto container = MakeUserDataContainer(trial);
    Attach(trial, *container, "name", object.Get());
    const auto iterator = container->GetUserDataIterator();
    trial.Expect(static_cast<bool>(iterator), "GetUserDataIterator to give an iterator", "null");
    trial.Equal("the references on an iterator in its holder", iterator->GetRefCount(), 1u);
    trial.Equal("GetKey on the first entry", iterator->GetKey(), "name");
}

void HoldsNothing(Trial& trial)
{
    const auto object = MakeRef<BareObject>();
    const auto container = MakeUserDataContainer(trial);
    Attach(trial, *container, "name", object.Get());
    const auto before = container->GetRefCount();
    const auto iterator = MakeUserDataIterator(trial, *container);
    trial.Equal("IsUnique of a new iterator", iterator->IsUnique(), true);
    trial.Equal("the references on a map that is walked", container->GetRefCount(), before);
    HasContainerReferences(trial, "an object that is walked over", *object, 1);
    const auto second = iterator;
    trial.Equal("IsUnique of an iterator with two references", iterator->IsUnique(), false);
    trial.Equal("the references on an iterator with two", iterator->GetRefCount(), 2u);
}

void WalksAlone(Trial& trial)
{
    const auto object = MakeRef<BareObject>();
    const auto container = MakeUserDataContainer(trial);
    Attach(trial, *container, "a", object.Get());
    Attach(trial, *container, "b", object.Get());
    const auto moved = MakeUserDataIterator(trial, *container);
    const auto resting = MakeUserDataIterator(trial, *container);
    trial.Gives("Next", moved->Next(), TVX_OK);
    trial.Equal("GetKey of the iterator that was moved", moved->GetKey(), "b");
    trial.Equal("GetKey of another iterator", resting->GetKey(), "a");
}

constexpr Check Checks[] = {
    {"value-user-data-iterator-goes-by-name", "User data with seven names is walked.",
     "The iterator visits every entry once, in the order of the bytes of the names, the shorter of two first.",
     WalksTheNamesInByteOrder},
    {"value-user-data-iterator-of-nothing-is-at-its-end", "A map without user data is walked.",
     "Without user data the iterator is at the end at once, where its key is null.", StandsAtTheEndOfNothing},
    {"value-user-data-iterator-gives-each-object", "The objects of two entries are read in a walk.",
     "GetObject gives 0 and the entry's object with one reference for the caller; Next gives 0, also behind the last.",
     GivesEachObject},
    {"value-user-data-iterator-refuses-null-out", "GetObject is called with a null out on an entry.",
     "On an entry a null out gives -4 without a report.", RefusesANullOutForTheObject},
    {"value-user-data-iterator-creation-refuses-null-out", "CreateUserDataIterator is called with a null out.",
     "A null out gives -4 without a report.", RefusesANullOutForTheIterator},
    {"value-user-data-iterator-comes-in-a-holder", "GetUserDataIterator is asked for an iterator.",
     "GetUserDataIterator gives a counted holder of a new iterator, with the one reference on it.", ComesInAHolder},
    {"value-user-data-iterator-holds-nothing", "An iterator is made, and its references are counted.",
     "An iterator counts its own references but holds none on the map or its objects: it must not keep them alive.",
     HoldsNothing},
    {"value-user-data-iterator-walks-alone", "One of two iterators of a map is moved.",
     "Each iterator has a place of its own.", WalksAlone},
};

}  // namespace

extern const Family IteratorsOfUserDataFamily = {"values", SimpleMapExport, Needs::Module, Checks};

}  // namespace tvx::check
