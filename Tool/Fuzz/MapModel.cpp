// SPDX-License-Identifier: MIT
#include "Tool/Checks/Objects.h"
#include "Tool/Fuzz/AnyObject.h"
#include "Tool/Fuzz/ObjectPool.h"
#include "Tool/Fuzz/Refusals.h"
#include "Tool/Fuzz/Sequences.h"
#include "Tool/Fuzz/TableWalker.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <string>

namespace tvx::fuzz
{

namespace
{

constexpr const char* Keys[] = {"", "A", "a", "ab", "abc", "\xFF", "b", "a\\b"};

const char* ChooseKey(std::uint32_t number)
{
    return Keys[number % std::size(Keys)];
}

// What refused calls are made with.
struct Subject
{
    Ref<IMap> map;
    Ref<ISerializable> writing;
    Ref<IMapFactory> factory;
    Ref<IDeserializable> reading;
    const char* key;
    IObject* object;
    Ref<check::ScriptedReader> reader = MakeRef<check::ScriptedReader>();

    struct Outs
    {
        IObjectBase* object;

        bool operator==(const Outs&) const = default;
    };
    Outs outs = {object};
};

constexpr Refusal<Subject> Refusals[] = {
    {"SetValue of a null key", NullPointer, TVX_E_POINTER,
     [](Subject& it) { return it.map->SetValue(nullptr, it.object); }},
    {"SetValue of a null key and a null value", NullPointer, TVX_E_POINTER,
     [](Subject& it) { return it.map->SetValue(nullptr, nullptr); }},
    {"GetValue with a null out", NullPointer, TVX_E_POINTER,
     [](Subject& it) { return it.map->GetValue(it.key, nullptr); }},
    {"GetValue of a null key with a null out", NullPointer, TVX_E_POINTER,
     [](Subject& it) { return it.map->GetValue(nullptr, nullptr); }},
    {"LookupValue with a null out", NullPointer, TVX_E_POINTER,
     [](Subject& it) { return it.map->LookupValue(it.key, nullptr); }},
    {"LookupValue of a null key with a null out", NullPointer, TVX_E_POINTER,
     [](Subject& it) { return it.map->LookupValue(nullptr, nullptr); }},
    {"Serialize with a null writer", NullPointer, TVX_E_POINTER,
     [](Subject& it) { return it.writing->Serialize(nullptr); }},
    {"GetFormatId of a map with a null out", Silent, TVX_E_POINTER,
     [](Subject& it) { return it.writing->GetFormatId(nullptr); }},
    {"GetFormatId of the factory with a null out", Silent, TVX_E_POINTER,
     [](Subject& it) { return it.reading->GetFormatId(nullptr); }},
    {"CreateMap with a null out", Silent, TVX_E_POINTER, [](Subject& it) { return it.factory->CreateMap(nullptr); }},
    {"Deserialize with a null reader", NullPointer, TVX_E_POINTER,
     [](Subject& it) { return it.reading->Deserialize(nullptr, &it.outs.object); }},
    {"Deserialize with a null out", NullPointer, TVX_E_POINTER,
     [](Subject& it) { return it.reading->Deserialize(it.reader.Get(), nullptr); }},
};

// A dictionary beside a map from texts to the numbers of objects.
class MapModel final : public TableWalker<MapModel>
{
public:
    explicit MapModel(check::Trial& trial)
        : trial_(trial),
          factory_(trial.Get<IMapFactory>(check::MapExport)),
          map_(check::MakeMap(trial))
    {
    }

    void SetValue(const Step& step)
    {
        const auto* const key = ChooseKey(step.first);
        const auto object = ObjectPool::Choose(step.second);
        trial_.Gives("SetValue", map_->SetValue(key, objects_.Get(object)), TVX_OK);
        model_[key] = object;
    }

    void GetValue(const Step& step) { Read(&IMap::GetValue, ChooseKey(step.first)); }

    void LookupValue(const Step& step) { Read(&IMap::LookupValue, ChooseKey(step.first)); }

    // Whoever holds a value does not mind that it is replaced meanwhile.
    void ReplaceWhileHeld(const Step& step)
    {
        const auto* const key = ChooseKey(step.first);
        Ref<IObject> held;
        static_cast<void>(map_->GetValue(key, held.Receive()));
        SetValue(step);
        if (held)
            trial_.Expect(held->GetRefCount() > 0, "a value that is held to live on", "no reference on it");
    }

    void Serialize(const Step&) { check::ExpectWritten(trial_, "a map", map_, GetDueCalls()); }

    void StartAnew(const Step& step)
    {
        if (step.first % 16 != 0)
            return;
        map_ = check::MakeMap(trial_);
        model_.clear();
    }

    // What the writer answers is not looked at.
    void SerializeInVain(const Step&) { check::ExpectWrittenByAFailingWriter(trial_, "a map", map_, GetDueCalls()); }

    void Refuse(const Step& step)
    {
        TryRefused(trial_, Refusals, step.first,
                   Subject{map_, trial_.QueryAs<ISerializable>(map_, "a map"), factory_, GetReading(),
                           ChooseKey(step.second), objects_.Get(1)});
    }

