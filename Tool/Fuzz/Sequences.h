// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/Serialising.h"
#include "Tool/Fuzz/AnyObject.h"
#include "Tool/Fuzz/Refusals.h"
#include "Tool/Fuzz/Walk.h"

#include <string>
#include <variant>
#include <vector>

namespace tvx::fuzz
{

// How one item of a sequence is read: "ReadString" or "ReadObject".
using Reads = std::vector<std::string>;

// What the reading of a sequence has to come to.
struct DueReading
{
    std::size_t entries = 0;  // that are read whole
    bool fails = false;
    Macros macros = Silent;
    check::Lines calls = {"BeginArray Values"};

    void Fail(const Macros& report)
    {
        fails = true;
        macros = report;
    }
};

// Whether a read takes the item: a text, or an object, which may be null.
inline bool IsTaken(const std::string& read, const check::ScriptedReader::Value& item)
{
    return read == "ReadString" ? std::holds_alternative<std::string>(item)
                                : std::holds_alternative<Ref<IObjectBase>>(item);
}

// Reads one entry as the module has to; whether it goes on.
inline bool ForeseeEntry(const std::vector<check::ScriptedReader::Value>& items, std::size_t first, const Reads& reads,
                         DueReading& due)
{
    bool hasNull = false;
    for (std::size_t read = 0; read < reads.size(); ++read)
    {
        due.calls.push_back(reads[read]);
        if (first + read >= items.size() || !IsTaken(reads[read], items[first + read]))
        {
            due.Fail(FailIfFailed);
            return false;
        }
        const auto* const object = std::get_if<Ref<IObjectBase>>(&items[first + read]);
        hasNull = hasNull || (object != nullptr && !*object);
    }
    if (hasNull)
        due.Fail(FailIfNull);
    return !hasNull;
}

// What becomes of the items when each entry takes these reads: the first that fails or gives null ends it, and what is
// no whole entry at the end is not read.
inline DueReading Foresee(const check::ScriptedReader& reader, const Reads& reads)
{
    DueReading due;
    if (TVX_FAILED(reader.beginResult))
    {
        due.Fail(FailIfFailed);
        return due;
    }
    const auto announced =
        reader.announced == check::ScriptedReader::Unannounced ? reader.items.size() : std::size_t{reader.announced};
    for (; due.entries < announced / reads.size(); ++due.entries)
    {
        if (!ForeseeEntry(reader.items, due.entries * reads.size(), reads, due))
            return due;
    }
    due.calls.emplace_back("EndArray");
    return due;
}

// A document that somebody else damaged: it ends early, announces another number of items, holds an item of another
// type, or cannot even be begun. Sometimes nothing is wrong with it.
inline void Damage(check::ScriptedReader& reader, const Step& step)
{
    auto& items = reader.items;
    const auto place = step.second % (items.size() + 1);
    switch (step.first % 6)
    {
    case 0: items.resize(place); break;
    case 1: reader.announced = static_cast<std::uint32_t>(place); break;
    case 2: reader.announced = static_cast<std::uint32_t>(items.size()) + 1 + step.second % 3; break;
    case 3: reader.beginResult = -42; break;
    case 4:
        if (place < items.size())
            items[place] = std::int32_t{7};
        break;
    default: break;
    }
}

// Reads by the factory, and expects what is due. Null when that is a failure.
inline Ref<IObjectBase> ReadSequence(check::Trial& trial, IDeserializable& factory, check::ScriptedReader& reader,
                                     const DueReading& due)
{
    const auto mark = MakeRef<check::BareObject>();
    IObjectBase* out = mark.Get();
    check::ReportsInOrder(trial, "Deserialize", GetLines(due.macros), due.fails ? TVX_E_FAIL : TVX_OK,
                          [&] { return factory.Deserialize(&reader, &out); });
    auto calls = reader.calls;
    if (due.fails && !calls.empty() && calls.back() == "EndArray")
        calls.pop_back();  // whether a sequence is ended after a failure is not the same for all that read
    trial.Equal("the calls on the reader", calls, due.calls);
    trial.Equal("the references on the reader", reader.GetRefCount(), 1u);
    if (due.fails)
    {
        trial.Same("the out of a Deserialize that fails", out, mark.Get());
        return nullptr;
    }
    trial.Expect(out != nullptr && out != mark.Get(), "Deserialize to give an object", "none");
    auto object = Ref<IObjectBase>::Adopt(out);
    CompareCount(trial, "what Deserialize gives", *object, 1);
    return object;
}

// What an object writes is read after something was done to it.
struct Reread
{
    Ref<IObjectBase> object;  // null where that is due to fail
    std::size_t entries;      // that are due
};

template <class Change>
Reread ReadWritten(check::Trial& trial, const Ref<IObject>& object, IDeserializable& factory, const Reads& reads,
                   Change&& change)
{
    const auto writer = MakeRef<check::CopyingWriter>();
    const auto face = trial.QueryAs<ISerializable>(object, "the object to write");
    trial.Gives("Serialize", face->Serialize(writer.Get()), TVX_OK);
    change(*writer->reader);
    const auto due = Foresee(*writer->reader, reads);
    return {ReadSequence(trial, factory, *writer->reader, due), due.entries};
}

// The face that writes is another one of the same object, and counts with it.
template <class Face>
void AskForWriting(check::Trial& trial, const std::string& what, const Ref<Face>& object)
{
    const auto writing = trial.QueryAs<ISerializable>(object, what);
    CompareCount(trial, what + " with another face", *object, 2);
    trial.Same("the first face of " + what, trial.QueryAs<Face>(writing, what).Get(), object.Get());
}

}  // namespace tvx::fuzz
