// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/IteratorBench.h"

#include <set>

namespace tvx::check
{

namespace
{

using Texts = std::vector<std::string>;

void Visits(Trial& trial, const IteratorKind& kind, const Texts& keys, const Texts& expected)
{
    const auto map = MakeMapOfKeys(trial, keys);
    const auto iterator = MakeMapIterator(trial, kind, *map);
    trial.Equal("the keys that " + std::string(kind.name) + " visits of " + Show(keys),
                GetIteratorKeys(trial, *iterator), expected);
}

void VisitsEveryEntry(Trial& trial)
{
    Visits(trial, FullIterator, {"b", "ab", "a\\b", "a"}, {"a", "a\\b", "ab", "b"});
}

void GoesByTheBytesOfTheKeys(Trial& trial)
{
    Visits(trial, FullIterator, {"\xC3\xA4", "a", "", "B", "a]", "a\\", "ab", "Z", "a b", "\x01"},
           {"", "\x01", "B", "Z", "a", "a b", "a\\", "a]", "ab", "\xC3\xA4"});
}

void SkipsWhatBeginsWithTheVisitedKey(Trial& trial)
{
    Visits(trial, NoSubMapsIterator, {"a", "a\\b", "ab", "b"}, {"a", "b"});
    Visits(trial, NoSubMapsIterator, {"a", "a\\b", "a\\b\\c", "abc", "b", "bA", "c"}, {"a", "b", "c"});
}

void KeepsWhatDoesNotBeginWithTheVisitedKey(Trial& trial)
{
    Visits(trial, NoSubMapsIterator, {"a\\b", "a\\c"}, {"a\\b", "a\\c"});
    Visits(trial, NoSubMapsIterator, {"A", "a", "aa\\x", "ab", "b"}, {"A", "a", "b"});
    Visits(trial, NoSubMapsIterator, {"ab", "abc", "ac", "acd\\e"}, {"ab", "ac"});
}

void VisitsTheEmptyKeyAlone(Trial& trial)
{
    Visits(trial, NoSubMapsIterator, {"", "a", "b"}, {""});
}

// Keys of few letters, so that many begin with others.
std::string MakeKey(Random& random)
{
    std::string key;
    for (auto left = 3 + random.Below(4); left > 0; --left)
        key += "ab\\"[random.Below(3)];
    return key;
}

void AgreesWithAModel(Trial& trial)
{
    std::set<std::string> model;
    const auto map = MakeSimpleMap(trial);
    for (int write = 0; write < 60; ++write)
    {
        const auto key = MakeKey(trial.GetRandom());
        trial.Gives("SetString", map->SetString(key.c_str(), "text"), TVX_OK);
        model.insert(key);
    }
    const Texts all(model.begin(), model.end());
    Texts top;
    for (const auto& key : all)
    {
        if (top.empty() || !key.starts_with(top.back()))
            top.push_back(key);
    }
    trial.Equal("the keys by GetIterator", GetIteratorKeys(trial, *MakeMapIterator(trial, FullIterator, *map)), all);
    trial.Equal("the keys by GetIteratorNoSubMaps",
                GetIteratorKeys(trial, *MakeMapIterator(trial, NoSubMapsIterator, *map)), top);
}

constexpr Check Checks[] = {
    {"value-iterator-visits-every-entry", "A map with the keys a, a\\b, ab and b is walked by GetIterator.",
     "The full iterator visits every entry once, from the first key on; Next gives 0 while there is one, then -1.",
     VisitsEveryEntry},
    {"value-iterator-goes-by-the-bytes-of-keys", "A map with keys of many kinds of characters is walked.",
     "Keys are in the order of their bytes, unsigned; of two that begin alike the shorter one comes first.",
     GoesByTheBytesOfTheKeys},
    {"value-iterator-no-sub-maps-skips-what-begins-alike", "Maps with keys below others are walked without sub-maps.",
     "Keys that begin with the key just visited are skipped, whether or not a separator follows there.",
     SkipsWhatBeginsWithTheVisitedKey},
    {"value-iterator-no-sub-maps-keeps-the-rest", "Maps with keys beside each other are walked without sub-maps.",
     "Only the key just visited hides others, byte by byte: neighbours and keys of another case are visited.",
     KeepsWhatDoesNotBeginWithTheVisitedKey},
    {"value-iterator-no-sub-maps-empty-key-hides-all", "A map with the empty key is walked without sub-maps.",
     "Every key begins with the empty one, which is therefore the only one visited.", VisitsTheEmptyKeyAlone},
    {"value-iterator-agrees-with-a-model", "Maps with random keys that begin alike are walked by both iterators.",
     "The full iterator gives every key in order, the other one those that do not begin with the last one given.",
     AgreesWithAModel},
};

}  // namespace

extern const Family WalksOfIteratorFamily = {"values", SimpleMapExport, Needs::Module, Checks};

}  // namespace tvx::check
