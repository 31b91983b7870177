// SPDX-License-Identifier: MIT
#include "Src/EntryIndex.h"

#include <bit>
#include <utility>

namespace tvx
{

// The rows before live until the wider ones, which have their entries, take their place. No entry is touched.
void EntryIndex::Widen(std::size_t count)
{
    const auto places = std::bit_ceil(count + count / 7 + 1);
    auto hashes = std::make_unique<std::uint32_t[]>(places);
    auto entries = std::make_unique_for_overwrite<Entry*[]>(places);
    const auto* const hashesBefore = std::exchange(hashes_, hashes.get());
    auto* const* const entriesBefore = std::exchange(entries_, entries.get());
    const auto maskBefore = std::exchange(mask_, places - 1);
    for (std::size_t place = 0; place <= maskBefore; ++place)
    {
        if (hashesBefore[place] == Free)
            continue;
        const auto placeNow = FindFreePlace(hashesBefore[place]);
        hashes_[placeNow] = hashesBefore[place];
        entries_[placeNow] = entriesBefore[place];
    }
    wideHashes_ = std::move(hashes);
    wideEntries_ = std::move(entries);
}

}  // namespace tvx
