// SPDX-License-Identifier: MIT
#include "Tool/Checks/SlotChecking.h"

namespace tvx::check
{

namespace
{

// What a settings map of these entries serialises.
Texts GetCalls(const Texts& keysAndValues)
{
    Texts calls = {"BeginArray Values"};
    for (const auto& text : keysAndValues)
        calls.push_back("WriteString " + text);
    calls.emplace_back("EndArray");
    return calls;
}

}  // namespace

void Need(Trial& trial, const std::string& what, bool works)
{
    if (!trial.TakeOutput().empty() || !works)
        trial.Skip(what + ", which is needed here, does not work");
}

Ref<ISimpleMap5> MakeFilledSimpleMap(Trial& trial, const Texts& keysAndValues)
{
    const auto reader = MakeRef<ScriptedReader>();
    reader->items.assign(keysAndValues.begin(), keysAndValues.end());
    auto map = ReadFrom<ISimpleMap5>(trial, SimpleMapExport, reader);
    Need(trial, "Deserialize or Serialize", WriteOut(trial, map)->calls == GetCalls(keysAndValues));
    return map;
}

void ExpectEntries(Trial& trial, const Ref<ISimpleMap>& map, const std::string& what, const Texts& keysAndValues)
{
    trial.ExpectSilence(what);
    trial.Equal("what the map serialises after " + what, WriteOut(trial, map)->calls, GetCalls(keysAndValues));
}

Ref<ScriptedReader> MakeObjectReader(const std::vector<Ref<ProbeObject>>& items)
{
    auto reader = MakeRef<ScriptedReader>();
    for (const auto& item : items)
        reader->items.emplace_back(Ref<IObjectBase>(item));
    return reader;
}

void CheckBaseSlots(Trial& trial, IObjectBase& object, const std::string& name)
{
    for (const auto judge : {&JudgeIsUniqueOfNew, &JudgeGetRefCountOfNew, &JudgeAddRef, &JudgeRelease,
                             &JudgeQueryInterface, &JudgeDoQueryInterface})
        judge(trial, object, name);
    trial.Equal("the references on " + name + " in the end", object.GetRefCount(), 1u);
}

void CheckFormatIdSlot(Trial& trial, void* object, GetFormatIdSlot getFormatId, const char* expected)
{
    const auto text = Take<IString>(trial, "GetFormatId", TVX_OK, [&](void** out) { return getFormatId(object, out); });
    trial.Equal("the text of GetFormatId", text->GetText(), expected);
}

void CheckSerializeSlot(Trial& trial, void* object, const Texts& expected)
{
    const auto writer = MakeRef<RecordingWriter>();
    trial.Gives("Serialize", CallISerializableSerialize(object, ToC<ISerializer>(writer)), TVX_OK);
    trial.Equal("what comes to the writer", writer->calls, expected);
}

void CheckSubscribeSlot(Trial& trial, void* object, SubscribeSlot subscribe, const char* event,
                        const std::function<bool()>& trigger)
{
    constexpr std::uint64_t cookie = 0xFEDCBA9876543210;
    const auto leaving = MakeRef<RecordingHandler>();
    const auto staying = MakeRef<RecordingHandler>();
    subscribe(object, ToC<IEventHandler>(leaving), cookie, true);
    subscribe(object, ToC<IEventHandler>(staying), 2, true);
    trial.ExpectSilence("the slot that subscribes");
    Need(trial, "the call that fires", trigger());
    trial.Equal("the events of a subscribed handler", leaving->GetNames(), Texts{event});
    trial.Same("the sender", leaving->events.front().sender, object);
    trial.Equal("the cookie", leaving->events.front().userData, cookie);
    subscribe(object, ToC<IEventHandler>(leaving), 0, false);
    trial.ExpectSilence("the slot that unsubscribes");
    Need(trial, "the second call that fires", trigger());
    trial.Equal("the events of an unsubscribed handler", leaving->GetNames(), Texts{event});
    trial.Equal("the events of the other handler", staying->GetNames(), Texts{event, event});
    subscribe(object, ToC<IEventHandler>(staying), 0, false);
}

void CheckFireSlot(Trial& trial, void* object, FireSlot fire, void* argument, const char* event,
                   const RecordingHandler& handler)
{
    fire(object, argument);
    trial.Equal("the events fired", handler.GetNames(), Texts{event});
    trial.Same("the sender", handler.events.front().sender, object);
    trial.Equal("the param", handler.events.front().param, reinterpret_cast<std::uintptr_t>(argument));
}

}  // namespace tvx::check
