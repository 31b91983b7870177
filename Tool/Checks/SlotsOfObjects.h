// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/Slots.h"

#include <array>
#include <functional>
#include <string>
#include <utility>
#include <vector>

// The slots that every object begins with, judged on any object; the name is what messages call it.
namespace tvx::check
{

void JudgeAddRef(Trial& trial, IObjectBase& object, const std::string& name);
void JudgeRelease(Trial& trial, IObjectBase& object, const std::string& name);
void JudgeQueryInterface(Trial& trial, IObjectBase& object, const std::string& name);
void JudgeDoQueryInterface(Trial& trial, IObjectBase& object, const std::string& name);
void JudgeIsUnique(Trial& trial, IObjectBase& object, const std::string& name);
void JudgeGetRefCount(Trial& trial, IObjectBase& object, const std::string& name);
void JudgeGetOwnerThreadId(Trial& trial, IObject& object, const std::string& name);
void JudgeSetOwnerThreadId(Trial& trial, IObject& object, const std::string& name);

// Of an object that nobody but the caller holds.
void JudgeIsUniqueOfNew(Trial& trial, IObjectBase& object, const std::string& name);
void JudgeGetRefCountOfNew(Trial& trial, IObjectBase& object, const std::string& name);

// An object with what messages call it.
template <class Interface>
struct NamedObject
{
    std::string name;
    Ref<Interface> object;
};

// Judged by the end of the objects, which comes once their references are released and the end is called.
using ObjectsToTheEnd = std::vector<NamedObject<IObject>>;
void JudgeSubscribeDestroyed(Trial& trial, ObjectsToTheEnd objects, const std::function<void()>& end);
void JudgeUnsubscribeDestroyed(Trial& trial, ObjectsToTheEnd objects, const std::function<void()>& end);

// The rules of these slots.
constexpr const char AddRefRule[] = "Slot 1 of IObjectBase is AddRef: it adds one reference and gives the new count.";
constexpr const char ReleaseRule[] =
    "Slot 2 of IObjectBase is Release: it removes one reference and gives the new count.";
constexpr const char QueryInterfaceRule[] = "Slot 3 of IObjectBase is QueryInterface: it hands out the face that an "
                                            "identifier names, or gives -3 and leaves the "
                                            "out untouched.";
constexpr const char DoQueryInterfaceRule[] =
    "Slot 4 of IObjectBase is DoQueryInterface: it answers as QueryInterface, which forwards to it.";
constexpr const char IsUniqueRule[] =
    "Slot 5 of IObjectBase is IsUnique: it tells whether the count of references is exactly 1.";
constexpr const char GetRefCountRule[] =
    "Slot 6 of IObjectBase is GetRefCount: it gives the count and leaves it alone.";
constexpr const char SubscribeDestroyedRule[] = "Slot 7 of IObject is SubscribeDestroyed: the handler is told of the "
                                                "object's end, with the value of 64 bits that was "
                                                "given with it.";
constexpr const char UnsubscribeDestroyedRule[] =
    "Slot 8 of IObject is UnsubscribeDestroyed: the handler is not told of the object's end any more.";
constexpr const char GetOwnerThreadIdRule[] =
    "Slot 9 of IObject is GetOwnerThreadId: it gives the system's number of the thread that constructed the object.";
constexpr const char SetOwnerThreadIdRule[] =
    "Slot 10 of IObject is SetOwnerThreadId: it replaces the number of the object's thread and gives 0.";

// The checks of an object that a function makes. The kind is a word for names and messages.
template <FixedText Kind, Ref<IObject> (*Make)(Trial&)>
struct NewObject
{
    template <auto Judge>
    static void Run(Trial& trial)
    {
        Judge(trial, *Make(trial), Name());
    }

    template <auto Judge>
    static void RunToItsEnd(Trial& trial)
    {
        ObjectsToTheEnd objects;
        objects.push_back({Name(), Make(trial)});  // the only reference on it
        Judge(trial, std::move(objects), [] {});
    }

    static std::string Name() { return Joined<"a new ", Kind>.characters; }
};

template <FixedText Kind, FixedText NumberAndName, FixedText Operation>
constexpr Check MakeRow(const char* rule, void (*run)(Trial&))
{
    return {Joined<"slot-", Kind, "-", NumberAndName>.characters,
            Joined<Operation, " is called by its number on a new ", Kind, ".">.characters, rule, run};
}

template <FixedText Kind, Ref<IObject> (*Make)(Trial&), class Object = NewObject<Kind, Make>>
constexpr std::array<Check, 10> ObjectSlots = {
    MakeRow<Kind, "1-add-ref", "AddRef">(AddRefRule, Object::template Run<JudgeAddRef>),
    MakeRow<Kind, "2-release", "Release">(ReleaseRule, Object::template Run<JudgeRelease>),
    MakeRow<Kind, "3-query-interface", "QueryInterface">(QueryInterfaceRule, Object::template Run<JudgeQueryInterface>),
    MakeRow<Kind, "4-do-query-interface", "DoQueryInterface">(DoQueryInterfaceRule,
                                                              Object::template Run<JudgeDoQueryInterface>),
    MakeRow<Kind, "5-is-unique", "IsUnique">(IsUniqueRule, Object::template Run<JudgeIsUniqueOfNew>),
    MakeRow<Kind, "6-get-ref-count", "GetRefCount">(GetRefCountRule, Object::template Run<JudgeGetRefCountOfNew>),
    MakeRow<Kind, "7-subscribe-destroyed", "SubscribeDestroyed">(SubscribeDestroyedRule,
                                                                 Object::template RunToItsEnd<JudgeSubscribeDestroyed>),
    MakeRow<Kind, "8-unsubscribe-destroyed", "UnsubscribeDestroyed">(
        UnsubscribeDestroyedRule, Object::template RunToItsEnd<JudgeUnsubscribeDestroyed>),
    MakeRow<Kind, "9-get-owner-thread-id", "GetOwnerThreadId">(GetOwnerThreadIdRule,
                                                               Object::template Run<JudgeGetOwnerThreadId>),
    MakeRow<Kind, "10-set-owner-thread-id", "SetOwnerThreadId">(SetOwnerThreadIdRule,
                                                                Object::template Run<JudgeSetOwnerThreadId>),
};

}  // namespace tvx::check
