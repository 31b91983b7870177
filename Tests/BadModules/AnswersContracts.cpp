// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Plain.h"

namespace
{

using namespace tvx;

constexpr Export Exports[] = {{bad::PlainId, &bad::Plain::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

// Gives its export also for what it fulfils.
TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    const bool isContract = id != nullptr && std::string_view(id) == "com.talvere.test.PlainContract/1.0";
    return GiveExport(Exports, isContract ? bad::PlainId : id, out);
}
