// SPDX-License-Identifier: MIT
#include "Interfaces/ISerializerFactory.h"
#include "Tool/Checks/Check.h"
#include "Tool/Checks/MapImportBench.h"

namespace tvx::check
{

namespace
{

constexpr const char Absent[] = "NULL object proxy returned";
constexpr const char NoProxy[] = "Proxy interface not supported";

void LooksUp(Trial& trial, const std::string& what, const std::string& end, const std::string& begin = "Library object")
{
    trial.Equal("the line for " + what, LookUpSerializer(trial),
                "LibManager: " + begin + " for \"Serializer\"" + end + "\n");
}

void TellsOfAnImportNeverSet(Trial& trial)
{
    const auto container = GetMapImports(trial);
    LooksUp(trial, "an import that was never set", ".", Absent);
    ImportToMaps(trial, *container, "serializer", nullptr);
    LooksUp(trial, "an import that was set under a name of another case", ".", Absent);
    ClearMapImports(trial, *container);
}

void TellsOfAClearedImport(Trial& trial)
{
    const auto container = GetMapImports(trial);
    ImportToMaps(trial, *container, SerializerImport, nullptr);
    ClearMapImports(trial, *container);
    LooksUp(trial, "an import that was cleared", ".", Absent);
}

void TellsOfANullImport(Trial& trial)
{
    const auto container = GetMapImports(trial);
    ImportToMaps(trial, *container, SerializerImport, nullptr);
    LooksUp(trial, "a null import", ".", NoProxy);
    ClearMapImports(trial, *container);
}

void TellsOfAnImportWithoutAProxy(Trial& trial)
{
    const auto container = GetMapImports(trial);
    ImportToMaps(trial, *container, SerializerImport, MakeRef<BareObject>().Get());
    LooksUp(trial, "an import that is no proxy", ".", NoProxy);
    ClearMapImports(trial, *container);
}

void TellsOfAProxyWithoutAnObject(Trial& trial)
{
    const auto container = GetMapImports(trial);
    for (const Result result : {TVX_OK, TVX_E_FAIL})
    {
        ImportToMaps(trial, *container, SerializerImport, MakeRef<ImportProxy>(nullptr, result).Get());
        LooksUp(trial, "a proxy that gives null",
                ". Probably declared and exported contracts are different or the library is failed to load.",
                "Library returned NULL object");
    }
    ClearMapImports(trial, *container);
}

void TellsOfAnObjectOfAnotherKind(Trial& trial)
{
    const auto container = GetMapImports(trial);
    for (const Result result : {TVX_OK, TVX_E_FAIL})
    {
        ImportToMaps(trial, *container, SerializerImport, MakeRef<ImportProxy>(MakeRef<BareObject>(), result).Get());
        LooksUp(trial, "an object of another kind",
                std::string(" does not support required interface ") + ISerializerFactory::Id +
                    ". Wrong import declaration or wrong plugin implementation?");
    }
    ClearMapImports(trial, *container);
}

template <const char* Export>
void ReportsANullName(Trial& trial)
{
    const auto object = MakeRef<BareObject>();
    const auto container = trial.Get<IImportsContainer>(Export);
    trial.Reports("SetImport of a null name", "TVX_RETURN_EPOINTER_IF_NULL", TVX_E_POINTER,
                  [&] { return container->SetImport(nullptr, object.Get()); });
    HasImportReferences(trial, "a refused import", *object, 0);
}

constexpr Check Checks[] = {
    {"report-imports-never-set", "A map asks for a serializer that was never imported.",
     "The line of the lookup says that no proxy was returned; names are compared byte by byte.",
     TellsOfAnImportNeverSet},
    {"report-imports-cleared", "A map asks for a serializer after ClearImports.",
     "A cleared import is as one that was never set.", TellsOfAClearedImport},
    {"report-imports-null", "A map asks for a serializer that was imported as null.",
     "Null is stored as an import: the line says that it is no proxy, not that there is none.", TellsOfANullImport},
    {"report-imports-without-a-proxy", "A map asks for a serializer that was imported without a proxy.",
     "An import is asked for IExportProxy; the line says when it refuses.", TellsOfAnImportWithoutAProxy},
    {"report-imports-proxy-without-an-object", "The proxy of the serializer gives null.",
     "The line says that the library gave no object, whatever the proxy's result.", TellsOfAProxyWithoutAnObject},
    {"report-imports-object-of-another-kind", "The proxy of the serializer gives an object of another kind.",
     "The line names the interface that the object refuses; the proxy's result does not count.",
     TellsOfAnObjectOfAnotherKind},
    {"report-imports-null-name", "SetImport is called with a null name on the settings map factory.",
     "A null name gives -4 with a report of TVX_RETURN_EPOINTER_IF_NULL, and the object is not kept.",
     ReportsANullName<SimpleMapExport>},
};

constexpr Check LoggerChecks[] = {
    {"report-imports-of-logger-null-name", "SetImport is called with a null name on the logger.",
     "A null name gives -4 with a report of TVX_RETURN_EPOINTER_IF_NULL, and the object is not kept.",
     ReportsANullName<LoggerExport>},
};

}  // namespace

extern const Family ReportsOfImportsFamily = {"report-lines", SimpleMapExport, Needs::Module, Checks};
extern const Family ReportsOfLoggerImportsFamily = {"report-lines", LoggerExport, Needs::Module, LoggerChecks};

}  // namespace tvx::check
