// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/SlotChecking.h"

namespace tvx::check
{

namespace
{

// The import "Serializer" of the settings map factory, which is there as long as this lives, and what else is of use here.
class Import
{
public:
    explicit Import(Trial& trial) : imports(trial.Get<IImportsContainer>(SimpleMapExport))
    {
        const Result result = imports->SetImport("Serializer", object.Get());
        Need(trial, "SetImport", result == TVX_OK && object->GetRefCount() == 2);
    }
    ~Import() { static_cast<void>(imports->ClearImports()); }

    Import(const Import&) = delete;
    Import& operator=(const Import&) = delete;

    const Ref<BareObject> object = MakeRef<BareObject>();
    const Ref<IImportsContainer> imports;
    void* const c = ToC<IImportsContainer>(imports);
};

void SetImport(Trial& trial)
{
    const auto imports = trial.Get<IImportsContainer>(SimpleMapExport);
    void* const c = ToC<IImportsContainer>(imports);
    const auto object = MakeRef<BareObject>();
    trial.Gives("SetImport by its number", CallIImportsContainerSetImport(c, "Serializer", ToC<IObjectBase>(object)),
                TVX_OK);
    trial.Equal("the references on the import", object->GetRefCount(), 2u);
    trial.Gives("SetImport of null", CallIImportsContainerSetImport(c, "Serializer", nullptr), TVX_OK);
    trial.Equal("the references on the import that null replaced", object->GetRefCount(), 1u);
    trial.Gives("SetImport by its name", imports->SetImport("Serializer", object.Get()), TVX_OK);
    trial.Equal("the references on the import set by name", object->GetRefCount(), 2u);
    Need(trial, "ClearImports", imports->ClearImports() == TVX_OK);
}

void OnImportsSet(Trial& trial)
{
    const Import import(trial);
    trial.Gives("OnImportsSet by its number", CallIImportsContainerOnImportsSet(import.c), TVX_OK);
    trial.Gives("OnImportsSet by its name", import.imports->OnImportsSet(), TVX_OK);
    trial.Equal("the references on the import", import.object->GetRefCount(), 2u);
}

void OnImportsHook(Trial& trial)
{
    const Import import(trial);
    trial.Gives("OnImportsHook by its number", CallIImportsContainerOnImportsHook(import.c), TVX_OK);
    trial.Gives("OnImportsHook by its name", import.imports->OnImportsHook(), TVX_OK);
    trial.Equal("the references on the import", import.object->GetRefCount(), 2u);
}

void ClearImports(Trial& trial)
{
    const Import import(trial);
    trial.Gives("ClearImports by its number", CallIImportsContainerClearImports(import.c), TVX_OK);
    trial.Equal("the references on the import that was there", import.object->GetRefCount(), 1u);
}

constexpr Check Checks[] = {
    {"slot-settings-map-imports-11-set-import", "SetImport is called by its number.",
     "Slot 11 of IImportsContainer is SetImport: it keeps one reference on the object in place of the one before.",
     SetImport},
    {"slot-settings-map-imports-12-on-imports-set", "OnImportsSet is called by its number.",
     "Slot 12 of IImportsContainer is OnImportsSet: it gives 0 and leaves the imports alone.", OnImportsSet},
    {"slot-settings-map-imports-13-on-imports-hook", "OnImportsHook is called by its number.",
     "Slot 13 of IImportsContainer is OnImportsHook: it gives 0 and leaves the imports alone.", OnImportsHook},
    {"slot-settings-map-imports-14-clear-imports", "ClearImports is called by its number.",
     "Slot 14 of IImportsContainer is ClearImports: it releases every import.", ClearImports},
};

}  // namespace

extern const Family SlotsOfSettingsMapImportFamily = {"slots", SimpleMapExport, Needs::Module, Checks};

}  // namespace tvx::check
