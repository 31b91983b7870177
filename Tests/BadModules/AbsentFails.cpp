// SPDX-License-Identifier: MIT
#include "Tests/BadModules/OneExport.h"
#include "Tests/BadModules/SettingsMaps.h"

namespace tvx::bad
{

namespace
{

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

}  // namespace

constexpr Export Exports[] = {{SettingsMapId, &SettingsMapsOf<Wrong>::GetExportInstance}};

}  // namespace tvx::bad
