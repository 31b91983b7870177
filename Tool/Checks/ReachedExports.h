// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/Queries.h"

namespace tvx::check
{

// An export, and the faces by which it is reached: what GetExport gave first, then those that it answers known
// identifiers with.
struct ReachedExport
{
    std::string name;
    std::vector<KnownFace> faces;

    IObjectBase& GetObject() const { return *faces.front().face; }
    std::vector<KnownFace> GetAnswers() const { return {faces.begin() + 1, faces.end()}; }
};

// Every export of the module.
std::vector<ReachedExport> ReachExports(Trial& trial);

// What a face is called in a message.
std::string NameFace(const ReachedExport& reached, const KnownFace& face);

// Runs work(name, face) with every face of every export.
template <class Work>
void ForEachFace(Trial& trial, Work&& work)
{
    for (const auto& reached : ReachExports(trial))
    {
        for (const auto& face : reached.faces)
            work(NameFace(reached, face), *face.face);
    }
}

}  // namespace tvx::check
