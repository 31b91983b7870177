// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/MacroLines.h"
#include "Tool/Checks/SettingsMapEvents.h"
#include "Tool/Checks/SettingsMaps.h"
#include "Tool/Checks/TextSerializer.h"

#include <string>
#include <utility>

namespace tvx::check
{

// A settings map out of batch updating mode with the entry "key", an object that can be written into it, and the
// imported serializer that it takes for that.
class ObjectEntries
{
public:
    explicit ObjectEntries(Trial& trial) : map(MakeEntry(trial)), serializer(trial), trial_(trial) {}

    // The map has its one entry and told of nothing, and nobody has a reference on what the call worked with.
    void ExpectNothingHappened()
    {
        ExpectEntries(trial_, "the map afterwards", *map, {"key=before"});
        trial_.Equal("the events of the map", listener_.Take(), Lines());
        ExpectNothingLeft();
    }

    void ExpectNothingLeft()
    {
        trial_.Equal("the references left behind at the serializer", serializer.CountReferencesLeft(), 0u);
        trial_.Equal("the reference count of the written object", object->GetRefCount(), 1u);
        trial_.Equal("the reference count of the map", map->GetRefCount(), 1u);
    }

    // SetObject fails with these report lines and changes nothing.
    void ExpectSetFails(const Texts& lines, Result code)
    {
        ReportsInOrder(trial_, "SetObject", lines, code, [&] { return map->SetObject("key", object.Get()); });
        ExpectNothingHappened();
    }

    // GetObject fails with these report lines, changes nothing and leaves the out untouched.
    void ExpectGetFails(const Texts& lines, Result code)
    {
        const auto mark = MakeRef<ProbeObject>();
        IObject* out = mark.Get();
        ReportsInOrder(trial_, "GetObject", lines, code, [&] { return map->GetObject("key", &out); });
        trial_.Same("the out of a failed GetObject", out, mark.Get());
        ExpectNothingHappened();
    }

    // The call, which takes what the factory gives in this place, fails when that has no face for texts, and forgets no
    // reference on it.
    template <class Face, class Plain, class Call>
    void ExpectFailsWith(const Ref<Plain>& plain, Ref<Face>& place, const std::string& what, Call&& call)
    {
        auto before = std::exchange(place, Ref<Face>(plain));
        Result result = TVX_OK;
        static_cast<void>(trial_.TakeOutput([&] { result = call(); }));
        place = std::move(before);
        trial_.Expect(TVX_FAILED(result), what + " to fail", ShowResult(result));
        trial_.Equal("the reference count of what has no face for texts", plain->GetRefCount(), 1u);
    }

    Lines TakeEvents() { return listener_.Take(); }

    const Ref<ISimpleMap5> map;
    const TextSerializer serializer;
    const Ref<SerializableObject> object = MakeRef<SerializableObject>();

private:
    static Ref<ISimpleMap5> MakeEntry(Trial& trial)
    {
        auto made = MakeFilledMap(trial, {{"key", "before"}});
        trial.Gives("SetBatchUpdatingMode(false)", SwitchOff(*made), TVX_OK);
        return made;
    }

    Trial& trial_;
    SettingsMapListener listener_{*map};
};

}  // namespace tvx::check
