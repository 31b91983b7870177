// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/ObjectEntries.h"

namespace tvx::check
{

namespace
{

void StoresTheText(Trial& trial)
{
    ObjectEntries entries(trial);
    trial.Gives("SetObject", entries.map->SetObject("new", entries.object.Get()), TVX_OK);
    trial.Equal("the calls on the factory", entries.serializer.factory->calls, Texts{"CreateSerializer"});
    trial.Equal("the calls on the writer", entries.serializer.writer->calls,
                (Texts{"Begin", "WriteNamedObject Object", "End", "GetText"}));
    ExpectEntries(trial, "the map", *entries.map, {"key=before", "new=text of the object"});
    entries.ExpectNothingLeft();
}

void ReplacesAnEntry(Trial& trial)
{
    ObjectEntries entries(trial);
    trial.Gives("SetObject", entries.map->SetObject("key", entries.object.Get()), TVX_OK);
    ExpectEntries(trial, "the map", *entries.map, {"key=text of the object"});
    trial.Equal("the events", entries.TakeEvents(), Lines{Changed});
}

void IsPendingInBatchMode(Trial& trial)
{
    ObjectEntries entries(trial);
    trial.Gives("SetBatchUpdatingMode(true)", SwitchOn(*entries.map), TVX_OK);
    trial.Gives("SetObject", entries.map->SetObject("key", entries.object.Get()), TVX_OK);
    trial.Equal("the events so far", entries.TakeEvents(), Lines{SwitchedOn});
    trial.Gives("SetBatchUpdatingMode(false)", SwitchOff(*entries.map), TVX_OK);
    trial.Equal("the events of switching the mode off", entries.TakeEvents(), (Lines{SwitchedOff, Changed}));
}

void HandsOutTheSerialisableFace(Trial& trial)
{
    const ObjectEntries entries(trial);
    trial.Gives("SetObject", entries.map->SetObject("key", entries.object.Get()), TVX_OK);
    const auto& written = entries.serializer.writer->objects;
    trial.Equal("the number of objects written", written.size(), std::size_t{1});
    trial.Same("the object written", written[0].Get(), static_cast<ISerializable*>(entries.object.Get()));
}

void RefusesWhatIsNotSerialisable(Trial& trial)
{
    ObjectEntries entries(trial);
    const auto probe = MakeRef<ProbeObject>();
    for (IObject* const refused : {static_cast<IObject*>(probe.Get()), static_cast<IObject*>(nullptr)})
        trial.Reports("SetObject of an object that cannot be written", "TVX_RETURN_FAIL_IF_NULL", TVX_E_FAIL,
                      [&] { return entries.map->SetObject("key", refused); });
    trial.Equal("the calls on the factory", entries.serializer.factory->calls, Texts());
    trial.Equal("the refused object's reference count", probe->GetRefCount(), 1u);
    entries.ExpectNothingHappened();
}

void AsksTheObjectBeforeTheImport(Trial& trial)
{
    const auto map = MakeSimpleMap(trial);
    const auto probe = MakeRef<ProbeObject>();
    trial.Reports("SetObject without a serializer of an object that cannot be written", "TVX_RETURN_FAIL_IF_NULL",
                  TVX_E_FAIL, [&] { return map->SetObject("key", probe.Get()); });
}

void ForwardsTheFactorysFailure(Trial& trial)
{
    ObjectEntries entries(trial);
    entries.serializer.factory->result = -42;
    entries.ExpectSetFails({"TVX_FORWARD_FAILURE"}, -42);
    trial.Equal("the calls on the writer", entries.serializer.writer->calls, Texts());
}

void FailsWithoutATextFace(Trial& trial)
{
    ObjectEntries entries(trial);
    const auto plain = MakeRef<RecordingWriter>();
    entries.ExpectFailsWith(plain, entries.serializer.factory->writer, "SetObject with a serializer that makes no text",
                            [&] { return entries.map->SetObject("key", entries.object.Get()); });
    plain->objects.clear();
    entries.ExpectNothingHappened();
}

void ForwardsAFailingWrite(Trial& trial)
{
    ObjectEntries entries(trial);
    entries.serializer.writer->objectResult = -42;
    entries.ExpectSetFails({"TVX_FORWARD_FAILURE"}, -42);
}

void ForwardsAFailingEnd(Trial& trial)
{
    ObjectEntries entries(trial);
    entries.serializer.writer->endResult = -43;
    entries.ExpectSetFails({"TVX_FORWARD_FAILURE"}, -43);
}

void ForwardsAFailingText(Trial& trial)
{
    ObjectEntries entries(trial);
    entries.serializer.writer->textResult = -44;
    entries.ExpectSetFails({"TVX_FORWARD_FAILURE"}, -44);
}

void ForwardsAFailingSetString(Trial& trial)
{
    ObjectEntries entries(trial);
    ReportsInOrder(trial, "SetObject of a null key", {"TVX_RETURN_EPOINTER_IF_NULL", "TVX_FORWARD_FAILURE"},
                   TVX_E_POINTER, [&] { return entries.map->SetObject(nullptr, entries.object.Get()); });
    entries.ExpectNothingHappened();
}

constexpr Check Checks[] = {
    {"serialise-object-entry-stores-the-text", "An object is written under a new key.",
     "The imported serializer begins, writes the object under the name \"Object\" and ends; the map keeps its text, "
     "and "
     "no reference stays behind.",
     StoresTheText},
    {"serialise-object-entry-replaces-and-tells", "An object is written under a key that is there.",
     "The text takes the place of the old one, and the write fires \"Changed\" as every write does.", ReplacesAnEntry},
    {"serialise-object-entry-is-pending-in-batch-mode", "An object is written in batch updating mode.",
     "The write is told when the mode is switched off.", IsPendingInBatchMode},
    {"serialise-object-entry-hands-out-serialisable-face", "The serializer looks at the object that it is to write.",
     "It is given the ISerializable face, by which it writes the object.", HandsOutTheSerialisableFace},
    {"serialise-object-entry-refuses-not-serialisable", "SetObject of an object without ISerializable, and of null.",
     "It gives -1 with a report of TVX_RETURN_FAIL_IF_NULL; the serializer is not asked and the map unchanged.",
     RefusesWhatIsNotSerialisable},
    {"serialise-object-entry-asks-the-object-first", "SetObject of such an object when there is no serializer.",
     "The object is asked before the import is looked up, so there is no line about the import.",
     AsksTheObjectBeforeTheImport},
    {"serialise-object-entry-forwards-failing-factory", "The serializer factory fails with a code of its own.",
     "The code is given with a report of TVX_FORWARD_FAILURE, the map is unchanged, nothing is left behind.",
     ForwardsTheFactorysFailure},
    {"serialise-object-entry-fails-without-text-face", "The serializer does not answer IStringSerializer.",
     "SetObject fails, the map is unchanged, nothing is left behind.", FailsWithoutATextFace},
    {"serialise-object-entry-forwards-failing-write", "The serializer fails to write the object.",
     "The code is given with a report of TVX_FORWARD_FAILURE, the map is unchanged, nothing is left behind.",
     ForwardsAFailingWrite},
    {"serialise-object-entry-forwards-failing-end", "The serializer fails to end its document.",
     "The code is given with a report of TVX_FORWARD_FAILURE, the map is unchanged, nothing is left behind.",
     ForwardsAFailingEnd},
    {"serialise-object-entry-forwards-failing-text",
     "The serializer fails to give its text, and gives it all the same.",
     "The code is given with a report of TVX_FORWARD_FAILURE, the map is unchanged, the text is released.",
     ForwardsAFailingText},
    {"serialise-object-entry-forwards-failing-set-string", "SetObject of a null key.",
     "SetString reports the key with -4, which SetObject passes on with a report of TVX_FORWARD_FAILURE.",
     ForwardsAFailingSetString},
};

}  // namespace

extern const Family SerialisingObjectEntryFamily = {"serialising", SimpleMapExport, Needs::Module, Checks};

}  // namespace tvx::check
