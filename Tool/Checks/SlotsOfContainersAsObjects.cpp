// SPDX-License-Identifier: MIT
#include "Interfaces/IUserDataContainer.h"
#include "Tool/Checks/Check.h"
#include "Tool/Checks/SlotsOfObjects.h"

// The ten slots that each container begins with.
namespace tvx::check
{

namespace
{

Ref<IObject> MakeSimpleMapObject(Trial& trial)
{
    return MakeSimpleMap(trial);
}

// A settings map by its second table that begins with the ten.
Ref<IObject> MakeUserDataObject(Trial& trial)
{
    return trial.QueryAs<IUserDataContainer>(MakeSimpleMap(trial), "a settings map");
}

Ref<IObject> MakeMapObject(Trial& trial)
{
    return MakeMap(trial);
}

Ref<IObject> MakeCollectionObject(Trial& trial)
{
    return MakeCollection(trial);
}

Ref<IObject> MakeVariantArrayObject(Trial& trial)
{
    return MakeVariantArray(trial);
}

}  // namespace

extern const Family SlotsOfSettingsMapAsObjectFamily = {"slots", SimpleMapExport, Needs::Module,
                                                        ObjectSlots<"settings-map", MakeSimpleMapObject>};
extern const Family SlotsOfUserDataAsObjectFamily = {"slots", SimpleMapExport, Needs::Module,
                                                     ObjectSlots<"user-data", MakeUserDataObject>};
extern const Family SlotsOfMapAsObjectFamily = {"slots", MapExport, Needs::Module, ObjectSlots<"map", MakeMapObject>};
extern const Family SlotsOfCollectionAsObjectFamily = {"slots", CollectionExport, Needs::Module,
                                                       ObjectSlots<"collection", MakeCollectionObject>};
extern const Family SlotsOfVariantArrayAsObjectFamily = {"slots", VariantArrayExport, Needs::Module,
                                                         ObjectSlots<"variant-array", MakeVariantArrayObject>};

}  // namespace tvx::check
