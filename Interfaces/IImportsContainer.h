// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/IObject.h"

namespace tvx
{

// Takes the objects of other modules that an export declares as its imports.
class IImportsContainer : public IObject
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.IImportsContainer/1.0";

    // Slot 11. Stores object under name in place of what stood there.
    //   name    borrowed; the import's property name
    //   object  kept with one reference until replaced or cleared, normally the host's IExportProxy; null is stored as null
    // Threads: one at a time, before the export is used. Fails: -4 with a report when name is null, without one when memory
    // is exhausted.
    virtual Result SetImport(const char* name, IObjectBase* object) = 0;

    // Slot 12. Tells the export that the host has given all imports.
    // Threads: one at a time. Fails: as the class says; 0 where it does nothing.
    virtual Result OnImportsSet() = 0;

    // Slot 13. Tells the export a second time; no class of this module makes anything of it.
    // Threads: one at a time. Fails: as the class says; 0 where it does nothing.
    virtual Result OnImportsHook() = 0;

    // Slot 14. Releases and removes every import and gives 0.
    // Threads: one at a time. Fails: never.
    virtual Result ClearImports() = 0;

protected:
    ~IImportsContainer() = default;
};

// The host's stand-in for an export, given as an import: the export itself is fetched when it is first needed.
class IExportProxy : public IObject
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.IExportProxy/1.0";

    // Slot 11. Gives the object of the imported export.
    //   out  receives one reference, owned by the caller, or null when the export cannot be had
    // Threads: one at a time. Fails: as the host says; the asker looks at the object, not at the result.
    virtual Result GetExportObject(IObjectBase** out) = 0;

protected:
    ~IExportProxy() = default;
};

}  // namespace tvx

#if __cplusplus < 201703L
[[gnu::weak]] constexpr const char tvx::IImportsContainer::Id[];
[[gnu::weak]] constexpr const char tvx::IExportProxy::Id[];
#endif
