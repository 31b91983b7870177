// SPDX-License-Identifier: MIT
#include "Tool/Checks/ObjectPromises.h"

#include "Interfaces/ISerializable.h"
#include "Tool/Checks/KnownIds.h"
#include "Tool/Checks/NearMissQueries.h"
#include "Tool/Checks/SlotCaller.h"

#include <string_view>

namespace tvx::check
{

namespace
{

// The place in the list of the face that the identifier is answered with, or how many there are when it is refused.
std::size_t FindFace(const ObjectClass& objectClass, std::string_view id)
{
    const auto faces = GetListedFaces(objectClass);
    for (std::size_t at = 0; at < faces.size(); ++at)
    {
        for (const char* const* answered = faces[at].ids; *answered != nullptr; ++answered)
        {
            if (id == *answered)
                return at;
        }
    }
    return faces.size();
}

// Two faces begin with different slots from the eleventh on, so they cannot be one pointer.
void ExpectDifferentFaces(Trial& trial, const ObjectClass& objectClass, const std::vector<Ref<IObjectBase>>& faces)
{
    const auto listed = GetListedFaces(objectClass);
    for (std::size_t i = 1; i < faces.size(); ++i)
    {
        for (std::size_t j = 0; j < i; ++j)
            trial.Expect(faces[i].Get() != faces[j].Get(),
                         std::string(objectClass.name) + " to have two faces for " + listed[j].ids[0] + " and " +
                             listed[i].ids[0],
                         "one");
    }
}

void ExpectAnswersThrough(Trial& trial, IObjectBase& asked, const std::string& what, const ObjectClass& objectClass,
                          const std::vector<Ref<IObjectBase>>& faces)
{
    for (const char* const id : KnownIds)
    {
        const auto at = FindFace(objectClass, id);
        if (at == faces.size())
        {
            ExpectRefusal(trial, asked, id, what);
            continue;
        }
        const auto answer = Ask(asked, id);
        trial.Gives("the query of " + what + " for " + id, answer.result, TVX_OK);
        trial.Same("what " + what + " gives for " + id, answer.face.Get(), faces[at].Get());
    }
}

// The text that the object gives, new both times. Fails the check when it is not.
template <class Giver>
std::string GetNewText(Trial& trial, Giver& giver, const std::string& what)
{
    Ref<IString> texts[2];
    for (auto& text : texts)
    {
        trial.Gives(what, giver.GetFormatId(text.Receive()), TVX_OK);
        trial.Expect(static_cast<bool>(text), what + " to give a string", "null");
        trial.Equal("the count of the string that " + what + " gives", text->GetRefCount(), 1u);
    }
    trial.Expect(texts[0].Get() != texts[1].Get(), what + " to give a new string each time", "the same one twice");
    return texts[0]->GetText();
}

}  // namespace

void ExpectAnswers(Trial& trial, const ObjectClass& objectClass)
{
    const auto specimen = MakeSpecimen(trial, objectClass);
    const auto faces = HoldFaces(trial, objectClass, specimen);
    const auto listed = GetListedFaces(objectClass);
    const std::string name = objectClass.name;
    trial.Same("the face by which one gets " + name, specimen.object.Get(), faces.front().Get());
    ExpectDifferentFaces(trial, objectClass, faces);
    for (std::size_t i = 0; i < faces.size(); ++i)
        ExpectAnswersThrough(trial, *faces[i], name + " through its " + listed[i].ids[0] + " face", objectClass, faces);
}

void ExpectNearMissesRefused(Trial& trial, const Offer& offer)
{
    for (const auto* const objectClass : offer.made)
    {
        const auto specimen = MakeSpecimen(trial, *objectClass);
        ExpectPrefixesRefused(trial, *specimen.object, objectClass->name);
        ExpectLongerIdsRefused(trial, *specimen.object, objectClass->name);
        ExpectOtherCasesRefused(trial, *specimen.object, objectClass->name);
        ExpectOtherVersionsRefused(trial, *specimen.object, objectClass->name);
        for (const auto& face : HoldFaces(trial, *objectClass, specimen))
            ExpectNullOutsRefused(trial, *face, objectClass->name);
    }
}

void ExpectSharedExport(Trial& trial, const Offer& offer)
{
    const auto specimen = MakeSpecimen(trial, offer.exported);
    trial.Equal(std::string("the count of ") + offer.exported.name + " that was asked for once",
                specimen.object->GetRefCount(), 2u);
    trial.Equal(std::string("IsUnique of ") + offer.exported.name, specimen.object->IsUnique(), false);
}

void ExpectOneReference(Trial& trial, const Offer& offer)
{
    for (const auto* const objectClass : offer.made)
    {
        const std::string name = objectClass->name;
        const auto specimen = MakeSpecimen(trial, *objectClass);
        trial.Equal("the count of " + name + " that is new", specimen.object->GetRefCount(), 1u);
        trial.Equal("IsUnique of " + name + " that is new", specimen.object->IsUnique(), true);
        const auto second = specimen.object;
        trial.Equal("IsUnique of " + name + " with one reference more", specimen.object->IsUnique(), false);
    }
}

void ExpectCounting(Trial& trial, const Offer& offer)
{
    for (const auto* const objectClass : offer.made)
    {
        const std::string name = objectClass->name;
        const auto specimen = MakeSpecimen(trial, *objectClass);
        for (const auto& face : HoldFaces(trial, *objectClass, specimen))
        {
            const auto count = specimen.object->GetRefCount();
            trial.Equal("what AddRef of " + name + " gives", CallIObjectBaseAddRef(face.Get()), count + 1);
            trial.Equal("the count of " + name + " after that", specimen.object->GetRefCount(), count + 1);
            trial.Equal("the count of " + name + " through its other face", CallIObjectBaseGetRefCount(face.Get()),
                        count + 1);
            trial.Equal("what Release of " + name + " gives", CallIObjectBaseRelease(face.Get()), count);
        }
        trial.Equal("IsUnique of " + name + " when all is released", CallIObjectBaseIsUnique(specimen.object.Get()),
                    true);
    }
}

void ExpectNewObjects(Trial& trial, const Offer& offer)
{
    for (const auto* const objectClass : offer.made)
    {
        const auto first = MakeSpecimen(trial, *objectClass);
        const auto second = MakeSpecimen(trial, *objectClass);
        trial.Expect(first.object.Get() != second.object.Get(), std::string(objectClass->name) + " to be a new object",
                     "one that was there before");
    }
}

void ExpectNewFormatTexts(Trial& trial, const Offer& offer)
{
    const auto exported = MakeSpecimen(trial, offer.exported);
    const auto reader = trial.QueryAs<IDeserializable>(exported.object, offer.exported.name);
    const auto read = GetNewText(trial, *reader, std::string("GetFormatId of ") + offer.exported.name);
    for (const auto* const objectClass : offer.made)
    {
        const auto specimen = MakeSpecimen(trial, *objectClass);
        const auto writer = Query<ISerializable>(specimen.object);
        if (!writer)
            continue;  // an iterator; what has to answer is another check's matter
        const auto what = std::string("GetFormatId of ") + objectClass->name;
        trial.Equal(what, GetNewText(trial, *writer, what), read);
    }
}

}  // namespace tvx::check
