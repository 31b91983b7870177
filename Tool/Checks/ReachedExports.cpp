// SPDX-License-Identifier: MIT
#include "Tool/Checks/ReachedExports.h"

namespace tvx::check
{

std::vector<ReachedExport> ReachExports(Trial& trial)
{
    std::vector<ReachedExport> exports;
    for (const auto& exported : GetExports(trial))
    {
        ReachedExport reached{"the export " + exported.id, {{"", exported.object}}};
        for (auto& face : GetFaces(*exported.object))
            reached.faces.push_back(std::move(face));
        exports.push_back(std::move(reached));
    }
    return exports;
}

std::string NameFace(const ReachedExport& reached, const KnownFace& face)
{
    return *face.id == '\0' ? reached.name : std::string("the ") + face.id + " face of " + reached.name;
}

}  // namespace tvx::check
