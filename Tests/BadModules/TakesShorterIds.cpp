// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Plain.h"

namespace
{

using namespace tvx;

constexpr Export Exports[] = {{bad::PlainId, &bad::Plain::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

// Takes the beginning of an id, which may be nothing at all, for the id.
TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    const bool isOwn = id != nullptr && std::string_view(bad::PlainId).starts_with(id);
    return GiveExport(Exports, isOwn ? bad::PlainId : id, out);
}
