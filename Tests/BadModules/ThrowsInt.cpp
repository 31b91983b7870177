// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Plain.h"

namespace
{

using namespace tvx;

constexpr Export Exports[] = {{bad::PlainId, &bad::Plain::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

// Throws something that is no exception.
TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    if (id == nullptr)
        throw 1;
    return GiveExport(Exports, id, out);
}
