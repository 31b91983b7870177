// SPDX-License-Identifier: MIT
#include "Tests/BadModules/OneExport.h"
#include "Tests/BadModules/SettingsMaps.h"

#include <cstdio>

namespace tvx::bad
{

namespace
{

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

}  // namespace

constexpr Export Exports[] = {{SettingsMapId, &SettingsMapsOf<Wrong>::GetExportInstance}};

}  // namespace tvx::bad
