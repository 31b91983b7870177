// SPDX-License-Identifier: MIT
#include "Tool/SettingsSession.h"

#include "Host/SettingsMap.h"

namespace tvx::tool
{

host::Outcome<std::unique_ptr<SettingsSession>> SettingsSession::Open(host::ModuleCatalog catalog)
{
    std::unique_ptr<SettingsSession> session(new SettingsSession(std::move(catalog)));
    auto map = host::MakeSettingsMap(session->manager_);
    if (!map)
        return map.GetError();
    session->map_ = std::move(*map);
    return session;
}

}  // namespace tvx::tool
