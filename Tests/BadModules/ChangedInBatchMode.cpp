// SPDX-License-Identifier: MIT
#include "Tests/BadModules/OneExport.h"
#include "Tests/BadModules/SettingsMaps.h"

namespace tvx::bad
{

namespace
{

// Tells each write at once, also in batch updating mode.
class Wrong final : public SimpleMap
{
public:
    Result SetString(const char* key, const char* value) override
    {
        bool isBatch = false;
        GetBatchUpdatingMode(&isBatch);
        const Result result = SimpleMap::SetString(key, value);
        if (isBatch && result == TVX_OK)
            FireChanged(nullptr);
        return result;
    }
};

}  // namespace

constexpr Export Exports[] = {{SettingsMapId, &SettingsMapsOf<Wrong>::GetExportInstance}};

}  // namespace tvx::bad
