// SPDX-License-Identifier: MIT
#include "Helpers/HandOut.h"
#include "Tests/BadModules/Plain.h"

namespace
{

using namespace tvx;

Result MakeAnother(IObjectBase** out)
{
    return HandOutNew<bad::Plain>(out);
}

constexpr Export Exports[] = {{bad::PlainId, &MakeAnother}};

}  // namespace

// Gives a new object to each asker.
TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return GiveExport(Exports, id, out);
}
