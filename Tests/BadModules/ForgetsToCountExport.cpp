// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Plain.h"

namespace
{

using namespace tvx;

constexpr Export Exports[] = {{bad::PlainId, &bad::Plain::GetExportInstance}};

// So many references that those which are missing later on take nobody's life.
class AtLoad
{
public:
    AtLoad()
    {
        for (int reference = 0; reference < 100'000; ++reference)
            bad::Plain::GetOrMake()->AddRef();
    }
};

const AtLoad KeepAlive;

}  // namespace

// Gives its export without a reference.
TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    const Result result = GiveExport(Exports, id, out);
    if (result == TVX_OK)
        (*out)->Release();
    return result;
}
