// SPDX-License-Identifier: MIT
#include "Tool/SettingsSession.h"

#include "Interfaces/IFactory.h"

namespace tvx::tool
{

host::Outcome<Ref<ISimpleMap>> MakeSettingsMap(host::LibraryManager& manager)
{
    const auto factory = manager.GetExportAs<IFactory>(SettingsMapExport);
    if (!factory)
        return factory.GetError();
    Ref<IObjectBase> object;
    const auto result = (*factory)->Create(object.Receive());
    auto map = Query<ISimpleMap>(object);
    if (TVX_FAILED(result) || !map)
        return host::MakeError(host::ErrorKind::Misbehaved, std::string("the export \"") + SettingsMapExport +
                                                                "\" makes no settings map (result " +
                                                                std::to_string(result) + ")");
    return map;
}

host::Outcome<std::unique_ptr<SettingsSession>> SettingsSession::Open(host::ModuleCatalog catalog)
{
    std::unique_ptr<SettingsSession> session(new SettingsSession(std::move(catalog)));
    auto map = MakeSettingsMap(session->manager_);
    if (!map)
        return map.GetError();
    session->map_ = std::move(*map);
    return session;
}

}  // namespace tvx::tool
