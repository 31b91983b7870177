// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Helpers/Ref.h"
#include "Interfaces/IImportsContainer.h"

#include <functional>
#include <utility>

namespace tvx::host
{

// What an export receives as its import: fetches the imported object when it is first asked for, so that modules which
// import each other need no order of loading.
class ExportProxy final : public ClassImpl<ExportProxy, IExportProxy>
{
public:
    using Interfaces = InterfaceList<IExportProxy, IObject, IObjectBase>;

    // Gives the imported object, or null when it cannot be had.
    using Fetch = std::function<Ref<IObjectBase>()>;

    // The object is fetched anew each time when it is asked for.
    explicit ExportProxy(Fetch fetch) : fetch_(std::move(fetch)) {}

    Result GetExportObject(IObjectBase** out) override
    try
    {
        if (out == nullptr)
            return TVX_E_POINTER;
        *out = nullptr;
        *out = fetch_().Detach();
        return *out == nullptr ? TVX_E_FAIL : TVX_OK;
    }
    catch (...)  // want of memory
    {
        return TVX_E_FAIL;
    }

private:
    Fetch fetch_;
};

}  // namespace tvx::host
