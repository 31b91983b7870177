// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/Doubles.h"
#include "Tool/Checks/Trial.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <utility>

namespace tvx::fuzz
{

// A few objects of ours to put into what a module makes, and null, which has the number 0. They count their references for
// real, so it shows when one is forgotten or dropped too often.
class ObjectPool
{
public:
    static constexpr std::size_t Size = 6;

    ObjectPool()
    {
        for (std::size_t object = 1; object < Size; ++object)
            objects_[object] = MakeRef<check::ProbeObject>();
    }

    static std::size_t Choose(std::uint32_t number) { return number % Size; }

    IObject* Get(std::size_t object) const { return objects_[object].Get(); }

    // Which one it is; Size when it is none of them.
    std::size_t Find(const IObject* object) const
    {
        std::size_t place = 0;
        while (place < Size && objects_[place].Get() != object)
            ++place;
        return place;
    }

    // Keeps what was handed out for some steps, in place of what was kept there before. Null keeps nothing.
    void Keep(std::uint32_t place, Ref<IObjectBase> object) { kept_[place % kept_.size()] = std::move(object); }

    // Each has its own reference here, those of what is kept, and as many as a model counts elsewhere.
    template <class Count>
    void Compare(check::Trial& trial, Count&& count) const
    {
        for (std::size_t object = 1; object < Size; ++object)
            trial.Equal("the references on object " + std::to_string(object), objects_[object]->GetRefCount(),
                        1 + CountKept(object) + static_cast<std::uint32_t>(count(object)));
    }

private:
    std::uint32_t CountKept(std::size_t object) const
    {
        const IObjectBase* const face = objects_[object].Get();
        return static_cast<std::uint32_t>(std::count_if(
            kept_.begin(), kept_.end(), [&](const Ref<IObjectBase>& kept) { return kept.Get() == face; }));
    }

    std::array<Ref<check::ProbeObject>, Size> objects_;
    std::array<Ref<IObjectBase>, 3> kept_;
};

}  // namespace tvx::fuzz
