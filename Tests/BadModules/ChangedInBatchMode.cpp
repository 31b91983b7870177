// SPDX-License-Identifier: MIT
#include "Tests/BadModules/SettingsMaps.h"

namespace
{

using namespace tvx;

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

constexpr Export Exports[] = {{bad::SettingsMapId, &bad::SettingsMapsOf<Wrong>::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return tvx::GiveExport(Exports, id, out);
}
