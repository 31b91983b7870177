// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/UserDataBench.h"

namespace tvx::check
{

namespace
{

void ReportsANullName(Trial& trial)
{
    const auto object = MakeRef<BareObject>();
    const auto container = MakeUserDataContainer(trial);
    for (IObjectBase* const given : {static_cast<IObjectBase*>(object.Get()), static_cast<IObjectBase*>(nullptr)})
        trial.Reports("SetUserData of a null name", "TVX_RETURN_EPOINTER_IF_NULL", TVX_E_POINTER,
                      [&] { return container->SetUserData(nullptr, given); });
    HasContainerReferences(trial, "a refused object", *object, 0);
    trial.Equal("the names after it", GetUserDataNames(trial, *container), std::vector<std::string>());
}

template <class Out>
void ReportsANullOut(Trial& trial, const std::string& form)
{
    const auto object = MakeRef<BareObject>();
    const auto container = MakeUserDataContainer(trial);
    Attach(trial, *container, "present", object.Get());
    for (const char* const name : {"present", "absent", static_cast<const char*>(nullptr)})
        trial.Reports(form + " of " + Show(name) + " with a null out", "TVX_RETURN_EPOINTER_IF_NULL", TVX_E_POINTER,
                      [&] { return container->GetUserData(name, static_cast<Out>(nullptr)); });
    HasContainerReferences(trial, "an object that nobody received", *object, 1);
}

void ReportsANullOutByTheFirstForm(Trial& trial)
{
    ReportsANullOut<IObjectBase**>(trial, "GetUserData");
}

void ReportsANullOutByTheSecondForm(Trial& trial)
{
    ReportsANullOut<const IObjectBase**>(trial, "the second GetUserData");
}

void ReportsNextAtTheEnd(Trial& trial)
{
    const auto object = MakeRef<BareObject>();
    const auto container = MakeUserDataContainer(trial);
    Attach(trial, *container, "name", object.Get());
    const auto iterator = MakeUserDataIterator(trial, *container);
    trial.Gives("Next on the last entry", iterator->Next(), TVX_OK);
    for (const char* const what : {"Next at the end", "a second Next at the end"})
        trial.Reports(what, "TVX_CHECK_PRECOND", TVX_E_PRECONDITION, [&] { return iterator->Next(); });
    trial.Equal("IsEnd after Next at the end", iterator->IsEnd(), true);
}

void ReportsGetObjectAtTheEnd(Trial& trial)
{
    const auto container = MakeUserDataContainer(trial);
    const auto iterator = MakeUserDataIterator(trial, *container);
    const auto mark = MakeRef<BareObject>();
    IObjectBase* out = mark.Get();
    trial.Reports("GetObject at the end", "TVX_CHECK_PRECOND", TVX_E_PRECONDITION,
                  [&] { return iterator->GetObject(&out); });
    trial.Same("the out of GetObject at the end, which is left alone,", out, static_cast<IObjectBase*>(mark.Get()));
    trial.Reports("GetObject at the end with a null out", "TVX_CHECK_PRECOND", TVX_E_PRECONDITION,
                  [&] { return iterator->GetObject(nullptr); });
}

constexpr Check Checks[] = {
    {"report-user-data-null-name", "SetUserData is called with a null name.",
     "A null name gives -4 with a report of TVX_RETURN_EPOINTER_IF_NULL, and the object is not kept.",
     ReportsANullName},
    {"report-user-data-null-out", "GetUserData is called with a null out for present, absent and null names.",
     "A null out gives -4 with a report of TVX_RETURN_EPOINTER_IF_NULL, whatever the name.",
     ReportsANullOutByTheFirstForm},
    {"report-user-data-second-form-null-out", "The second GetUserData is called with a null out.",
     "A null out gives -4 with a report of TVX_RETURN_EPOINTER_IF_NULL, whatever the name.",
     ReportsANullOutByTheSecondForm},
    {"report-user-data-iterator-next-at-the-end", "Next is called at the end of user data.",
     "At the end Next gives -7 with a report of TVX_CHECK_PRECOND and stays there.", ReportsNextAtTheEnd},
    {"report-user-data-iterator-object-at-the-end", "GetObject is called at the end of user data.",
     "At the end GetObject gives -7 with a report of TVX_CHECK_PRECOND before it looks at out, which it leaves alone.",
     ReportsGetObjectAtTheEnd},
};

}  // namespace

extern const Family ReportsOfUserDataFamily = {"report-lines", SimpleMapExport, Needs::Module, Checks};

}  // namespace tvx::check
