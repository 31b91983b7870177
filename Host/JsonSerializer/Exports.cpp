// SPDX-License-Identifier: MIT
#include "Host/JsonSerializer/JsonSerializerFactory.h"
#include "Interfaces/Module.h"
#include "Platform/Export.h"

#include <string_view>

namespace
{

using namespace tvx;

struct Export
{
    std::string_view id;
    Result (*getInstance)(IObjectBase** out);
};

constexpr Export Exports[] = {
    {host::JsonSerializerFactory::ExportId, &host::JsonSerializerFactory::GetExportInstance},
};

// Makes the exports while the module is loaded, before threads can ask for them at the same time.
class ModuleLoad
{
public:
    ModuleLoad() noexcept
    {
        for (const auto& entry : Exports)
        {
            Ref<IObjectBase> object;
            static_cast<void>(entry.getInstance(object.Receive()));
        }
    }
};

ModuleLoad moduleLoad;

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    if (out == nullptr)
        return tvx::TVX_E_FAIL;
    *out = nullptr;
    for (const auto& entry : Exports)
    {
        if (id != nullptr && entry.id == id)
            return entry.getInstance(out);
    }
    return tvx::TVX_E_FAIL;
}
