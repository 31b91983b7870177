// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/Doubles.h"
#include "Tool/Checks/SlotsOfObjects.h"

#include <functional>
#include <string>
#include <vector>

// What checks of slots have in common. An object gets what it holds from the deserialisation of its factory and is judged by
// what it serialises, so that a check of one slot needs as little as possible of the other slots of the same table.
namespace tvx::check
{

using Texts = std::vector<std::string>;

// An integer variant of this side, which can be stored; how it writes itself is nobody's concern here.
class FixedVariant final : public ClassImpl<FixedVariant, IVariant, ISerializable>
{
public:
    using Interfaces = InterfaceList<IVariant, IObject, IObjectBase, ISerializable>;

    explicit FixedVariant(std::int32_t value) : value_(value) {}

    std::int32_t GetType() override { return TypeInt; }
    Result GetBool(bool*) override { return TVX_E_FAIL; }
    Result GetInt(std::int32_t* out) override
    {
        *out = value_;
        return TVX_OK;
    }
    Result GetFloat(float*) override { return TVX_E_FAIL; }
    Result GetDouble(double*) override { return TVX_E_FAIL; }
    Result GetString(IString**) override { return TVX_E_FAIL; }
    Result GetObject(IObject**) override { return TVX_E_FAIL; }
    Result GetFormatId(IString**) override { return TVX_E_FAIL; }
    Result Serialize(ISerializer*) override { return TVX_OK; }

private:
    std::int32_t value_;
};

// What a check needs of other slots before it can begin, or to see what its own slot did. These have checks of their own:
// where they do not work, or write a report, the check cannot be tried.
void Need(Trial& trial, const std::string& what, bool works);

// An object that the factory of the module reads from the reader.
template <class Interface>
Ref<Interface> ReadFrom(Trial& trial, const char* exportId, const Ref<ScriptedReader>& reader)
{
    const auto factory = trial.Get<IDeserializable>(exportId);
    Ref<IObjectBase> made;
    const Result result = factory->Deserialize(reader.Get(), made.Receive());
    Need(trial, "Deserialize", result == TVX_OK && made);
    return trial.QueryAs<Interface>(made, "what Deserialize gives");
}

// What an object of the module serialises.
template <class Interface>
Ref<RecordingWriter> WriteOut(Trial& trial, const Ref<Interface>& object)
{
    const auto serializable = trial.QueryAs<ISerializable>(object, "the object");
    auto writer = MakeRef<RecordingWriter>();
    Need(trial, "Serialize", serializable->Serialize(writer.Get()) == TVX_OK);
    return writer;
}

// A settings map in batch updating mode of keys and values in turn, and the expectation that one holds just these.
Ref<ISimpleMap5> MakeFilledSimpleMap(Trial& trial, const Texts& keysAndValues);
void ExpectEntries(Trial& trial, const Ref<ISimpleMap>& map, const std::string& what, const Texts& keysAndValues);

// A reader of one sequence of objects.
Ref<ScriptedReader> MakeObjectReader(const std::vector<Ref<ProbeObject>>& items);

// What a call gives out as an object of any kind, by its result and the interface that it has to answer. It is asked for that
// interface first, so that an object of another kind does not have its operations called.
template <class Interface, class Call>
Ref<Interface> TakeObject(Trial& trial, const std::string& what, Result expected, Call&& call)
{
    const auto given = TakeFromC<IObjectBase>(trial, what, expected, call);
    return trial.QueryAs<Interface>(given, "what " + what + " gives");
}

// What a call gives out as an interface of its own: the address has to be that face of the object.
template <class Interface, class Call>
Ref<Interface> Take(Trial& trial, const std::string& what, Result expected, Call&& call)
{
    void* given = nullptr;
    auto face = TakeObject<Interface>(trial, what, expected,
                                      [&](void** out)
                                      {
                                          const Result result = call(out);
                                          given = *out;
                                          return result;
                                      });
    trial.Same("what " + what + " gives", given, face.Get());
    return face;
}

// What the factory reads from the reader when it is called by the slot of Deserialize.
template <class Interface>
Ref<Interface> TakeByDeserializeSlot(Trial& trial, const char* exportId, const Ref<ScriptedReader>& reader)
{
    const auto factory = trial.Get<IDeserializable>(exportId);
    return TakeObject<Interface>(
        trial, "Deserialize by its number", TVX_OK,
        [&](void** out)
        { return CallIDeserializableDeserialize(ToC<IDeserializable>(factory), ToC<IDeserializer>(reader), out); });
}

// As Take for iterators: they have no identifier of their own, and refuse even IObject.
template <class Iterator, class Call>
Ref<Iterator> TakeIterator(Trial& trial, const std::string& what, Call&& call)
{
    const auto given = Take<IObjectBase>(trial, what, TVX_OK, call);
    trial.Expect(!Query<IObject>(given), what + " to give an iterator", "an object that answers IObject");
    return Ref<Iterator>(static_cast<Iterator*>(given.Get()));
}

// The six slots of IObjectBase of an object with one reference, each by what it does.
void CheckBaseSlots(Trial& trial, IObjectBase& object, const std::string& name);

// The slots that ISerializable and IDeserializable have for a format identifier.
using GetFormatIdSlot = int32_t (*)(void* object, void** out);
void CheckFormatIdSlot(Trial& trial, void* object, GetFormatIdSlot getFormatId, const char* expected);

// The slot of Serialize: what comes to the writer.
void CheckSerializeSlot(Trial& trial, void* object, const Texts& expected);

// A slot that subscribes to the event, and unsubscribes one handler only. The trigger has to fire the event once,
// and tells whether it did what it is for.
using SubscribeSlot = void (*)(void* object, void* handler, uint64_t cookie, bool subscribe);
void CheckSubscribeSlot(Trial& trial, void* object, SubscribeSlot subscribe, const char* event,
                        const std::function<bool()>& trigger);

// A slot that fires the event, with the argument for its param. The handler hears that event of the object.
using FireSlot = void (*)(void* object, void* argument);
void CheckFireSlot(Trial& trial, void* object, FireSlot fire, void* argument, const char* event,
                   const RecordingHandler& handler);

}  // namespace tvx::check
