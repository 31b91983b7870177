// SPDX-License-Identifier: MIT
#include "Tests/Support/MapTesting.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>
#include <map>
#include <random>
#include <string>
#include <string_view>

namespace
{

using namespace tvx;
using namespace tvx::test;

using Model = std::map<std::string, std::string>;

Texts Entries(const Model& model)
{
    Texts entries;
    for (const auto& [key, value] : model)
        entries.push_back(key + "=" + value);
    return entries;
}

Texts EntriesWithoutSubMaps(const Model& model)
{
    Texts entries;
    for (auto entry = model.begin(); entry != model.end();)
    {
        const auto& visited = *entry;
        entries.push_back(visited.first + "=" + visited.second);
        do
            ++entry;
        while (entry != model.end() && entry->first.compare(0, visited.first.size(), visited.first) == 0);
    }
    return entries;
}

Model Below(const Model& model, const std::string& path)
{
    Model below;
    for (const auto& [key, value] : model)
    {
        if (key.find(path + "\\") == 0)
            below[key.substr(path.size() + 1)] = value;
    }
    return below;
}

// A settings map and what it should hold. Each step does the same to both, at random, and compares the answers. The steps
// are the same in every run; the seed is printed with the test.
class SimpleMapModel : public testing::Test
{
protected:
    SimpleMapModel() { std::cout << "seed " << Seed << '\n'; }

    std::size_t Below(std::size_t limit) { return generator_() % limit; }

    // Short and of few characters, so that keys meet again and lie below each other.
    std::string Key()
    {
        static constexpr std::string_view alphabet = "aB\\\x7f\x80\xff";
        std::string key;
        for (std::size_t length = Below(6); length > 0; --length)
            key.push_back(alphabet[Below(alphabet.size())]);
        return key;
    }

    void WriteText()
    {
        const auto key = Key();
        const std::string value(Below(40), static_cast<char>('a' + Below(26)));
        EXPECT_EQ(map_->SetString(key.c_str(), value.c_str()), TVX_OK);
        model_[key] = value;
    }

    void WriteInt()
    {
        const auto key = Key();
        const auto value = static_cast<std::int32_t>(generator_());
        EXPECT_EQ(map_->SetInt(key.c_str(), value), TVX_OK);
        model_[key] = std::to_string(value);
    }

    void Read()
    {
        const auto key = Key();
        const auto found = model_.find(key);
        bool has = false;
        std::int32_t number = 77;
        Ref<IString> text;
        EXPECT_EQ(map_->HasKey(key.c_str(), &has), TVX_OK);
        EXPECT_EQ(has, found != model_.end());
        EXPECT_EQ(map_->GetString(key.c_str(), text.Receive()), has ? TVX_S_VALUE : TVX_S_NOKEY);
        EXPECT_EQ(text ? text->GetText() : "", has ? found->second : "");
        EXPECT_EQ(map_->GetInt(key.c_str(), &number), has ? TVX_OK : TVX_S_NOKEY);
        EXPECT_EQ(number, has ? std::atoi(found->second.c_str()) : 77);
    }

    void TakeSubMap()
    {
        const auto path = Key();
        const auto expected = ::Below(model_, path);
        Ref<ISimpleMap> below;
        EXPECT_EQ(map_->GetSubMap(path.c_str(), below.Receive()), expected.empty() ? TVX_S_NOKEY : TVX_S_VALUE);
        EXPECT_EQ(tvx::test::Entries(*below), ::Entries(expected));
    }

    // Puts what is below one path, or now and then a whole small map, below another one.
    void PutSubMap()
    {
        const auto from = Key();
        const auto path = Key();
        const bool whole = model_.size() < 30 && Below(2) == 0;
        const auto source = whole ? model_ : ::Below(model_, from);
        Ref<ISimpleMap> below(map_.Get());
        if (!whole)
            map_->GetSubMap(from.c_str(), below.Receive());
        EXPECT_EQ(map_->SetSubMap(path.c_str(), below.Get()), TVX_OK);
        for (const auto& [key, value] : source)
            model_[path.empty() ? key : path + "\\" + key] = value;
    }

    // Goes on with the clone; the map before is changed and let go.
    void Clone()
    {
        Ref<ISimpleMap> clone;
        EXPECT_EQ(map_->Clone(clone.Receive()), TVX_OK);
        map_->SetString("a", "of the map before");
        map_ = clone;
    }

    void Iterate()
    {
        EXPECT_EQ(tvx::test::Entries(*map_), ::Entries(model_));
        Ref<ISimpleMapIterator> iterator;
        EXPECT_EQ(map_->GetIteratorNoSubMaps(iterator.Receive()), TVX_OK);
        EXPECT_EQ(Walk(*iterator), EntriesWithoutSubMaps(model_));
    }

    // Writes come in the middle of the walk; it finds the keys behind its place, also the new ones.
    void IterateAndWrite()
    {
        Ref<ISimpleMapIterator> iterator;
        EXPECT_EQ(map_->GetIterator(iterator.Receive()), TVX_OK);
        for (std::size_t steps = Below(model_.size() + 1); steps > 0; --steps)
            iterator->Next();
        const bool end = iterator->GetKey() == nullptr;
        const std::string place = end ? "" : iterator->GetKey();
        WriteText();
        WriteInt();
        EXPECT_EQ(Walk(*iterator), end ? Texts() : ::Entries(Model(model_.lower_bound(place), model_.end())));
    }

    // Starts anew when the keys have grown too long and too many.
    void StartAnew()
    {
        if (model_.size() < 300)
            return;
        map_ = Ref<ISimpleMap>(MakeMap());
        model_.clear();
    }

    void Step()
    {
        using Operation = void (SimpleMapModel::*)();
        static constexpr Operation operations[] = {
            &SimpleMapModel::WriteText, &SimpleMapModel::WriteInt,   &SimpleMapModel::Read,
            &SimpleMapModel::Read,      &SimpleMapModel::TakeSubMap, &SimpleMapModel::PutSubMap,
            &SimpleMapModel::Clone,     &SimpleMapModel::Iterate,    &SimpleMapModel::IterateAndWrite};
        (this->*operations[Below(std::size(operations))])();
        StartAnew();
    }

private:
    static constexpr std::uint64_t Seed = 70'313;

    std::mt19937_64 generator_{Seed};
    Ref<ISimpleMap> map_{MakeMap()};
    Model model_;
};

TEST_F(SimpleMapModel, HoldsAfterEveryStepOfARandomRun)
{
    for (int step = 0; step < 10'000 && !HasFailure(); ++step)
        Step();
}

}  // namespace
