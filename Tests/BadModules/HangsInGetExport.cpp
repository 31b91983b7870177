// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Plain.h"

#include <chrono>
#include <thread>

namespace
{

using namespace tvx;

constexpr Export Exports[] = {{bad::PlainId, &bad::Plain::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

// Does not come back when it is asked for its export.
TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    const Result result = GiveExport(Exports, id, out);
    if (result == TVX_OK)
        std::this_thread::sleep_for(std::chrono::hours(1));
    return result;
}
