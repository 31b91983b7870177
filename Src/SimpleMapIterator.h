// SPDX-License-Identifier: MIT
#pragma once

#include "Src/SimpleMapIteratorImpl.h"

namespace tvx
{

// Visits every entry of a settings map.
class CSimpleMapIterator final : public SimpleMapIteratorImpl<CSimpleMapIterator>
{
public:
    explicit CSimpleMapIterator(const EntryTable& table) noexcept : SimpleMapIteratorImpl(table) {}

    Result Next() override;
    Result IsEnd(bool* out) override;

    const EntryPlace& GetPlace() const noexcept { return place_; }
};

}  // namespace tvx
