// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Plain.h"

namespace
{

using namespace tvx;

constexpr Export Exports[] = {{bad::PlainId, &bad::Plain::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

// Something that each thread keeps and that is destroyed by code of the module when the thread ends.
struct Kept
{
    ~Kept() { ++asked; }

    int asked = 0;
};

thread_local Kept kept;

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    ++kept.asked;
    return tvx::GiveExport(Exports, id, out);
}
