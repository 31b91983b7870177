// SPDX-License-Identifier: MIT
#include "Tests/BadModules/OneExport.h"
#include "Tests/BadModules/SettingsMaps.h"

namespace tvx::bad
{

namespace
{

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

}  // namespace

constexpr Export Exports[] = {{SettingsMapId, &SettingsMapsOf<Wrong>::GetExportInstance}};

}  // namespace tvx::bad
