// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/NearMissQueries.h"

namespace tvx::check
{

namespace
{

using Expectation = void (*)(Trial& trial, IObjectBase& object, const std::string& what);

// Tries it with every face of every export: each may have a query of its own.
template <Expectation Expect>
void HoldsForEachFace(Trial& trial)
{
    for (const auto& [id, object] : GetExports(trial))
    {
        Expect(trial, *object, "the export " + id);
        for (const auto& face : GetFaces(*object))
            Expect(trial, *face.face, std::string("the ") + face.id + " face of the export " + id);
    }
}

void ExpectUnknownIdsRefused(Trial& trial, IObjectBase& object, const std::string& what)
{
    for (const char* const id : {"", "unknown", "IObjectBase", "com.example.INobodyHasThis/1.0", "/", "*"})
        ExpectRefusal(trial, object, id, what);
    ExpectRefusal(trial, object, std::string(5000, 'x'), what);
}

void ExpectExportIdsRefused(Trial& trial, IObjectBase& object, const std::string& what)
{
    for (const auto& id : GetExportIds(trial))
    {
        if (!IsKnownId(id))
            ExpectRefusal(trial, object, id, what);
    }
}

constexpr const char ExactRule[] = "An identifier is compared byte for byte, including its NUL: whatever differs gives "
                                   "-3 and changes neither the out nor the count.";

constexpr Check Checks[] = {
    {"identity-unknown-id-is-refused", "Each face of each export is asked for identifiers that nobody has.", ExactRule,
     HoldsForEachFace<ExpectUnknownIdsRefused>},
    {"identity-export-id-is-refused", "Each face of each export is asked for the module's export identifiers.",
     "An export's identifier names an object of the module and no interface of it: a query for it gives -3.",
     HoldsForEachFace<ExpectExportIdsRefused>},
    {"identity-prefix-is-refused", "Each face of each export is asked for every beginning of every known identifier.",
     ExactRule, HoldsForEachFace<ExpectPrefixesRefused>},
    {"identity-longer-id-is-refused", "Each face of each export is asked for known identifiers with a character more.",
     ExactRule, HoldsForEachFace<ExpectLongerIdsRefused>},
    {"identity-other-case-is-refused", "Each face of each export is asked for known identifiers in other cases.",
     ExactRule, HoldsForEachFace<ExpectOtherCasesRefused>},
    {"identity-other-version-is-refused", "Each face of each export is asked for known interfaces in other versions.",
     "A version is part of the identifier, compared as text: no other version stands in for it, and the query gives "
     "-3.",
     HoldsForEachFace<ExpectOtherVersionsRefused>},
    {"identity-null-out-is-refused",
     "Each face of each export is asked for known and unknown identifiers with a null out.",
     "A query without a place for its answer gives -3, also for an identifier that the object answers, and adds no "
     "reference.",
     HoldsForEachFace<ExpectNullOutsRefused>},
};

}  // namespace

extern const Family IdentityRefusalFamily = {"identity", nullptr, Needs::Module, Checks};

}  // namespace tvx::check
