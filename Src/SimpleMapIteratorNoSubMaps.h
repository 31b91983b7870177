// SPDX-License-Identifier: MIT
#pragma once

#include "Src/SimpleMapIteratorImpl.h"

namespace tvx
{

// Visits the entries of a settings map without those below the entry just visited: those whose keys begin with its key,
// whether or not a separator follows.
class CSimpleMapIteratorNoSubMaps final : public SimpleMapIteratorImpl<CSimpleMapIteratorNoSubMaps>
{
public:
    explicit CSimpleMapIteratorNoSubMaps(const EntryTable& table) noexcept : SimpleMapIteratorImpl(table) {}

    Result Next() override;
    Result IsEnd(bool* out) override;
};

}  // namespace tvx
