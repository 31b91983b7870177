// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Plain.h"

#include <algorithm>
#include <cctype>
#include <string>

namespace
{

using namespace tvx;

constexpr Export Exports[] = {{bad::PlainId, &bad::Plain::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

// Takes small letters for capital ones.
TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    const std::string_view own = bad::PlainId;
    const std::string_view asked = id == nullptr ? "" : id;
    const bool isOwn =
        std::equal(own.begin(), own.end(), asked.begin(), asked.end(),
                   [](unsigned char left, unsigned char right) { return std::tolower(left) == std::tolower(right); });
    return GiveExport(Exports, isOwn ? bad::PlainId : id, out);
}
