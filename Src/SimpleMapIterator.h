// SPDX-License-Identifier: MIT
#pragma once

#include "Src/SimpleMapIteratorImpl.h"

#include <string_view>

namespace tvx
{

// Visits every entry of a settings map.
class CSimpleMapIterator final : public SimpleMapIteratorImpl<CSimpleMapIterator>
{
public:
    explicit CSimpleMapIterator(const EntryTable& table) noexcept : SimpleMapIteratorImpl(table) {}

    Result Next() override;
    Result IsEnd(bool* out) override;

    // Moves to the first entry whose key is not less than key.
    void Seek(std::string_view key);
};

}  // namespace tvx
