// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Maps.h"
#include "Tests/BadModules/OneExport.h"

#include <stdexcept>

namespace tvx::bad
{

namespace
{

// Throws across the interface when a null key is written.
class Wrong final : public NullKeyMap
{
public:
    Result SetNullKey(IObject*) override { throw std::invalid_argument("there is no key"); }
};

}  // namespace

constexpr Export Exports[] = {{MapId, &MapsOf<Wrong>::GetExportInstance}};

}  // namespace tvx::bad
