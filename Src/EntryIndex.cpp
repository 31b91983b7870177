// SPDX-License-Identifier: MIT
#include "Src/EntryIndex.h"

#include <bit>
#include <utility>

namespace tvx
{

// The row before lives until the wider one, which has its entries, takes its place. No entry is touched.
void EntryIndex::Widen(std::size_t count)
{
    const auto size = std::bit_ceil(count + count / 7 + 1);
    auto places = std::make_unique<Place[]>(size);
    const auto* const before = std::exchange(places_, places.get());
    const auto maskBefore = std::exchange(mask_, size - 1);
    for (std::size_t place = 0; place <= maskBefore; ++place)
    {
        if (before[place].hash != Free)
            places_[FindFreePlace(before[place].hash)] = before[place];
    }
    widePlaces_ = std::move(places);
}

}  // namespace tvx
