// SPDX-License-Identifier: MIT
#include "Host/SettingsMap.h"

#include "Host/LibraryManager.h"
#include "Interfaces/IFactory.h"

namespace tvx::host
{

Outcome<Ref<ISimpleMap>> MakeSettingsMap(LibraryManager& manager)
{
    const auto factory = manager.GetExportAs<IFactory>(SettingsMapExport);
    if (!factory)
        return factory.GetError();
    Ref<IObjectBase> object;
    const auto result = (*factory)->Create(object.Receive());
    auto map = Query<ISimpleMap>(object);
    if (TVX_FAILED(result) || !map)
        return MakeError(ErrorKind::Misbehaved, std::string("the export \"") + SettingsMapExport +
                                                    "\" makes no settings map (result " + std::to_string(result) + ")");
    return map;
}

}  // namespace tvx::host
