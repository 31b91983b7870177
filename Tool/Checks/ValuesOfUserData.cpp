// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/UserDataBench.h"

namespace tvx::check
{

namespace
{

void GivesBackWhatWasAttached(Trial& trial)
{
    const auto object = MakeRef<ProbeObject>();
    const auto container = MakeUserDataContainer(trial);
    Attach(trial, *container, "name", object.Get());
    HasContainerReferences(trial, "an object that was attached", *object, 1);
    FindsUserData(trial, *container, "name", object.Get());
    HasContainerReferences(trial, "an object that was looked up and released again", *object, 1);
}

void TakesObjectsOfAnyKind(Trial& trial)
{
    const auto object = MakeRef<BareObject>();
    const auto container = MakeUserDataContainer(trial);
    Attach(trial, *container, "name", object.Get());
    FindsUserData(trial, *container, "name", object.Get());
}

void GivesTheSameByTheSecondForm(Trial& trial)
{
    const auto object = MakeRef<BareObject>();
    const auto container = MakeUserDataContainer(trial);
    Attach(trial, *container, "name", object.Get());
    const IObjectBase* out = nullptr;
    trial.Gives("the second GetUserData of a name", container->GetUserData("name", &out), TVX_S_VALUE);
    trial.Same("the out of the second GetUserData", out, object.Get());
    trial.Equal("the references after the second GetUserData", object->GetRefCount(), 3u);
    const auto owned = Ref<IObjectBase>::Adopt(object.Get());
    trial.Gives("the second GetUserData of an absent name", container->GetUserData("absent", &out), TVX_S_NOKEY);
    trial.Same("the out of the second GetUserData of an absent name", out, nullptr);
}

void TellsNamesApartByEveryByte(Trial& trial)
{
    const auto object = MakeRef<BareObject>();
    const auto container = MakeUserDataContainer(trial);
    Attach(trial, *container, "name", object.Get());
    for (const char* const absent : {"", "nam", "names", "NAME", "name "})
        MissesUserData(trial, *container, absent);
}

void TakesANullNameAsAbsent(Trial& trial)
{
    const auto object = MakeRef<BareObject>();
    const auto container = MakeUserDataContainer(trial);
    Attach(trial, *container, "", object.Get());
    FindsUserData(trial, *container, "", object.Get());
    MissesUserData(trial, *container, nullptr);
    const IObjectBase* out = object.Get();
    trial.Gives("the second GetUserData of a null name", container->GetUserData(nullptr, &out), TVX_S_NOKEY);
    trial.Same("the out of the second GetUserData of a null name", out, nullptr);
}

void CopiesItsNames(Trial& trial)
{
    const auto object = MakeRef<BareObject>();
    const auto container = MakeUserDataContainer(trial);
    std::string name = "name";
    Attach(trial, *container, name.c_str(), object.Get());
    name = "eman";
    FindsUserData(trial, *container, "name", object.Get());
    MissesUserData(trial, *container, "eman");
}

void IsNoPartOfTheEntries(Trial& trial)
{
    const auto object = MakeRef<BareObject>();
    const auto map = MakeSimpleMap(trial);
    const auto container = trial.QueryAs<IUserDataContainer>(map, "a settings map");
    Attach(trial, *container, "name", object.Get());
    bool present = true;
    trial.Gives("HasKey", map->HasKey("name", &present), TVX_OK);
    trial.Equal("HasKey of a name of user data", present, false);
    trial.Gives("SetString", map->SetString("key", "text"), TVX_OK);
    MissesUserData(trial, *container, "key");
}

void IsLeftOutOfAClone(Trial& trial)
{
    const auto object = MakeRef<BareObject>();
    const auto map = MakeSimpleMap(trial);
    Attach(trial, *trial.QueryAs<IUserDataContainer>(map, "a settings map"), "name", object.Get());
    const auto clone = Make<ISimpleMap>(trial, "Clone", [&](ISimpleMap** out) { return map->Clone(out); });
    MissesUserData(trial, *trial.QueryAs<IUserDataContainer>(clone, "a clone"), "name");
    HasContainerReferences(trial, "an object of a cloned map", *object, 1);
}

constexpr Check Checks[] = {
    {"value-user-data-gives-back-what-was-attached", "An object is attached under a name and looked up.",
     "The map holds one reference on the object; a lookup gives 102, the very object and one reference for the caller.",
     GivesBackWhatWasAttached},
    {"value-user-data-takes-any-object", "An object that answers nothing but IObjectBase is attached.",
     "User data is any object: it is kept as it is given, whatever interfaces it has.", TakesObjectsOfAnyKind},
    {"value-user-data-second-form-is-alike", "A present and an absent name are looked up by the second GetUserData.",
     "Both forms of GetUserData give the same codes, objects and references.", GivesTheSameByTheSecondForm},
    {"value-user-data-absent-name-empties-out", "Names near to one that is present are looked up.",
     "Names are compared byte by byte; an absent one gives 101, which is no failure, and writes null to out.",
     TellsNamesApartByEveryByte},
    {"value-user-data-null-name-is-absent", "A null name is looked up while the empty name is present.",
     "The lookup of a null name gives 101 and a null out without a report; the empty name is a name like any other.",
     TakesANullNameAsAbsent},
    {"value-user-data-copies-its-names", "The text of a name is overwritten after SetUserData.",
     "The map owns a copy of each name: the caller's text is only borrowed for the call.", CopiesItsNames},
    {"value-user-data-is-no-entry", "A map is given user data and an entry.",
     "User data and entries are kept apart: the keys of one are not found in the other.", IsNoPartOfTheEntries},
    {"value-user-data-is-not-cloned", "A map with user data is cloned.",
     "A clone has the entries of its map but none of its user data, and takes no reference on it.", IsLeftOutOfAClone},
};

}  // namespace

extern const Family ValuesOfUserDataFamily = {"values", SimpleMapExport, Needs::Module, Checks};

}  // namespace tvx::check
