// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Plain.h"

namespace
{

using namespace tvx;

constexpr Export Exports[] = {{bad::PlainId, &bad::Plain::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

// Leaves the out of what it does not know as it is.
TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    const bool isOwn = id != nullptr && std::string_view(id) == bad::PlainId;
    return isOwn ? GiveExport(Exports, id, out) : TVX_E_FAIL;
}
