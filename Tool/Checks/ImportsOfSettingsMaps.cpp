// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/MapImportBench.h"

namespace tvx::check
{

namespace
{

void HoldsImports(Trial& trial)
{
    const auto object = MakeRef<BareObject>();
    const auto container = GetMapImports(trial);
    ImportToMaps(trial, *container, SerializerImport, object.Get());
    HasImportReferences(trial, "an import", *object, 1);
    ImportToMaps(trial, *container, SerializerImport, object.Get());
    HasImportReferences(trial, "an import that was set twice", *object, 1);
    ClearMapImports(trial, *container);
}

void ReleasesAReplacedImport(Trial& trial)
{
    const auto first = MakeRef<BareObject>();
    const auto second = MakeRef<BareObject>();
    const auto container = GetMapImports(trial);
    ImportToMaps(trial, *container, SerializerImport, first.Get());
    ImportToMaps(trial, *container, SerializerImport, second.Get());
    HasImportReferences(trial, "a replaced import", *first, 0);
    HasImportReferences(trial, "the import in its place", *second, 1);
    ImportToMaps(trial, *container, SerializerImport, nullptr);
    HasImportReferences(trial, "an import that null replaced", *second, 0);
    ClearMapImports(trial, *container);
}

void KeepsNamesApart(Trial& trial)
{
    const auto object = MakeRef<BareObject>();
    const auto other = MakeRef<BareObject>();
    const auto container = GetMapImports(trial);
    std::string name = "Serializer";
    ImportToMaps(trial, *container, name.c_str(), object.Get());
    name = "serializer";
    ImportToMaps(trial, *container, name.c_str(), other.Get());
    ImportToMaps(trial, *container, "", other.Get());
    HasImportReferences(trial, "an import under one name", *object, 1);
    HasImportReferences(trial, "an import under two names", *other, 2);
    ClearMapImports(trial, *container);
}

void ClearsImports(Trial& trial)
{
    const auto object = MakeRef<BareObject>();
    const auto container = GetMapImports(trial);
    ImportToMaps(trial, *container, SerializerImport, object.Get());
    ImportToMaps(trial, *container, "Other", object.Get());
    ImportToMaps(trial, *container, "Null", nullptr);
    ClearMapImports(trial, *container);
    HasImportReferences(trial, "a cleared import", *object, 0);
    ClearMapImports(trial, *container);
}

void TakesNotifications(Trial& trial)
{
    const auto proxy = MakeRef<ImportProxy>(nullptr);
    const auto container = GetMapImports(trial);
    ImportToMaps(trial, *container, SerializerImport, proxy.Get());
    trial.Gives("OnImportsSet", container->OnImportsSet(), TVX_OK);
    trial.Gives("OnImportsHook", container->OnImportsHook(), TVX_OK);
    trial.Equal("the calls of a proxy that nobody needed yet", proxy->calls, 0);
    ClearMapImports(trial, *container);
}

void LeavesNoReferencesOfLookups(Trial& trial)
{
    const auto object = MakeRef<BareObject>();
    const auto proxy = MakeRef<ImportProxy>(object);
    const auto container = GetMapImports(trial);
    ImportToMaps(trial, *container, SerializerImport, proxy.Get());
    static_cast<void>(LookUpSerializer(trial));
    HasImportReferences(trial, "a proxy that was looked up", *proxy, 1);
    trial.Equal("the references on the object of a proxy", object->GetRefCount(), 2u);
    trial.Equal("the calls of the proxy", proxy->calls, 1);
    ClearMapImports(trial, *container);
}

constexpr Check Checks[] = {
    {"value-imports-are-held", "An import is set twice.",
     "SetImport gives 0 and holds the object, whatever its kind, by one reference under its name.", HoldsImports},
    {"value-imports-release-the-replaced", "Imports are set under one name, the last of them null.",
     "A new object, or null, takes the place of the import before, which is released.", ReleasesAReplacedImport},
    {"value-imports-keep-names-apart", "Imports are set under names that differ in case, and the empty one.",
     "Names are copied and compared byte by byte; any name is taken.", KeepsNamesApart},
    {"value-imports-are-cleared", "ClearImports is called twice.", "ClearImports gives 0 and releases every import.",
     ClearsImports},
    {"value-imports-notifications-do-nothing", "OnImportsSet and OnImportsHook are called on the settings map factory.",
     "Both give 0 without a line: the factory fetches nothing before it is needed.", TakesNotifications},
    {"value-imports-lookup-leaves-no-references", "A map asks for its serializer; the references are counted.",
     "A lookup asks the proxy once, and releases the proxy and its object afterwards.", LeavesNoReferencesOfLookups},
};

}  // namespace

extern const Family ImportsOfSettingsMapFamily = {"values", SimpleMapExport, Needs::Module, Checks};

}  // namespace tvx::check
