// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/Doubles.h"
#include "Tool/Checks/Trial.h"
#include "Tool/Fuzz/Walk.h"

#include <cstddef>
#include <string>
#include <vector>

// What holds for every object of a module, whatever it is.
namespace tvx::fuzz
{

// The references on an object.
inline void CompareCount(check::Trial& trial, const std::string& what, IObjectBase& object, std::size_t due)
{
    trial.Equal("the references on " + what, object.GetRefCount(), static_cast<std::uint32_t>(due));
    trial.Equal("IsUnique of " + what, object.IsUnique(), due == 1);
}

// A query that is refused is silent and leaves its out and the count alone, also where the object would answer but for the out.
template <class Face>
void QueryInVain(check::Trial& trial, const std::string& what, Face& object)
{
    const std::string known = IObjectBase::Id;
    const auto withoutVersion = known.substr(0, known.rfind('/'));
    for (const auto& id : {std::string(), withoutVersion, withoutVersion + "/1.1"})
    {
        void* out = &trial;
        const auto query = "a query of " + what + " for " + check::Show(id);
        trial.Gives(query, object.QueryInterface(id.c_str(), &out), TVX_E_NOINTERFACE);
        trial.Same("the out of " + query, out, &trial);
    }
    trial.Gives("a query of " + what + " with a null out", object.QueryInterface(Face::Id, nullptr), TVX_E_NOINTERFACE);
}

// One more reference counts as long as it is there, queries in vain do not count, and the owner thread is what it was set to.
template <class Face>
void AskAsObject(check::Trial& trial, const std::string& what, const Ref<Face>& object, std::uint32_t thread)
{
    const auto count = object->GetRefCount();
    {
        const auto another = object;
        CompareCount(trial, what + ", held once more,", *object, count + 1);
    }
    QueryInVain(trial, what, *object);
    CompareCount(trial, what + " afterwards", *object, count);
    trial.Gives("SetOwnerThreadId of " + what, object->SetOwnerThreadId(thread), TVX_OK);
    trial.Equal("GetOwnerThreadId of " + what, object->GetOwnerThreadId(), thread);
}

// The end of an object is told when its last reference goes, which is the one given here, to each subscription that is left.
template <class Face>
void EndBeforeWitnesses(check::Trial& trial, const std::string& what, Ref<Face>& object)
{
    CompareCount(trial, what + " before its end", *object, 1);
    const auto witness = MakeRef<check::RecordingHandler>();
    for (std::uint64_t userData = 1; userData <= 3; ++userData)
        object->SubscribeDestroyed(witness.Get(), userData);
    object->UnsubscribeDestroyed(witness.Get());
    object = nullptr;
    std::vector<std::uint64_t> told;
    for (const auto& event : witness->events)
        told.push_back(event.eventName == "Destroyed" ? event.userData : 0);
    trial.Equal("who is told of the end of " + what, told, std::vector<std::uint64_t>{2, 3});
}

}  // namespace tvx::fuzz
