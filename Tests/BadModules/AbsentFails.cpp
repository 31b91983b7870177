// SPDX-License-Identifier: MIT
#include "Tests/BadModules/SettingsMaps.h"

namespace
{

using namespace tvx;

// Takes a key that is not there for an error.
class Wrong final : public SimpleMap
{
public:
    Result GetInt(const char* key, std::int32_t* out) override
    {
        const Result result = SimpleMap::GetInt(key, out);
        return result == TVX_S_NOKEY ? TVX_E_FAIL : result;
    }
};

constexpr Export Exports[] = {{bad::SettingsMapId, &bad::SettingsMapsOf<Wrong>::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return tvx::GiveExport(Exports, id, out);
}
