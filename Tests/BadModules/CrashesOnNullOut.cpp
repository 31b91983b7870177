// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Plain.h"

namespace
{

using namespace tvx;

constexpr Export Exports[] = {{bad::PlainId, &bad::Plain::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

// Relies on the out.
TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    IObjectBase* volatile* const place = out;
    *place = nullptr;
    return GiveExport(Exports, id, out);
}
