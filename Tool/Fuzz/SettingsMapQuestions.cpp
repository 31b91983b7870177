// SPDX-License-Identifier: MIT
#include "Tool/Fuzz/AnyObject.h"
#include "Tool/Fuzz/SettingsMapModel.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace tvx::fuzz
{

namespace
{

std::int32_t ParseInt(const std::string& text)
{
    const auto value = std::strtoll(text.c_str(), nullptr, 10);
    return static_cast<std::int32_t>(std::min<long long>(std::max<long long>(value, INT32_MIN), INT32_MAX));
}

}  // namespace

// Each text is an object of its own that belongs to the caller.
void SettingsMapModel::GetString(const Step& step)
{
    const auto* const key = ChooseSettingsKey(step.first);
    const auto found = model_.find(key);
    Ref<IString> text;
    Gives("GetString", map_->GetString(key, text.Receive()), found == model_.end() ? TVX_S_NOKEY : TVX_S_VALUE);
    trial_.Expect(static_cast<bool>(text) == (found != model_.end()), "a text exactly where the key is",
                  text ? "a text" : "none");
    if (!text)
        return;
    trial_.Equal("the text of GetString", text->GetText(), found->second);
    CompareCount(trial_, "the text of GetString", *text, 1);
}

void SettingsMapModel::GetInt(const Step& step)
{
    const auto* const key = ChooseSettingsKey(step.first);
    const auto found = model_.find(key);
    std::int32_t value = 12345;
    Gives("GetInt", map_->GetInt(key, &value), found == model_.end() ? TVX_S_NOKEY : TVX_OK);
    trial_.Equal("the number of GetInt", value, found == model_.end() ? 12345 : ParseInt(found->second));
}

void SettingsMapModel::GetDouble(const Step& step)
{
    const auto* const key = ChooseSettingsKey(step.first);
    const auto found = model_.find(key);
    double value = 0.625;
    Gives("GetDouble", map_->GetDouble(key, &value), found == model_.end() ? TVX_S_NOKEY : TVX_OK);
    trial_.Equal("the number of GetDouble", value,
                 found == model_.end() ? 0.625 : std::strtod(found->second.c_str(), nullptr));
}

// Of a key that nobody writes, near to those that are written.
void SettingsMapModel::GetAbsent(const Step& step)
{
    const auto key = ChooseSettingsKey(step.first) + std::string("\x01");
    const auto text = MakeRef<host::HostString>("mark");
    LeavesOutAlone(trial_, "GetString of an absent key", TVX_S_NOKEY, static_cast<IString*>(text.Get()),
                   [&](IString** out) { return map_->GetString(key.c_str(), out); });
    LeavesOutAlone(trial_, "GetObject of an absent key", TVX_S_NOKEY, static_cast<IObject*>(object_.Get()),
                   [&](IObject** out) { return map_->GetObject(key.c_str(), out); });
    bool has = true;
    Gives("HasKey of an absent key", map_->HasKey(key.c_str(), &has), TVX_OK);
    trial_.Equal("the answer of HasKey of an absent key", has, false);
}

void SettingsMapModel::HasKey(const Step& step)
{
    const auto* const key = ChooseSettingsKey(step.first);
    bool has = false;
    Gives("HasKey", map_->HasKey(key, &has), TVX_OK);
    trial_.Equal("the answer of HasKey", has, model_.count(key) == 1);
}

void SettingsMapModel::GetSubMap(const Step& step)
{
    static_cast<void>(MakeSubMap(ChooseSettingsPath(step.first)));
}

void SettingsMapModel::Clone(const Step&)
{
    static_cast<void>(MakeClone());
}

void SettingsMapModel::SettleClone(const Step&)
{
    Settles(MakeClone(), state_);
}

void SettingsMapModel::SettleSubMap(const Step& step)
{
    const auto* const path = ChooseSettingsPath(step.first);
    Settles(MakeSubMap(path), {true, !GetBelow(path).empty()});
}

void SettingsMapModel::IterateNoSubMaps(const Step&)
{
    const auto iterator = check::Make<ISimpleMapIterator>(
        trial_, "GetIteratorNoSubMaps", [&](ISimpleMapIterator** out) { return map_->GetIteratorNoSubMaps(out); });
    for (auto entry = model_.begin(); entry != model_.end();)
    {
        const auto& key = entry->first;
        trial_.Equal("GetKey", iterator->GetKey(), key);
        do
            ++entry;
        while (entry != model_.end() && entry->first.starts_with(key));
        Gives("Next", iterator->Next(), entry == model_.end() ? TVX_E_FAIL : TVX_OK);
    }
    trial_.Same("GetKey at the end", iterator->GetKey(), nullptr);
}

// An iterator that stays while the map is written.
void SettingsMapModel::BeginIterating(const Step& step)
{
    place_ = {model_.begin(), step.first % 2 == 1};
    const auto begin = place_.skips ? &ISimpleMap5::GetIteratorNoSubMaps : &ISimpleMap5::GetIterator;
    iterator_ = check::Make<ISimpleMapIterator>(trial_, "an iterator",
                                                [&](ISimpleMapIterator** out) { return (map_.Get()->*begin)(out); });
    CompareIterator();
}

// One that is at the end stays there, also when something is written behind it.
void SettingsMapModel::MoveIterator(const Step&)
{
    if (!iterator_)
        return;
    if (auto& entry = place_.entry; entry != model_.end())
    {
        const auto& key = entry->first;
        do
            ++entry;
        while (place_.skips && entry != model_.end() && entry->first.starts_with(key));
    }
    Gives("Next", iterator_->Next(), place_.entry == model_.end() ? TVX_E_FAIL : TVX_OK);
    CompareIterator();
}

void SettingsMapModel::AskAsObject(const Step& step)
{
    trial_.Same("the ISimpleMap of a map", trial_.QueryAs<ISimpleMap>(map_, "a map").Get(), map_.Get());
    AskForWriting(trial_, "a map", map_);
    fuzz::AskAsObject(trial_, "a map", map_, step.first);
}

void SettingsMapModel::Subscribe(const Step& step)
{
    listeners_.Subscribe(step.first, step.first / 2, step.second);
}

void SettingsMapModel::Unsubscribe(const Step& step)
{
    listeners_.Unsubscribe(step.first, step.first / 2, step.second);
}

void SettingsMapModel::SubscribeNull(const Step& step)
{
    listeners_.SubscribeNull(step.first, step.second);
}

// Seldom, or nobody would hear much.
void SettingsMapModel::UnsubscribeNull(const Step& step)
{
    if (step.second % 4 == 0)
        listeners_.UnsubscribeNull(step.first, step.second);
}

// What a copy holds; it is in the same state.
Ref<ISimpleMap> SettingsMapModel::MakeClone()
{
    const auto clone = check::Make<ISimpleMap>(trial_, "Clone", [&](ISimpleMap** out) { return map_->Clone(out); });
    trial_.Expect(Read(*clone) == model_, "the clone to hold the same entries", "other entries");
    CompareCount(trial_, "a clone", *clone, 1);
    bool mode = !state_.batch;
    const auto latest = trial_.QueryAs<ISimpleMap5>(clone, "a clone");
    Gives("GetBatchUpdatingMode of the clone", latest->GetBatchUpdatingMode(&mode), TVX_OK);
    trial_.Equal("the batch updating mode of the clone", mode, state_.batch);
    return clone;
}

// Also an empty one is given.
Ref<ISimpleMap> SettingsMapModel::MakeSubMap(const char* path)
{
    const auto due = GetBelow(path);
    Ref<ISimpleMap> below;
    Gives("GetSubMap", map_->GetSubMap(path, below.Receive()), due.empty() ? TVX_S_NOKEY : TVX_S_VALUE);
    trial_.Expect(static_cast<bool>(below), "GetSubMap to give a map", "null");
    trial_.Expect(Read(*below) == due, "the sub-map to hold what lies below the path", "other entries");
    CompareCount(trial_, "a sub-map", *below, 1);
    return below;
}

// What a map in a state tells a new handler when its batch updating mode goes off.
void SettingsMapModel::Settles(const Ref<ISimpleMap>& map, State state)
{
    const auto handler = MakeRef<check::RecordingHandler>();
    map->SubscribeChanged(handler.Get(), 0, true);
    map->SubscribeBatchUpdatingModeChanged(handler.Get(), 0, true);
    Gives("SetBatchUpdatingMode", map->SetBatchUpdatingMode(false), TVX_OK);
    std::vector<std::string> due;
    if (state.batch)
        due.emplace_back("BatchUpdatingModeChanged");
    if (state.batch && state.pending)
        due.emplace_back("Changed");
    trial_.Equal("the events of a map that settles", handler->GetNames(), due);
}

// Everything that a map holds; one that goes on for too long is not read to its end.
SettingsMapModel::Entries SettingsMapModel::Read(ISimpleMap& map)
{
    Entries entries;
    const auto iterator = check::Make<ISimpleMapIterator>(
        trial_, "GetIterator", [&](ISimpleMapIterator** out) { return map.GetIterator(out); });
    bool end = true;
    for (Gives("IsEnd", iterator->IsEnd(&end), TVX_OK); !end; Gives("IsEnd", iterator->IsEnd(&end), TVX_OK))
    {
        const auto* const key = iterator->GetKey();
        const auto* const text = iterator->GetValue();
        trial_.Expect(key != nullptr && text != nullptr, "an entry to have a key and a value", "null");
        trial_.Expect(entries.emplace(key, text).second, "each key once", key);
        static_cast<void>(iterator->Next());
    }
    return entries;
}

void SettingsMapModel::CompareIterator()
{
    if (!iterator_)
        return;
    const bool isEnd = place_.entry == model_.end();
    bool end = !isEnd;
    Gives("IsEnd", iterator_->IsEnd(&end), TVX_OK);
    trial_.Equal("the answer of IsEnd", end, isEnd);
    trial_.Equal("GetKey of an iterator", iterator_->GetKey(), isEnd ? nullptr : place_.entry->first.c_str());
    trial_.Equal("GetValue of an iterator", iterator_->GetValue(), isEnd ? nullptr : place_.entry->second.c_str());
    CompareCount(trial_, "an iterator", *iterator_, 1);
}

}  // namespace tvx::fuzz
