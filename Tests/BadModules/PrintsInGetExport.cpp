// SPDX-License-Identifier: MIT
#include "Platform/StandardStreams.h"
#include "Tests/BadModules/Plain.h"

namespace
{

using namespace tvx;

constexpr Export Exports[] = {{bad::PlainId, &bad::Plain::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

// Tells the world whom it gives.
TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    const Result result = GiveExport(Exports, id, out);
    if (result == TVX_OK)
        Platform::WriteLine({"giving ", id});
    return result;
}
