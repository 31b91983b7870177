// SPDX-License-Identifier: MIT
#include "Tests/BadModules/SettingsMaps.h"

#include <cstdio>

namespace
{

using namespace tvx;

// Writes numbers with one digit too many.
class Wrong final : public SimpleMap
{
public:
    Result SetDouble(const char* key, double value) override
    {
        char text[32] = {};
        std::snprintf(text, sizeof text, "%.7g", value);
        return SetString(key, text);
    }
};

constexpr Export Exports[] = {{bad::SettingsMapId, &bad::SettingsMapsOf<Wrong>::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return tvx::GiveExport(Exports, id, out);
}
