// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/ISimpleMap.h"
#include "Interfaces/Ref.h"

namespace tvx
{

// Batch updating mode for the length of a scope: the writes of the scope are told together. At its end the map goes
// back to the mode that it was in, so guards nest, and a new map, which is in the mode already, stays in it.
//
// Keeps the map alive. One thread at a time, as the map. Never throws.
class [[nodiscard]] BatchUpdate
{
public:
    // Remembers the mode of map and switches it on.
    explicit BatchUpdate(ISimpleMap& map) : result_(Enter(map)), map_(TVX_FAILED(result_) ? nullptr : &map) {}

    // Restores the mode.
    ~BatchUpdate() { static_cast<void>(End()); }

    BatchUpdate(const BatchUpdate&) = delete;
    BatchUpdate& operator=(const BatchUpdate&) = delete;

    // How switching the mode on went. After a failure, for want of memory, the map stays in its mode, and nothing is
    // restored.
    Result GetResult() const noexcept { return result_; }

    // Restores the mode now; the end of the scope then does nothing. Gives the map's code: -4 when there is no memory
    // for the switch, which the end of the scope then tries again.
    Result End()
    {
        const auto restored = map_ ? map_->SetBatchUpdatingMode(modeBefore_) : TVX_OK;
        if (!TVX_FAILED(restored))
            map_ = nullptr;
        return restored;
    }

private:
    Result Enter(ISimpleMap& map)
    {
        const auto asked = map.GetBatchUpdatingMode(&modeBefore_);
        if (TVX_FAILED(asked) || modeBefore_)
            return asked;
        return map.SetBatchUpdatingMode(true);
    }

    bool modeBefore_ = false;
    Result result_;
    Ref<ISimpleMap> map_;
};

}  // namespace tvx