    // It is absent, also while the empty key is there.
    void GetNullKey(const Step& step)
    {
        const auto lookUp = step.first % 2 == 0 ? &IMap::GetValue : &IMap::LookupValue;
        IObject* out = objects_.Get(1);
        trial_.Gives("a lookup of a null key", (map_.Get()->*lookUp)(nullptr, &out), TVX_S_NOKEY);
        trial_.Same("the out of a lookup of a null key", out, nullptr);
    }

    // The reference on it outlives that of the map, if the value is replaced meanwhile.
    void KeepValue(const Step& step)
    {
        Ref<IObject> value;
        static_cast<void>(map_->GetValue(ChooseKey(step.first), value.Receive()));
        objects_.Keep(step.second, Ref<IObjectBase>(value));
    }

    void AskAsObject(const Step& step)
    {
        trial_.Same("the IObject of a map", trial_.QueryAs<IObject>(map_, "a map").Get(), map_.Get());
        AskForWriting(trial_, "a map", map_);
        fuzz::AskAsObject(trial_, "a map", map_, step.first);
    }

    // The copy takes the place of the map now and then. Null values are written, but cannot be read.
    void ReadBack(const Step& step)
    {
        const auto read = ReadCopy([](check::ScriptedReader&) {});
        if (read && step.first % 4 == 0)
            map_ = trial_.QueryAs<IMap>(read, "a copy");
    }

    void ReadDamaged(const Step& step)
    {
        static_cast<void>(ReadCopy([&](check::ScriptedReader& reader) { Damage(reader, step); }));
    }

    // The values are released with the map.
    void End(const Step& step)
    {
        if (step.first % 16 != 0)
            return;
        EndBeforeWitnesses(trial_, "a map", map_);
        model_.clear();
        map_ = check::MakeMap(trial_);
    }

    void Compare() override
    {
        for (const auto* const key : Keys)
            Read(&IMap::GetValue, key);
        CompareCount(trial_, "a map", *map_, 1);
        objects_.Compare(trial_,
                         [&](std::size_t object) {
                             return std::count_if(model_.begin(), model_.end(),
                                                  [&](const auto& entry) { return entry.second == object; });
                         });
    }

    static constexpr Operation<MapModel> Operations[] = {
        {"set-value", &MapModel::SetValue},
        {"get-value", &MapModel::GetValue},
        {"lookup-value", &MapModel::LookupValue},
        {"replace-while-held", &MapModel::ReplaceWhileHeld},
        {"serialize", &MapModel::Serialize},
        {"start-anew", &MapModel::StartAnew},
        {"refuse", &MapModel::Refuse},
        {"get-null-key", &MapModel::GetNullKey},
        {"keep-value", &MapModel::KeepValue},
        {"serialize-in-vain", &MapModel::SerializeInVain},
        {"read-back", &MapModel::ReadBack},
        {"read-damaged", &MapModel::ReadDamaged},
        {"ask-as-object", &MapModel::AskAsObject},
        {"end", &MapModel::End},
    };

private:
    // What stands in the out before is written over, also where nothing is found.
    void Read(Result (IMap::*operation)(const char*, IObject**), const char* key)
    {
        const auto found = model_.find(key);
        const bool present = found != model_.end();
        IObject* out = objects_.Get(1);
        trial_.Gives("GetValue", (map_.Get()->*operation)(key, &out), present ? TVX_S_VALUE : TVX_S_NOKEY);
        trial_.Same("the value", out, present ? objects_.Get(found->second) : nullptr);
        static_cast<void>(Ref<IObject>::Adopt(out));
    }

    Ref<IDeserializable> GetReading() { return trial_.QueryAs<IDeserializable>(factory_, "the factory of maps"); }

    check::Lines GetDueCalls() const
    {
        check::Lines due = {"BeginArray Values"};
        for (const auto& [key, object] : model_)
        {
            due.push_back("WriteString " + key);
            due.emplace_back("WriteObject");
        }
        due.emplace_back("EndArray");
        return due;
    }

    // Reads what the map writes after something was done to it, and compares. Null when it cannot be read.
    template <class Change>
    Ref<IObjectBase> ReadCopy(Change&& change)
    {
        auto read = ReadWritten(trial_, map_, *GetReading(), {"ReadString", "ReadObject"}, change);
        if (read.object)
            CompareCopy(*trial_.QueryAs<IMap>(read.object, "a copy"), read.entries);
        return read.object;
    }

    // The first entries are there and the others are not.
    void CompareCopy(IMap& copy, std::size_t entries)
    {
        std::size_t place = 0;
        for (const auto& [key, object] : model_)
        {
            const bool present = place++ < entries;
            Ref<IObject> value;
            trial_.Gives("GetValue of a copy", copy.GetValue(key.c_str(), value.Receive()),
                         present ? TVX_S_VALUE : TVX_S_NOKEY);
            trial_.Same("the value in a copy", value.Get(), present ? objects_.Get(object) : nullptr);
        }
    }

    check::Trial& trial_;
    ObjectPool objects_;
    Ref<IMapFactory> factory_;
    Ref<IMap> map_;
    std::map<std::string, std::size_t> model_;
};

constexpr auto Names = GetNames(MapModel::Operations);

}  // namespace

const Walk MapWalk = {"map", check::MapExport, Names, &MapModel::Start};

}  // namespace tvx::fuzz
