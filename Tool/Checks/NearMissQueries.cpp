// SPDX-License-Identifier: MIT
#include "Tool/Checks/NearMissQueries.h"

#include "Tool/Checks/KnownIds.h"
#include "Tool/Checks/NearMisses.h"

namespace tvx::check
{

namespace
{

void ExpectAllRefused(Trial& trial, IObjectBase& object, const std::string& what,
                      std::vector<std::string> (*getTexts)(std::string_view))
{
    for (const char* const id : KnownIds)
    {
        for (const auto& text : getTexts(id))
        {
            if (!IsKnownId(text))
                ExpectRefusal(trial, object, text, what);
        }
    }
}

}  // namespace

void ExpectPrefixesRefused(Trial& trial, IObjectBase& object, const std::string& what)
{
    ExpectAllRefused(trial, object, what, GetPrefixes);
}

void ExpectLongerIdsRefused(Trial& trial, IObjectBase& object, const std::string& what)
{
    ExpectAllRefused(trial, object, what, GetLonger);
}

void ExpectOtherCasesRefused(Trial& trial, IObjectBase& object, const std::string& what)
{
    ExpectAllRefused(trial, object, what, GetOtherCases);
}

void ExpectOtherVersionsRefused(Trial& trial, IObjectBase& object, const std::string& what)
{
    ExpectAllRefused(trial, object, what, GetOtherVersions);
}

void ExpectNullOutsRefused(Trial& trial, IObjectBase& object, const std::string& what)
{
    const auto count = object.GetRefCount();
    for (const char* const id : KnownIds)
        trial.Gives("the query of " + what + " for " + id + " with a null out", object.QueryInterface(id, nullptr),
                    TVX_E_NOINTERFACE);
    trial.Gives("the query of " + what + " for an unknown identifier with a null out",
                object.QueryInterface("unknown", nullptr), TVX_E_NOINTERFACE);
    trial.Equal("the count of " + what + " after queries with a null out", object.GetRefCount(), count);
}

}  // namespace tvx::check
