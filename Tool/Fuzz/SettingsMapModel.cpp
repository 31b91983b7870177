// SPDX-License-Identifier: MIT
#include "Tool/Checks/Doubles.h"
#include "Tool/Checks/Objects.h"
#include "Tool/Fuzz/TableWalker.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

namespace tvx::fuzz
{

namespace
{

// Keys that lie below, beside and in front of one another.
constexpr const char* Keys[] = {"",    "A",  "a",    "a\\", "a\\b", "a\\b\\c", "a\\c",   "ab",  "ab\\q", "b",
                                "\\a", "\\", "\\\\", "a]",  "\xFF", "a b",     "a\\b c", "a/b", "zz",    "z"};
constexpr const char* Paths[] = {"a", "", "a\\b", "ab", "b", "z", "\\"};
constexpr const char* Texts[] = {"", "text", "1.9", "-7", "  12", "abc", "\xFF\xFE", "a\\b", "99999999999"};

using Entries = std::map<std::string, std::string>;

template <std::size_t Count>
const char* Choose(const char* const (&from)[Count], std::uint32_t number)
{
    return from[number % Count];
}

// A settings map beside an ordered map of texts, with its batch mode and the events that are due.
class SettingsMapModel final : public TableWalker<SettingsMapModel>
{
public:
    explicit SettingsMapModel(check::Trial& trial)
        : trial_(trial),
          handler_(MakeRef<check::RecordingHandler>()),
          map_(check::MakeSimpleMap(trial))
    {
        map_->SubscribeChanged(handler_.Get(), 1, true);
        map_->SubscribeBatchUpdatingModeChanged(handler_.Get(), 2, true);
    }

    void SetString(const Step& step)
    {
        const auto* const key = Choose(Keys, step.first);
        const auto* const text = Choose(Texts, step.second);
        Gives("SetString", map_->SetString(key, text), TVX_OK);
        Write(key, text);
    }

    void SetInt(const Step& step)
    {
        const auto* const key = Choose(Keys, step.first);
        const auto value = static_cast<std::int32_t>(step.second);
        Gives("SetInt", map_->SetInt(key, value), TVX_OK);
        Write(key, std::to_string(value));
    }

    // Of few digits, so that the text is told easily.
    void SetDouble(const Step& step)
    {
        const auto* const key = Choose(Keys, step.first);
        const auto quarters = static_cast<std::int32_t>(step.second % 4001) - 2000;
        Gives("SetDouble", map_->SetDouble(key, quarters / 4.0), TVX_OK);
        Write(key, DescribeQuarters(quarters));
    }

    void GetString(const Step& step)
    {
        const auto* const key = Choose(Keys, step.first);
        const auto found = model_.find(key);
        Ref<IString> text;
        Gives("GetString", map_->GetString(key, text.Receive()), found == model_.end() ? TVX_S_NOKEY : TVX_S_VALUE);
        trial_.Expect(static_cast<bool>(text) == (found != model_.end()), "a text exactly where the key is",
                      text ? "a text" : "none");
        if (text)
            trial_.Equal("the text of GetString", text->GetText(), found->second);
    }

    void GetInt(const Step& step)
    {
        const auto* const key = Choose(Keys, step.first);
        const auto found = model_.find(key);
        std::int32_t value = 12345;
        Gives("GetInt", map_->GetInt(key, &value), found == model_.end() ? TVX_S_NOKEY : TVX_OK);
        trial_.Equal("the number of GetInt", value, found == model_.end() ? 12345 : ParseInt(found->second));
    }

    void HasKey(const Step& step)
    {
        const auto* const key = Choose(Keys, step.first);
        bool has = false;
        Gives("HasKey", map_->HasKey(key, &has), TVX_OK);
        trial_.Equal("the answer of HasKey", has, model_.count(key) == 1);
    }

    void GetSubMap(const Step& step)
    {
        const auto* const path = Choose(Paths, step.first);
        const auto due = GetBelow(path);
        Ref<ISimpleMap> below;
        Gives("GetSubMap", map_->GetSubMap(path, below.Receive()), due.empty() ? TVX_S_NOKEY : TVX_S_VALUE);
        trial_.Expect(static_cast<bool>(below), "GetSubMap to give a map", "null");
        trial_.Expect(Read(*below) == due, "the sub-map to hold what lies below the path", "other entries");
    }

