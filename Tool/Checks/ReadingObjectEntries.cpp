// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/ObjectEntries.h"

namespace tvx::check
{

namespace
{

void ReadsTheText(Trial& trial)
{
    ObjectEntries entries(trial);
    {
        const auto object =
            Make<IObject>(trial, "GetObject", [&](IObject** out) { return entries.map->GetObject("key", out); });
        trial.Same("the object that was read", object.Get(), entries.serializer.object.Get());
        trial.Equal("the references of the object", object->GetRefCount(), 3u);
    }
    trial.Equal("the calls on the factory", entries.serializer.factory->calls, Texts{"CreateDeserializer"});
    trial.Equal("the calls on the reader", entries.serializer.reader->calls,
                (Texts{"SetText before", "Begin", "ReadNamedObject Object", "End"}));
    trial.Expect(static_cast<bool>(entries.serializer.reader->text), "the reader to be given a text", "null");
    trial.Equal("the reference count of the text that the reader keeps", entries.serializer.reader->text->GetRefCount(),
                1u);
    entries.ExpectNothingHappened();
}

void GivesThePrimaryFace(Trial& trial)
{
    ObjectEntries entries(trial);
    auto* const face = static_cast<ISerializable*>(entries.object.Get());
    entries.serializer.reader->object = Ref<IObjectBase>(face);
    const auto object =
        Make<IObject>(trial, "GetObject", [&](IObject** out) { return entries.map->GetObject("key", out); });
    trial.Same("the object that was read", object.Get(), static_cast<IObject*>(entries.object.Get()));
}

void ReadsBackWhatWasWritten(Trial& trial)
{
    ObjectEntries entries(trial);
    trial.Gives("SetObject", entries.map->SetObject("other", entries.object.Get()), TVX_OK);
    Ref<IObject> object;
    trial.Gives("GetObject", entries.map->GetObject("other", object.Receive()), TVX_OK);
    trial.Equal("the first call on the reader", entries.serializer.reader->calls.at(0), "SetText text of the object");
}

void GivesAbsentAtOnce(Trial& trial)
{
    ObjectEntries entries(trial);
    const auto mark = MakeRef<ProbeObject>();
    IObject* out = mark.Get();
    trial.Gives("GetObject of an absent key", entries.map->GetObject("absent", &out), TVX_S_NOKEY);
    trial.Same("the out", out, mark.Get());
    trial.Equal("the calls of the import's proxy", entries.serializer.proxy->calls, 0);
    entries.ExpectNothingHappened();
}

void GivesAbsentWithoutASerializer(Trial& trial)
{
    const auto map = MakeSimpleMap(trial);
    Ref<IObject> object;
    trial.Gives("GetObject of an absent key", map->GetObject("absent", object.Receive()), TVX_S_NOKEY);
}

void ForwardsAFailingGetString(Trial& trial)
{
    ObjectEntries entries(trial);
    const auto mark = MakeRef<ProbeObject>();
    IObject* out = mark.Get();
    ReportsInOrder(trial, "GetObject of a null key", {"TVX_RETURN_EPOINTER_IF_NULL", "TVX_FORWARD_FAILURE"},
                   TVX_E_POINTER, [&] { return entries.map->GetObject(nullptr, &out); });
    trial.Same("the out", out, mark.Get());
    trial.Equal("the calls on the factory", entries.serializer.factory->calls, Texts());
    entries.ExpectNothingHappened();
}

void ForwardsTheFactorysFailure(Trial& trial)
{
    ObjectEntries entries(trial);
    entries.serializer.factory->result = -42;
    entries.ExpectGetFails({"TVX_FORWARD_FAILURE"}, -42);
    trial.Equal("the calls on the reader", entries.serializer.reader->calls, Texts());
}

void FailsWithoutATextFace(Trial& trial)
{
    ObjectEntries entries(trial);
    const auto mark = MakeRef<ProbeObject>();
    IObject* out = mark.Get();
    entries.ExpectFailsWith(MakeRef<ScriptedReader>(), entries.serializer.factory->reader,
                            "GetObject with a reader that takes no text",
                            [&] { return entries.map->GetObject("key", &out); });
    trial.Same("the out", out, mark.Get());
    entries.ExpectNothingHappened();
}

void ForwardsAFailingRead(Trial& trial)
{
    ObjectEntries entries(trial);
    entries.serializer.reader->objectResult = -42;
    entries.ExpectGetFails({"TVX_FORWARD_FAILURE"}, -42);
}

void RefusesAnObjectWithoutItsFace(Trial& trial)
{
    ObjectEntries entries(trial);
    const auto bare = MakeRef<BareObject>();
    for (const auto& read : {Ref<IObjectBase>(bare), Ref<IObjectBase>()})
    {
        entries.serializer.reader->object = read;
        const auto mark = MakeRef<ProbeObject>();
        IObject* out = mark.Get();
        trial.Reports("GetObject of what is no IObject", "TVX_RETURN_FAIL_IF", TVX_E_FAIL,
                      [&] { return entries.map->GetObject("key", &out); });
        trial.Same("the out", out, mark.Get());
    }
    entries.serializer.reader->object = nullptr;
    trial.Equal("the refused object's reference count", bare->GetRefCount(), 1u);
}

void ReadsForANullOut(Trial& trial)
{
    ObjectEntries entries(trial);
    trial.Gives("GetObject with a null out", entries.map->GetObject("key", nullptr), TVX_E_POINTER);
    trial.Equal("the calls on the reader", entries.serializer.reader->calls,
                (Texts{"SetText before", "Begin", "ReadNamedObject Object", "End"}));
    entries.ExpectNothingHappened();
}

constexpr Check Checks[] = {
    {"serialise-object-entry-reads-the-text", "An object is read from an entry.",
     "The imported reader is given the entry's text, begins, reads the object named \"Object\" and ends; the caller "
     "gets "
     "one reference on the object, and nobody else has one.",
     ReadsTheText},
    {"serialise-object-entry-gives-primary-face", "The reader gives another face of the object than its IObject.",
     "What was read is asked for IObject, and that face is given.", GivesThePrimaryFace},
    {"serialise-object-entry-reads-what-was-written", "An object is written and read back.",
     "The reader is given the very text that the writer made.", ReadsBackWhatWasWritten},
    {"serialise-object-entry-absent-at-once", "GetObject of a key that is not there.",
     "It gives 101 without a report and without asking for the serializer, and leaves the out untouched.",
     GivesAbsentAtOnce},
    {"serialise-object-entry-absent-without-serializer", "GetObject of an absent key when there is no serializer.",
     "It gives 101 without a line about the import.", GivesAbsentWithoutASerializer},
    {"serialise-object-entry-forwards-failing-get-string", "GetObject of a null key.",
     "GetString reports the key with -4, which GetObject passes on with a report of TVX_FORWARD_FAILURE.",
     ForwardsAFailingGetString},
    {"serialise-object-entry-read-forwards-failing-factory", "The serializer factory fails with a code of its own.",
     "The code is given with a report of TVX_FORWARD_FAILURE; the out is untouched, nothing is left behind.",
     ForwardsTheFactorysFailure},
    {"serialise-object-entry-read-fails-without-text-face", "The reader does not answer IStringDeserializer.",
     "GetObject fails, the out is untouched, nothing is left behind.", FailsWithoutATextFace},
    {"serialise-object-entry-forwards-failing-read", "The reader fails to read the object, and gives it all the same.",
     "The code is given with a report of TVX_FORWARD_FAILURE; the out is untouched, the object is released.",
     ForwardsAFailingRead},
    {"serialise-object-entry-refuses-object-without-face", "The reader gives an object without IObject, and null.",
     "It gives -1 with a report of TVX_RETURN_FAIL_IF; the out is untouched.", RefusesAnObjectWithoutItsFace},
    {"serialise-object-entry-null-out-after-reading", "GetObject with a null out.",
     "Everything is read, then it gives -4 without a report; the object is released.", ReadsForANullOut},
};

}  // namespace

extern const Family ReadingObjectEntryFamily = {"serialising", SimpleMapExport, Needs::Module, Checks};

}  // namespace tvx::check
