// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/Objects.h"
#include "Tool/Checks/TextSerializer.h"
#include "Tool/Fuzz/Listeners.h"
#include "Tool/Fuzz/Refusals.h"
#include "Tool/Fuzz/Sequences.h"
#include "Tool/Fuzz/TableWalker.h"

#include <cstdint>
#include <iterator>
#include <map>
#include <string>

namespace tvx::fuzz
{

// A settings map beside an ordered map of texts, with its batch mode and the events that are due.
class SettingsMapModel final : public TableWalker<SettingsMapModel>
{
public:
    using Entries = std::map<std::string, std::string>;

    explicit SettingsMapModel(check::Trial& trial);

    void SetString(const Step& step);
    void SetInt(const Step& step);
    void SetDouble(const Step& step);
    void SetAnyDouble(const Step& step);
    void SetSubMap(const Step& step);
    void SetForeignSubMap(const Step& step);
    void SetBatchUpdatingMode(const Step& step);
    void NestBatchUpdates(const Step& step);

    void GetString(const Step& step);
    void GetInt(const Step& step);
    void GetDouble(const Step& step);
    void GetAbsent(const Step& step);
    void HasKey(const Step& step);
    void GetSubMap(const Step& step);
    void Clone(const Step& step);
    void SettleClone(const Step& step);
    void SettleSubMap(const Step& step);
    void IterateNoSubMaps(const Step& step);
    void BeginIterating(const Step& step);
    void MoveIterator(const Step& step);
    void Refuse(const Step& step);
    void AskAsObject(const Step& step);

    void SetObject(const Step& step);
    void GetObject(const Step& step);

    void Subscribe(const Step& step);
    void Unsubscribe(const Step& step);
    void SubscribeNull(const Step& step);
    void UnsubscribeNull(const Step& step);

    void Serialize(const Step& step);
    void ReadBack(const Step& step);
    void ReadDamaged(const Step& step);
    void GoOnWithClone(const Step& step);
    void GoOnWithSubMap(const Step& step);
    void End(const Step& step);

    void Compare() override;

    static constexpr Operation<SettingsMapModel> Operations[] = {
        {"set-string", &SettingsMapModel::SetString},
        {"set-int", &SettingsMapModel::SetInt},
        {"set-double", &SettingsMapModel::SetDouble},
        {"get-string", &SettingsMapModel::GetString},
        {"get-int", &SettingsMapModel::GetInt},
        {"has-key", &SettingsMapModel::HasKey},
        {"get-sub-map", &SettingsMapModel::GetSubMap},
        {"set-sub-map", &SettingsMapModel::SetSubMap},
        {"clone", &SettingsMapModel::Clone},
        {"set-batch-updating-mode", &SettingsMapModel::SetBatchUpdatingMode},
        {"iterate-no-sub-maps", &SettingsMapModel::IterateNoSubMaps},
        {"set-any-double", &SettingsMapModel::SetAnyDouble},
        {"get-double", &SettingsMapModel::GetDouble},
        {"get-absent", &SettingsMapModel::GetAbsent},
        {"set-foreign-sub-map", &SettingsMapModel::SetForeignSubMap},
        {"nest-batch-updates", &SettingsMapModel::NestBatchUpdates},
        {"settle-clone", &SettingsMapModel::SettleClone},
        {"settle-sub-map", &SettingsMapModel::SettleSubMap},
        {"begin-iterating", &SettingsMapModel::BeginIterating},
        {"move-iterator", &SettingsMapModel::MoveIterator},
        {"refuse", &SettingsMapModel::Refuse},
        {"ask-as-object", &SettingsMapModel::AskAsObject},
        {"set-object", &SettingsMapModel::SetObject},
        {"get-object", &SettingsMapModel::GetObject},
        {"subscribe", &SettingsMapModel::Subscribe},
        {"unsubscribe", &SettingsMapModel::Unsubscribe},
        {"subscribe-null", &SettingsMapModel::SubscribeNull},
        {"unsubscribe-null", &SettingsMapModel::UnsubscribeNull},
        {"serialize", &SettingsMapModel::Serialize},
        {"read-back", &SettingsMapModel::ReadBack},
        {"read-damaged", &SettingsMapModel::ReadDamaged},
        {"go-on-with-clone", &SettingsMapModel::GoOnWithClone},
        {"go-on-with-sub-map", &SettingsMapModel::GoOnWithSubMap},
        {"end", &SettingsMapModel::End},
    };

private:
    // Whether the map is in batch updating mode, and whether a write is still to be told.
    struct State
    {
        bool batch = true;
        bool pending = false;
    };

    // Where an iterator stands, and whether it leaves out what begins with the key that it comes from.
    struct Place
    {
        Entries::const_iterator entry;
        bool skips;
    };

    // Goes on with a map that nobody has subscribed to.
    void Begin(Ref<ISimpleMap5> map, Entries entries, State state);

    void Gives(const char* what, Result came, Result expected) { trial_.Gives(what, came, expected); }

    void Write(const std::string& key, const std::string& text);
    void SwitchTo(bool mode);
    void WriteBelow(const std::string& path, const Entries& entries);
    void WriteWithin(std::uint32_t depth, const Step& step);
    Entries GetBelow(const std::string& path) const;
    Entries Read(ISimpleMap& map);
    Ref<ISimpleMap> MakeClone();
    Ref<ISimpleMap> MakeSubMap(const char* path);
    void Settles(const Ref<ISimpleMap>& map, State state);
    void CompareIterator();

    std::string DescribeFromWithin(const check::SeenEvent& event) const;
    Ref<IDeserializable> GetReading();

    template <class Change>
    Ref<IObjectBase> ReadCopy(Entries& entries, Change&& change);

    check::Trial& trial_;
    check::TextSerializer serializer_;
    Ref<check::SerializableObject> object_ = MakeRef<check::SerializableObject>();
    Ref<IFactory> factory_;
    Listeners<ISimpleMap5> listeners_;
    Ref<ISimpleMap5> map_;
    Entries model_;
    State state_;
    Ref<ISimpleMapIterator> iterator_;  // must not outlive the map
    Place place_{};
};

// Keys and paths that lie below, beside and in front of one another, and texts.
const char* ChooseSettingsKey(std::uint32_t number);
const char* ChooseSettingsPath(std::uint32_t number);
const char* ChooseSettingsText(std::uint32_t number);

}  // namespace tvx::fuzz