    // The source is the map itself, or what lies below a path of it.
    void SetSubMap(const Step& step)
    {
        const auto* const path = Choose(Paths, step.first);
        Ref<ISimpleMap> source = map_;
        auto entries = model_;
        if (step.second % 3 == 1)
        {
            const auto* const from = Choose(Paths, step.second / 3);
            entries = GetBelow(from);
            source = nullptr;
            static_cast<void>(map_->GetSubMap(from, source.Receive()));
        }
        trial_.Expect(static_cast<bool>(source), "GetSubMap to give a map", "null");
        if (model_.size() + entries.size() > MostEntries)
            return;
        Gives("SetSubMap", map_->SetSubMap(path, source.Get()), TVX_OK);
        WriteBelow(path, entries);
    }

    void Clone(const Step&)
    {
        Ref<ISimpleMap> clone;
        Gives("Clone", map_->Clone(clone.Receive()), TVX_OK);
        trial_.Expect(static_cast<bool>(clone), "Clone to give a map", "null");
        trial_.Expect(Read(*clone) == model_, "the clone to hold the same entries", "other entries");
        bool mode = !batch_;
        const auto latest = trial_.QueryAs<ISimpleMap5>(clone, "a clone");
        Gives("GetBatchUpdatingMode of the clone", latest->GetBatchUpdatingMode(&mode), TVX_OK);
        trial_.Equal("the batch updating mode of the clone", mode, batch_);
    }

    void SetBatchUpdatingMode(const Step& step)
    {
        Gives("SetBatchUpdatingMode", map_->SetBatchUpdatingMode(step.first % 2 == 0), TVX_OK);
        SwitchTo(step.first % 2 == 0);
    }

    void IterateNoSubMaps(const Step&)
    {
        Ref<ISimpleMapIterator> iterator;
        Gives("GetIteratorNoSubMaps", map_->GetIteratorNoSubMaps(iterator.Receive()), TVX_OK);
        trial_.Expect(static_cast<bool>(iterator), "GetIteratorNoSubMaps to give an iterator", "null");
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

    void Compare() override
    {
        trial_.Expect(Read(*map_) == model_, "the map to hold what was written", "other entries");
        std::vector<std::string> came;
        for (const auto& event : handler_->events)
            came.push_back(event.eventName);
        trial_.Equal("the events since the last comparison", came, due_);
        handler_->events.clear();
        due_.clear();
    }

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
    };

private:
    static constexpr std::size_t MostEntries = 60;

    void Gives(const char* what, Result came, Result expected) { trial_.Gives(what, came, expected); }

    static std::string DescribeQuarters(std::int32_t quarters)
    {
        constexpr const char* rest[] = {"", ".25", ".5", ".75"};
        const auto size = quarters < 0 ? -quarters : quarters;
        return (quarters < 0 ? "-" : "") + std::to_string(size / 4) + rest[size % 4];
    }

    static std::int32_t ParseInt(const std::string& text)
    {
        const auto value = std::strtoll(text.c_str(), nullptr, 10);
        return static_cast<std::int32_t>(std::min<long long>(std::max<long long>(value, INT32_MIN), INT32_MAX));
    }

    void Write(const std::string& key, const std::string& text)
    {
        model_[key] = text;
        if (batch_)
            pending_ = true;
        else
            due_.emplace_back("Changed");
    }

    void SwitchTo(bool mode)
    {
        if (mode == batch_)
            return;
        batch_ = mode;
        due_.emplace_back("BatchUpdatingModeChanged");
        if (batch_ || !pending_)
            return;
        pending_ = false;
        due_.emplace_back("Changed");
    }

    void WriteBelow(const std::string& path, const Entries& entries)
    {
        const bool before = batch_;
        SwitchTo(true);
        for (const auto& [key, text] : entries)
            Write(path.empty() ? key : path + "\\" + key, text);
        SwitchTo(before);
    }

    Entries GetBelow(const std::string& path) const
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

    // Everything that a map holds; one that goes on for too long is not read to its end.
    Entries Read(ISimpleMap& map)
    {
        Entries entries;
        Ref<ISimpleMapIterator> iterator;
        Gives("GetIterator", map.GetIterator(iterator.Receive()), TVX_OK);
        trial_.Expect(static_cast<bool>(iterator), "GetIterator to give an iterator", "null");
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

    check::Trial& trial_;
    Ref<check::RecordingHandler> handler_;
    Ref<ISimpleMap5> map_;
    Entries model_;
    bool batch_ = true;
    bool pending_ = false;
    std::vector<std::string> due_;
};

constexpr auto Names = GetNames(SettingsMapModel::Operations);

}  // namespace

const Walk SettingsMapWalk = {"settings-map", check::SimpleMapExport, Names, &SettingsMapModel::Start};

}  // namespace tvx::fuzz
