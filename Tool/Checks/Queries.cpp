// SPDX-License-Identifier: MIT
#include "Tool/Checks/Queries.h"

#include "Tool/Checks/KnownIds.h"

#include <algorithm>
#include <iterator>

namespace tvx::check
{

Answer Ask(IObjectBase& object, const char* id)
{
    char mark = 0;
    void* out = &mark;
    Answer answer;
    answer.result = object.QueryInterface(id, &out);
    answer.isOutTouched = out != &mark;
    if (!TVX_FAILED(answer.result) && answer.isOutTouched)
        answer.face = Ref<IObjectBase>::Adopt(static_cast<IObjectBase*>(out));
    return answer;
}

std::vector<KnownFace> GetFaces(IObjectBase& object)
{
    std::vector<KnownFace> faces;
    for (const char* const id : KnownIds)
    {
        auto answer = Ask(object, id);
        if (answer.face)
            faces.push_back({id, std::move(answer.face)});
    }
    return faces;
}

void ExpectRefusal(Trial& trial, IObjectBase& object, const std::string& id, const std::string& what)
{
    const auto count = object.GetRefCount();
    const auto answer = Ask(object, id.c_str());
    if (answer.result == TVX_E_NOINTERFACE && !answer.isOutTouched && object.GetRefCount() == count)
        return;
    const auto query = "the query of " + what + " for " + Show(id);
    trial.Gives(query, answer.result, TVX_E_NOINTERFACE);
    trial.Expect(!answer.isOutTouched, query + " to leave its out as it was", "another pointer in it");
    trial.Equal("the count after " + query, object.GetRefCount(), count);
}

bool IsKnownId(std::string_view text)
{
    return std::find(std::begin(KnownIds), std::end(KnownIds), text) != std::end(KnownIds);
}

std::vector<std::string> GetExportIds(Trial& trial)
{
    std::vector<std::string> ids;
    for (const auto& offered : trial.GetDocument().exports)
        ids.push_back(offered.id);
    if (ids.empty())
        trial.Skip("the module's configuration document lists no export");
    return ids;
}

std::vector<ExportedObject> GetExports(Trial& trial)
{
    std::vector<ExportedObject> exports;
    for (const auto& id : GetExportIds(trial))
        exports.push_back({id, trial.GetExport(id)});
    return exports;
}

}  // namespace tvx::check
