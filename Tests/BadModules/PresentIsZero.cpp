// SPDX-License-Identifier: MIT
#include "Tests/BadModules/SettingsMaps.h"

namespace
{

using namespace tvx;

// Gives 0 for a text that is there, as for any success.
class Wrong final : public SimpleMap
{
public:
    Result GetString(const char* key, IString** out) override
    {
        const Result result = SimpleMap::GetString(key, out);
        return result == TVX_S_VALUE ? TVX_OK : result;
    }
};

constexpr Export Exports[] = {{bad::SettingsMapId, &bad::SettingsMapsOf<Wrong>::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return tvx::GiveExport(Exports, id, out);
}
