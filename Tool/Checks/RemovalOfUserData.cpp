// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/UserDataBench.h"

namespace tvx::check
{

namespace
{

using Names = std::vector<std::string>;

void ReleasesAReplacedObjectOnce(Trial& trial)
{
    const auto first = MakeRef<BareObject>();
    const auto second = MakeRef<BareObject>();
    const auto container = MakeUserDataContainer(trial);
    Attach(trial, *container, "name", first.Get());
    Attach(trial, *container, "name", second.Get());
    HasContainerReferences(trial, "a replaced object", *first, 0);
    HasContainerReferences(trial, "the object in its place", *second, 1);
    FindsUserData(trial, *container, "name", second.Get());
}

void KeepsAnObjectThatIsAttachedAgain(Trial& trial)
{
    bool died = false;
    auto owned = MakeRef<ProbeObject>(&died);
    ProbeObject* const object = owned.Get();
    const auto container = MakeUserDataContainer(trial);
    Attach(trial, *container, "name", object);
    owned = nullptr;
    Attach(trial, *container, "name", object);
    trial.Equal("the death of an object that is attached again under its own name", died, false);
    trial.Equal("the references on an object that was attached twice", object->GetRefCount(), 1u);
}

void RemovesByNull(Trial& trial)
{
    const auto object = MakeRef<BareObject>();
    const auto container = MakeUserDataContainer(trial);
    Attach(trial, *container, "name", object.Get());
    Attach(trial, *container, "other", object.Get());
    Attach(trial, *container, "name", nullptr);
    HasContainerReferences(trial, "an object of which one entry was removed", *object, 1);
    MissesUserData(trial, *container, "name");
    trial.Equal("the names after the removal", GetUserDataNames(trial, *container), Names{"other"});
}

void IgnoresTheRemovalOfAnAbsentName(Trial& trial)
{
    const auto object = MakeRef<BareObject>();
    const auto container = MakeUserDataContainer(trial);
    Attach(trial, *container, "name", object.Get());
    Attach(trial, *container, "absent", nullptr);
    MissesUserData(trial, *container, "absent");
    trial.Equal("the names after it", GetUserDataNames(trial, *container), Names{"name"});
    HasContainerReferences(trial, "the other object", *object, 1);
}

void ClearsEverything(Trial& trial)
{
    const auto object = MakeRef<BareObject>();
    const auto container = MakeUserDataContainer(trial);
    Attach(trial, *container, "a", object.Get());
    Attach(trial, *container, "b", object.Get());
    for (const char* const what : {"ClearUserData", "ClearUserData of an empty container"})
    {
        trial.Gives(what, container->ClearUserData(), TVX_OK);
        HasContainerReferences(trial, "an object that was cleared", *object, 0);
        trial.Equal("the names after ClearUserData", GetUserDataNames(trial, *container), Names());
    }
}

void ReleasesEachObjectAtTheMapsDeath(Trial& trial)
{
    const auto object = MakeRef<BareObject>();
    auto container = MakeUserDataContainer(trial);
    Attach(trial, *container, "a", object.Get());
    Attach(trial, *container, "b", object.Get());
    HasContainerReferences(trial, "an object under two names", *object, 2);
    container = nullptr;
    HasContainerReferences(trial, "an object after the map's death", *object, 0);
}

constexpr Check Checks[] = {
    {"value-user-data-replaced-object-is-released-once", "Two objects are attached under one name.",
     "A second object replaces the first one, on which the one reference is released.", ReleasesAReplacedObjectOnce},
    {"value-user-data-object-attached-again-survives", "An object that only the map holds is attached once more.",
     "The new object is taken before the old one is released, so that an object may replace itself.",
     KeepsAnObjectThatIsAttachedAgain},
    {"value-user-data-null-removes", "Null is attached under the name of an object.",
     "Null removes the entry of that name alone and releases its object.", RemovesByNull},
    {"value-user-data-removal-of-absent-name-is-ignored", "Null is attached under a name that is absent.",
     "Removing what is not there gives 0 and changes nothing.", IgnoresTheRemovalOfAnAbsentName},
    {"value-user-data-clear-removes-everything", "ClearUserData is called twice.",
     "ClearUserData gives 0, leaves no entry and releases each object once for each of its names.", ClearsEverything},
    {"value-user-data-dies-with-the-map", "A map with user data is released.",
     "The references on user data are released when the map is destroyed.", ReleasesEachObjectAtTheMapsDeath},
};

}  // namespace

extern const Family RemovalOfUserDataFamily = {"values", SimpleMapExport, Needs::Module, Checks};

}  // namespace tvx::check
