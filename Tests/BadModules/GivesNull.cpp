// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Plain.h"

namespace
{

using namespace tvx;

constexpr Export Exports[] = {{bad::PlainId, &bad::Plain::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

// Says that it gives something, and gives null.
TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    const Result result = GiveExport(Exports, id, out);
    if (result != TVX_OK)
        return result;
    (*out)->Release();
    *out = nullptr;
    return TVX_OK;
}
