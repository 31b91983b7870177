// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Maps.h"
#include "Tests/BadModules/OneExport.h"

#include <filesystem>
#include <system_error>

namespace tvx::bad
{

namespace
{

// Throws across the interface when a null key is written, and of a kind that who calls it may throw for its own reasons.
class Wrong final : public NullKeyMap
{
public:
    Result SetNullKey(IObject*) override
    {
        throw std::filesystem::filesystem_error("there is no key", std::make_error_code(std::errc::invalid_argument));
    }
};

}  // namespace

constexpr Export Exports[] = {{MapId, &MapsOf<Wrong>::GetExportInstance}};

}  // namespace tvx::bad
