// SPDX-License-Identifier: MIT
#include "Tool/Checks/Objects.h"
#include "Tool/Fuzz/ObjectPool.h"
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

// A dictionary beside a map from texts to the numbers of objects.
class MapModel final : public TableWalker<MapModel>
{
public:
    explicit MapModel(check::Trial& trial) : trial_(trial), map_(check::MakeMap(trial)) {}

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

    void Serialize(const Step&)
    {
        const auto writer = MakeRef<check::RecordingWriter>();
        const auto face = trial_.QueryAs<ISerializable>(map_, "a map");
        trial_.Gives("Serialize", face->Serialize(writer.Get()), TVX_OK);
        std::vector<std::string> due = {"BeginArray Values"};
        for (const auto& [key, object] : model_)
        {
            due.push_back("WriteString " + key);
            due.emplace_back("WriteObject");
        }
        due.emplace_back("EndArray");
        trial_.Equal("what Serialize writes", writer->calls, due);
    }

    void StartAnew(const Step& step)
    {
        if (step.first % 16 != 0)
            return;
        map_ = check::MakeMap(trial_);
        model_.clear();
    }

    void Compare() override
    {
        for (const auto* const key : Keys)
            Read(&IMap::GetValue, key);
        objects_.Compare(trial_,
                         [&](std::size_t object) {
                             return std::count_if(model_.begin(), model_.end(),
                                                  [&](const auto& entry) { return entry.second == object; });
                         });
    }

    static constexpr Operation<MapModel> Operations[] = {
        {"set-value", &MapModel::SetValue},       {"get-value", &MapModel::GetValue},
        {"lookup-value", &MapModel::LookupValue}, {"replace-while-held", &MapModel::ReplaceWhileHeld},
        {"serialize", &MapModel::Serialize},      {"start-anew", &MapModel::StartAnew},
    };

private:
    void Read(Result (IMap::*operation)(const char*, IObject**), const char* key)
    {
        const auto found = model_.find(key);
        const bool present = found != model_.end();
        Ref<IObject> value(objects_.Get(1));
        trial_.Gives("GetValue", (map_.Get()->*operation)(key, value.Receive()), present ? TVX_S_VALUE : TVX_S_NOKEY);
        trial_.Same("the value", value.Get(), present ? objects_.Get(found->second) : nullptr);
    }

    check::Trial& trial_;
    ObjectPool objects_;
    Ref<IMap> map_;
    std::map<std::string, std::size_t> model_;
};

constexpr auto Names = GetNames(MapModel::Operations);

}  // namespace

const Walk MapWalk = {"map", check::MapExport, Names, &MapModel::Start};

}  // namespace tvx::fuzz
