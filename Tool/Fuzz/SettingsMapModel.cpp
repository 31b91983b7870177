// SPDX-License-Identifier: MIT
#include "Tool/Fuzz/SettingsMapModel.h"

#include "Tool/Checks/ForwardingMap.h"
#include "Tool/Fuzz/AnyObject.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <utility>

namespace tvx::fuzz
{

namespace
{

constexpr const char* Keys[] = {"",    "A",  "a",    "a\\", "a\\b", "a\\b\\c", "a\\c",   "ab",  "ab\\q", "b",
                                "\\a", "\\", "\\\\", "a]",  "\xFF", "a b",     "a\\b c", "a/b", "zz",    "z"};
constexpr const char* Paths[] = {"a", "", "a\\b", "ab", "b", "z", "\\"};
constexpr const char* Texts[] = {"", "text", "1.9", "-7", "  12", "abc", "\xFF\xFE", "a\\b", "99999999999"};

constexpr EventKind<ISimpleMap5> EventKinds[] = {
    {"Changed", &ISimpleMap5::SubscribeChanged},
    {"BatchUpdatingModeChanged", &ISimpleMap5::SubscribeBatchUpdatingModeChanged},
};

constexpr auto Names = GetNames(SettingsMapModel::Operations);

constexpr std::size_t MostEntries = 60;

template <std::size_t Count>
const char* Choose(const char* const (&from)[Count], std::uint32_t number)
{
    return from[number % Count];
}

std::string DescribeQuarters(std::int32_t quarters)
{
    constexpr const char* rest[] = {"", ".25", ".5", ".75"};
    const auto size = quarters < 0 ? -quarters : quarters;
    return (quarters < 0 ? "-" : "") + std::to_string(size / 4) + rest[size % 4];
}

// Any bits are a number, unless they are none or endless.
double MakeDouble(const Step& step)
{
    const auto bits = (std::uint64_t{step.first} << 32) | step.second;
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return std::isfinite(value) ? value : 0.1;
}

// With six significant digits at most.
std::string DescribeDouble(double value)
{
    char text[64] = {};
    std::snprintf(text, sizeof text, "%g", value);
    return text;
}

const char* DescribeMode(bool mode)
{
    return mode ? "on" : "off";
}

// What an event says: the mode that came along, if any, and the one that the map is in at that moment.
std::string Describe(const std::string& told, bool mode)
{
    return "telling " + told + " while " + DescribeMode(mode);
}

constexpr const char Nothing[] = "nothing";

// The mode that came along.
std::string ReadMode(const check::SeenEvent& event)
{
    if (event.param == 0)
        return Nothing;
    auto* const argument = reinterpret_cast<IVariant*>(static_cast<std::uintptr_t>(event.param));
    bool mode = false;
    const bool isMode = event.eventName == EventKinds[1].name && !TVX_FAILED(argument->GetBool(&mode));
    return isMode ? DescribeMode(mode) : "something";
}

}  // namespace

const char* ChooseSettingsKey(std::uint32_t number)
{
    return Choose(Keys, number);
}

const char* ChooseSettingsPath(std::uint32_t number)
{
    return Choose(Paths, number);
}

const char* ChooseSettingsText(std::uint32_t number)
{
    return Choose(Texts, number);
}

SettingsMapModel::SettingsMapModel(check::Trial& trial)
    : trial_(trial),
      serializer_(trial),
      factory_(trial.Get<IFactory>(check::SimpleMapExport)),
      listeners_(EventKinds, [this](const check::SeenEvent& event) { return DescribeFromWithin(event); })
{
    Begin(check::MakeSimpleMap(trial), {}, {});
}

void SettingsMapModel::SetString(const Step& step)
{
    const auto* const key = Choose(Keys, step.first);
    const auto* const text = Choose(Texts, step.second);
    Gives("SetString", map_->SetString(key, text), TVX_OK);
    Write(key, text);
}

void SettingsMapModel::SetInt(const Step& step)
{
    const auto* const key = Choose(Keys, step.first);
    const auto value = static_cast<std::int32_t>(step.second);
    Gives("SetInt", map_->SetInt(key, value), TVX_OK);
    Write(key, std::to_string(value));
}

// Of few digits, so that the text is told easily.
void SettingsMapModel::SetDouble(const Step& step)
{
    const auto* const key = Choose(Keys, step.first);
    const auto quarters = static_cast<std::int32_t>(step.second % 4001) - 2000;
    Gives("SetDouble", map_->SetDouble(key, quarters / 4.0), TVX_OK);
    Write(key, DescribeQuarters(quarters));
}

void SettingsMapModel::SetAnyDouble(const Step& step)
{
    const auto* const key = Choose(Keys, step.first);
    const auto value = MakeDouble(step);
    Gives("SetDouble", map_->SetDouble(key, value), TVX_OK);
    Write(key, DescribeDouble(value));
}

// The source is the map itself, or what lies below a path of it.
void SettingsMapModel::SetSubMap(const Step& step)
{
    const auto* const path = Choose(Paths, step.first);
    Ref<ISimpleMap> source = map_;
    auto entries = model_;
    if (step.second % 3 == 1)
    {
        const auto* const from = Choose(Paths, step.second / 3);
        entries = GetBelow(from);
        source = MakeSubMap(from);
    }
    if (model_.size() + entries.size() > MostEntries)
        return;
    Gives("SetSubMap", map_->SetSubMap(path, source.Get()), TVX_OK);
    WriteBelow(path, entries);
}

// The source is a map of ours, of which no more is known than its interface.
void SettingsMapModel::SetForeignSubMap(const Step& step)
{
    const auto* const path = Choose(Paths, step.first);
    const auto* const from = Choose(Paths, step.second);
    const auto entries = GetBelow(from);
    if (model_.size() + entries.size() > MostEntries)
        return;
    const auto source = MakeRef<check::ForwardingMap>(MakeSubMap(from));
    Gives("SetSubMap of a foreign map", map_->SetSubMap(path, source.Get()), TVX_OK);
    trial_.Equal("the references on a foreign source", source->GetRefCount(), 1u);
    WriteBelow(path, entries);
}

void SettingsMapModel::SetBatchUpdatingMode(const Step& step)
{
    Gives("SetBatchUpdatingMode", map_->SetBatchUpdatingMode(step.first % 2 == 0), TVX_OK);
    SwitchTo(step.first % 2 == 0);
}

// As writers do it that call one another: each keeps the mode, switches it on and restores it.
void SettingsMapModel::NestBatchUpdates(const Step& step)
{
    WriteWithin(1 + step.first % 3, step);
}

void SettingsMapModel::WriteWithin(std::uint32_t depth, const Step& step)
{
    bool before = !state_.batch;
    Gives("GetBatchUpdatingMode", map_->GetBatchUpdatingMode(&before), TVX_OK);
    trial_.Equal("the answer of GetBatchUpdatingMode", before, state_.batch);
    SetBatchUpdatingMode({step.operation, 0, 0});
    if (step.second % 2 == 0)
        SetString({step.operation, step.first / 3 + depth, step.second / 2});
    if (depth > 1)
        WriteWithin(depth - 1, step);
    SetBatchUpdatingMode({step.operation, before ? 0u : 1u, 0});
}

void SettingsMapModel::Compare()
{
    trial_.Expect(Read(*map_) == model_, "the map to hold what was written", "other entries");
    CompareCount(trial_, "a map, whatever its iterators,", *map_, 1);
    CompareIterator();
    listeners_.Compare(trial_);
}

// As at the start of every walk: one handler hears everything.
void SettingsMapModel::Begin(Ref<ISimpleMap5> map, Entries entries, State state)
{
    iterator_ = nullptr;
    map_ = std::move(map);
    model_ = std::move(entries);
    state_ = state;
    listeners_.Watch(*map_);
    for (std::uint32_t kind = 0; kind < std::size(EventKinds); ++kind)
        listeners_.Subscribe(kind, 0, kind + 1);
}

void SettingsMapModel::Write(const std::string& key, const std::string& text)
{
    model_[key] = text;
    if (state_.batch)
        state_.pending = true;
    else
        listeners_.Expect("Changed", Describe(Nothing, false));
}

void SettingsMapModel::SwitchTo(bool mode)
{
    if (mode == state_.batch)
        return;
    state_.batch = mode;
    listeners_.Expect("BatchUpdatingModeChanged", Describe(DescribeMode(mode), mode));
    if (mode || !state_.pending)
        return;
    state_.pending = false;
    listeners_.Expect("Changed", Describe(Nothing, false));
}

void SettingsMapModel::WriteBelow(const std::string& path, const Entries& entries)
{
    const bool before = state_.batch;
    SwitchTo(true);
    for (const auto& [key, text] : entries)
        Write(path.empty() ? key : path + "\\" + key, text);
    SwitchTo(before);
}

SettingsMapModel::Entries SettingsMapModel::GetBelow(const std::string& path) const
{
    const auto pattern = path + "\\";
    Entries below;
    for (const auto& [key, text] : model_)
    {
        if (key.starts_with(pattern))
            below[key.substr(pattern.size())] = text;
    }
    return below;
}

// As the map answers inside the event; one that is on its end should tell of nothing.
std::string SettingsMapModel::DescribeFromWithin(const check::SeenEvent& event) const
{
    if (!map_)
        return "at the end";
    bool mode = false;
    static_cast<void>(map_->GetBatchUpdatingMode(&mode));
    return Describe(ReadMode(event), mode);
}

const Walk SettingsMapWalk = {"settings-map", check::SimpleMapExport, Names, &SettingsMapModel::Start};

}  // namespace tvx::fuzz
