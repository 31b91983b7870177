// SPDX-License-Identifier: MIT
#include "Tool/Fuzz/AnyObject.h"
#include "Tool/Fuzz/SettingsMapModel.h"

#include <iterator>
#include <utility>

namespace tvx::fuzz
{

namespace
{

// What refused calls are made with.
struct Subject
{
    Ref<ISimpleMap5> map;
    Ref<ISerializable> writing;
    Ref<IFactory> factory;
    Ref<IDeserializable> reading;
    Ref<ISimpleMapIterator> iterator;
    const char* key;
    Ref<check::ProbeObject> object = MakeRef<check::ProbeObject>();  // cannot be serialised
    Ref<IString> text = MakeRef<host::HostString>("mark");
    Ref<check::ScriptedReader> reader = MakeRef<check::ScriptedReader>();

    struct Outs
    {
        IObject* object;
        IObjectBase* read;
        IString* text;
        ISimpleMap* map;
        std::int32_t number = 4711;
        double real = 0.625;
        bool has = true;

        bool operator==(const Outs&) const = default;
    };
    Outs outs = {object.Get(), object.Get(), text.Get(), map.Get()};
};

constexpr Refusal<Subject> Refusals[] = {
    {"SetString of a null key", NullPointer, TVX_E_POINTER,
     [](Subject& it) { return it.map->SetString(nullptr, "text"); }},
    {"SetString of a null key and a null text", NullPointer, TVX_E_POINTER,
     [](Subject& it) { return it.map->SetString(nullptr, nullptr); }},
    {"SetString of a null text", Silent, TVX_E_POINTER, [](Subject& it) { return it.map->SetString(it.key, nullptr); }},
    {"SetInt of a null key", NullPointer, TVX_E_POINTER, [](Subject& it) { return it.map->SetInt(nullptr, 1); }},
    {"SetDouble of a null key", NullPointer, TVX_E_POINTER, [](Subject& it) { return it.map->SetDouble(nullptr, 1); }},
    {"GetString of a null key", NullPointer, TVX_E_POINTER,
     [](Subject& it) { return it.map->GetString(nullptr, &it.outs.text); }},
    {"GetString with a null out", NullPointer, TVX_E_POINTER,
     [](Subject& it) { return it.map->GetString(it.key, nullptr); }},
    {"GetInt of a null key", NullPointer, TVX_E_POINTER,
     [](Subject& it) { return it.map->GetInt(nullptr, &it.outs.number); }},
    {"GetInt with a null out", NullPointer, TVX_E_POINTER, [](Subject& it) { return it.map->GetInt(it.key, nullptr); }},
    {"GetDouble of a null key", NullPointer, TVX_E_POINTER,
     [](Subject& it) { return it.map->GetDouble(nullptr, &it.outs.real); }},
    {"GetDouble with a null out", NullPointer, TVX_E_POINTER,
     [](Subject& it) { return it.map->GetDouble(it.key, nullptr); }},
    {"GetIterator with a null out", Silent, TVX_E_POINTER, [](Subject& it) { return it.map->GetIterator(nullptr); }},
    {"GetIteratorNoSubMaps with a null out", Silent, TVX_E_POINTER,
     [](Subject& it) { return it.map->GetIteratorNoSubMaps(nullptr); }},
    {"IsEnd with a null out", NullPointer, TVX_E_POINTER, [](Subject& it) { return it.iterator->IsEnd(nullptr); }},
    {"GetSubMap of a null path", FailIfNull, TVX_E_FAIL,
     [](Subject& it) { return it.map->GetSubMap(nullptr, &it.outs.map); }},
    {"GetSubMap with a null out", FailIfNull, TVX_E_FAIL,
     [](Subject& it) { return it.map->GetSubMap(it.key, nullptr); }},
    {"SetSubMap of a null path", FailIfNull, TVX_E_FAIL,
     [](Subject& it) { return it.map->SetSubMap(nullptr, it.map.Get()); }},
    {"SetSubMap of a null source", FailIfNull, TVX_E_FAIL,
     [](Subject& it) { return it.map->SetSubMap(it.key, nullptr); }},
    {"HasKey of a null key", Silent, TVX_E_POINTER, [](Subject& it) { return it.map->HasKey(nullptr, &it.outs.has); }},
    {"HasKey with a null out", Precondition, TVX_E_PRECONDITION,
     [](Subject& it) { return it.map->HasKey(it.key, nullptr); }},
    {"HasKey of a null key with a null out", Precondition, TVX_E_PRECONDITION,
     [](Subject& it) { return it.map->HasKey(nullptr, nullptr); }},
    {"Clone with a null out", Precondition, TVX_E_PRECONDITION, [](Subject& it) { return it.map->Clone(nullptr); }},
    {"GetBatchUpdatingMode with a null out", Precondition, TVX_E_PRECONDITION,
     [](Subject& it) { return it.map->GetBatchUpdatingMode(nullptr); }},
    {"SetObject of null", FailIfNull, TVX_E_FAIL, [](Subject& it) { return it.map->SetObject(it.key, nullptr); }},
    {"SetObject of what cannot be serialised", FailIfNull, TVX_E_FAIL,
     [](Subject& it) { return it.map->SetObject(it.key, it.object.Get()); }},
    {"GetObject of a null key", NullPointerForwarded, TVX_E_POINTER,
     [](Subject& it) { return it.map->GetObject(nullptr, &it.outs.object); }},
    {"Serialize with a null writer", NullPointer, TVX_E_POINTER,
     [](Subject& it) { return it.writing->Serialize(nullptr); }},
    {"GetFormatId of a map with a null out", Silent, TVX_E_POINTER,
     [](Subject& it) { return it.writing->GetFormatId(nullptr); }},
    {"GetFormatId of the factory with a null out", Silent, TVX_E_POINTER,
     [](Subject& it) { return it.reading->GetFormatId(nullptr); }},
    {"Create with a null out", Silent, TVX_E_POINTER, [](Subject& it) { return it.factory->Create(nullptr); }},
    {"Deserialize with a null reader", NullPointer, TVX_E_POINTER,
     [](Subject& it) { return it.reading->Deserialize(nullptr, &it.outs.read); }},
    {"Deserialize with a null out", NullPointer, TVX_E_POINTER,
     [](Subject& it) { return it.reading->Deserialize(it.reader.Get(), nullptr); }},
};

constexpr Result OwnFailure = -42;

// What may go wrong at the imported serializer, and at which of its steps.
using Disturbance = Result& (*)(const check::TextSerializer& serializer);

constexpr Disturbance WritingDisturbances[] = {
    [](const check::TextSerializer& it) -> Result& { return it.factory->result; },
    [](const check::TextSerializer& it) -> Result& { return it.writer->objectResult; },
    [](const check::TextSerializer& it) -> Result& { return it.writer->endResult; },
    [](const check::TextSerializer& it) -> Result& { return it.writer->textResult; },
};

constexpr Disturbance ReadingDisturbances[] = {
    [](const check::TextSerializer& it) -> Result& { return it.factory->result; },
    [](const check::TextSerializer& it) -> Result& { return it.reader->objectResult; },
};

// As often as not something goes wrong; null where nothing does.
template <std::size_t Count>
Result* Disturb(const Disturbance (&disturbances)[Count], std::uint32_t number, const check::TextSerializer& serializer)
{
    return number % 2 == 0 ? nullptr : &(disturbances[number / 2 % Count](serializer) = OwnFailure);
}

}  // namespace

void SettingsMapModel::Refuse(const Step& step)
{
    TryRefused(trial_, Refusals, step.first,
               Subject{map_, trial_.QueryAs<ISerializable>(map_, "a map"), factory_, GetReading(),
                       check::Make<ISimpleMapIterator>(
                           trial_, "GetIterator", [&](ISimpleMapIterator** out) { return map_->GetIterator(out); }),
                       ChooseSettingsKey(step.second)});
}

// What the serializer makes of an object is a text like any other. Its failures are passed on, and nothing is written
// then.
void SettingsMapModel::SetObject(const Step& step)
{
    const auto* const key = ChooseSettingsKey(step.first);
    auto* const disturbed = Disturb(WritingDisturbances, step.second, serializer_);
    check::ReportsInOrder(trial_, "SetObject", GetLines(disturbed != nullptr ? Forwarded : Silent),
                          disturbed != nullptr ? OwnFailure : TVX_OK,
                          [&] { return map_->SetObject(key, object_.Get()); });
    if (disturbed != nullptr)
        *disturbed = TVX_OK;
    else
        Write(key, serializer_.text->GetText());
    trial_.Equal("the references left behind by SetObject", serializer_.CountReferencesLeft(), 0u);
    CompareCount(trial_, "an object that was written", static_cast<IObject&>(*object_), 1);
}

// Whatever text stands there is given to the reader.
void SettingsMapModel::GetObject(const Step& step)
{
    const auto* const key = ChooseSettingsKey(step.first);
    if (model_.count(key) == 0)
        return;
    auto* const disturbed = Disturb(ReadingDisturbances, step.second, serializer_);
    serializer_.reader->calls.clear();
    IObject* out = object_.Get();
    check::ReportsInOrder(trial_, "GetObject", GetLines(disturbed != nullptr ? Forwarded : Silent),
                          disturbed != nullptr ? OwnFailure : TVX_OK, [&] { return map_->GetObject(key, &out); });
    trial_.Same("the out of GetObject", out,
                disturbed != nullptr ? static_cast<IObject*>(object_.Get()) : serializer_.object.Get());
    if (disturbed != nullptr)
        *disturbed = TVX_OK;
    else
    {
        static_cast<void>(Ref<IObject>::Adopt(out));
        trial_.Equal("the calls on the reader", serializer_.reader->calls,
                     (check::Lines{"SetText " + model_[key], "Begin", "ReadNamedObject Object", "End"}));
        Gives("GetObject with a null out", map_->GetObject(key, nullptr), TVX_E_POINTER);
    }
    trial_.Equal("the references left behind by GetObject", serializer_.CountReferencesLeft(), 0u);
}

// What the writer answers is not looked at.
void SettingsMapModel::Serialize(const Step& step)
{
    check::Lines due = {"BeginArray Values"};
    for (const auto& [key, text] : model_)
    {
        due.push_back("WriteString " + key);
        due.push_back("WriteString " + text);
    }
    due.emplace_back("EndArray");
    if (step.first % 2 == 0)
        check::ExpectWritten(trial_, "a map", map_, due);
    else
        check::ExpectWrittenByAFailingWriter(trial_, "a map", map_, due);
}

// The copy takes the place of the map now and then.
void SettingsMapModel::ReadBack(const Step& step)
{
    Entries entries;
    const auto read = ReadCopy(entries, [](check::ScriptedReader&) {});
    const State state = {true, !entries.empty()};
    if (step.first % 4 == 0)
        Begin(trial_.QueryAs<ISimpleMap5>(read, "a copy"), std::move(entries), state);
    else
        Settles(trial_.QueryAs<ISimpleMap>(read, "a copy"), state);
}

void SettingsMapModel::ReadDamaged(const Step& step)
{
    Entries entries;
    static_cast<void>(ReadCopy(entries, [&](check::ScriptedReader& reader) { Damage(reader, step); }));
}

void SettingsMapModel::GoOnWithClone(const Step&)
{
    Begin(trial_.QueryAs<ISimpleMap5>(MakeClone(), "a clone"), model_, state_);
}

// Seldom, or every walk would end with a short map.
void SettingsMapModel::GoOnWithSubMap(const Step& step)
{
    const auto* const path = ChooseSettingsPath(step.first);
    auto entries = GetBelow(path);
    if (step.second % 4 == 0 && !entries.empty())
        Begin(trial_.QueryAs<ISimpleMap5>(MakeSubMap(path), "a sub-map"), std::move(entries), {true, true});
}

void SettingsMapModel::End(const Step& step)
{
    if (step.first % 16 != 0)
        return;
    iterator_ = nullptr;
    EndBeforeWitnesses(trial_, "a map", map_);
    Begin(check::MakeSimpleMap(trial_), {}, {});
}

Ref<IDeserializable> SettingsMapModel::GetReading()
{
    return trial_.QueryAs<IDeserializable>(factory_, "the factory of settings maps");
}

// Reads what the map writes after something was done to it, and gives the entries that are due. Null when it cannot be
// read.
template <class Change>
Ref<IObjectBase> SettingsMapModel::ReadCopy(Entries& entries, Change&& change)
{
    auto read = ReadWritten(trial_, map_, *GetReading(), {"ReadString", "ReadString"}, change);
    entries = {model_.begin(), std::next(model_.begin(), static_cast<std::ptrdiff_t>(read.entries))};
    if (read.object)
        trial_.Expect(Read(*trial_.QueryAs<ISimpleMap>(read.object, "a copy")) == entries,
                      "a copy to hold what was read", "other entries");
    return read.object;
}

}  // namespace tvx::fuzz
