// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Plain.h"

namespace
{

using namespace tvx;

// Two exports that are one object.
constexpr Export Exports[] = {
    {bad::PlainId, &bad::Plain::GetExportInstance},
    {"com.talvere.test.Second/1.0", &bad::Plain::GetExportInstance},
};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return tvx::GiveExport(Exports, id, out);
}
