// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/ObjectEntries.h"

namespace tvx::check
{

// Objects in settings maps whose serializer cannot be had.
namespace
{

constexpr const char Import[] = "Serializer";

// Neither operation works without the import: each says why, then reports, and nothing changes.
void ExpectNoSerializer(Trial& trial, ObjectEntries& entries, const char* problem)
{
    const Texts lines = {std::string("LibManager: ") + problem + "\n", "TVX_RETURN_FAIL_IF_NULL"};
    entries.ExpectSetFails(lines, TVX_E_FAIL);
    entries.ExpectGetFails(lines, TVX_E_FAIL);
    trial.Equal("the calls on the factory", entries.serializer.factory->calls, Texts());
}

// What stands as the import in place of the bench's own proxy.
void ImportInstead(Trial& trial, ObjectEntries& entries, IObjectBase* import)
{
    const auto imports = trial.Get<IImportsContainer>(SimpleMapExport);
    trial.Gives("SetImport", imports->SetImport(Import, import), TVX_OK);
    trial.Equal("the reference count of a replaced import", entries.serializer.proxy->GetRefCount(), 1u);
}

void NeedTheImport(Trial& trial)
{
    ObjectEntries entries(trial);
    trial.Gives("ClearImports", trial.Get<IImportsContainer>(SimpleMapExport)->ClearImports(), TVX_OK);
    ExpectNoSerializer(trial, entries, "NULL object proxy returned for \"Serializer\".");
}

void NeedAProxy(Trial& trial)
{
    ObjectEntries entries(trial);
    ImportInstead(trial, entries, nullptr);
    ExpectNoSerializer(trial, entries, "Proxy interface not supported for \"Serializer\".");
    const auto bare = MakeRef<BareObject>();
    ImportInstead(trial, entries, bare.Get());
    ExpectNoSerializer(trial, entries, "Proxy interface not supported for \"Serializer\".");
    trial.Equal("the reference count of the import", bare->GetRefCount(), 2u);
}

void NeedAnObjectBehindTheProxy(Trial& trial)
{
    ObjectEntries entries(trial);
    const auto proxy = MakeRef<ImportProxy>(Ref<IObjectBase>());
    ImportInstead(trial, entries, proxy.Get());
    ExpectNoSerializer(trial, entries,
                       "Library returned NULL object for \"Serializer\". Probably declared and exported contracts are "
                       "different or the library is failed to load.");
    trial.Equal("the calls of the proxy", proxy->calls, 2);
    trial.Equal("the reference count of the proxy", proxy->GetRefCount(), 2u);
}

void NeedASerializerFactory(Trial& trial)
{
    ObjectEntries entries(trial);
    const auto stranger = MakeRef<ProbeObject>();
    const auto proxy = MakeRef<ImportProxy>(Ref<IObjectBase>(stranger));
    ImportInstead(trial, entries, proxy.Get());
    ExpectNoSerializer(
        trial, entries,
        "Library object for \"Serializer\" does not support required interface "
        "com.talvere.general.tvx.ISerializerFactory/1.0. Wrong import declaration or wrong plugin implementation?");
    trial.Equal("the reference count of the imported object", stranger->GetRefCount(), 2u);
}

void IgnoreTheProxysResult(Trial& trial)
{
    ObjectEntries entries(trial);
    const auto proxy = MakeRef<ImportProxy>(Ref<IObjectBase>(entries.serializer.factory), -42);
    ImportInstead(trial, entries, proxy.Get());
    trial.Gives("SetObject", entries.map->SetObject("key", entries.object.Get()), TVX_OK);
    ExpectText(trial, *entries.map, "key", "text of the object");
}

void ServeEveryMap(Trial& trial)
{
    const auto early = MakeSimpleMap(trial);
    ObjectEntries entries(trial);
    const auto late = MakeSimpleMap(trial);
    for (const auto& map : {early, late})
    {
        trial.Gives("SetObject", map->SetObject("key", entries.object.Get()), TVX_OK);
        ExpectText(trial, *map, "key", "text of the object");
    }
}

constexpr Check Checks[] = {
    {"serialise-object-entry-needs-the-import", "Objects are written and read when the import was cleared.",
     "Both operations write that no proxy was returned for the import, report TVX_RETURN_FAIL_IF_NULL and give -1; the "
     "map is unchanged.",
     NeedTheImport},
    {"serialise-object-entry-needs-a-proxy", "The import is null, then an object without IExportProxy.",
     "Both operations write that the proxy interface is not supported, report TVX_RETURN_FAIL_IF_NULL and give -1.",
     NeedAProxy},
    {"serialise-object-entry-needs-an-object-behind-the-proxy", "The import's proxy gives null.",
     "Both operations write that the library returned null, report TVX_RETURN_FAIL_IF_NULL and give -1.",
     NeedAnObjectBehindTheProxy},
    {"serialise-object-entry-needs-a-serializer-factory", "The import's proxy gives an object of another kind.",
     "Both operations write which interface is not supported, report TVX_RETURN_FAIL_IF_NULL and give -1.",
     NeedASerializerFactory},
    {"serialise-object-entry-ignores-proxy-result", "The import's proxy gives the object and answers -42.",
     "The proxy's object counts, not its answer.", IgnoreTheProxysResult},
    {"serialise-object-entry-import-serves-every-map",
     "Objects are written into maps older and younger than the import.",
     "The import belongs to the factory, and every map of the module uses it.", ServeEveryMap},
};

}  // namespace

extern const Family ImportsOfObjectEntryFamily = {"serialising", SimpleMapExport, Needs::Module, Checks};

}  // namespace tvx::check
