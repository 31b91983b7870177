// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Interfaces/IImage.h"
#include "Src/Raster.h"

#include <atomic>
#include <cstring>
#include <utility>

namespace tvx
{

// The description of an image of either kind, and the pixels that it owns.
template <class Class, class Face>
class ImageBase : public ClassImpl<Class, Face>
{
public:
    std::int32_t GetWidth() final { return raster_.GetWidth(); }
    std::int32_t GetHeight() final { return raster_.GetHeight(); }
    std::int32_t GetColorFormat() final { return raster_.GetColorFormat(); }
    std::int32_t GetDataType() final { return raster_.GetDataType(); }
    std::int32_t GetRowOrder() final { return raster_.GetRowOrder(); }
    std::int32_t GetPixelSize() final { return raster_.GetPixelSize(); }
    std::int32_t GetStride() final { return raster_.GetStride(); }

    // For the factory: moved from, the image is not valid any more.
    Raster& GetRaster() noexcept { return raster_; }

    // Whether image is of Class. Every object begins with the address of its table of operations, and nothing else is looked
    // at: an image of another make need not be of C++.
    static bool IsOwn(const Face* image) noexcept { return ReadTable(image) == table_.load(std::memory_order_relaxed); }

protected:
    explicit ImageBase(Raster&& raster) noexcept : raster_(std::move(raster)) {}
    ~ImageBase() = default;

    // For the constructor of Class: the table is that of Class only there.
    static void KeepTable(const Class& made) noexcept { table_.store(ReadTable(&made), std::memory_order_relaxed); }

private:
    static const void* ReadTable(const Face* image) noexcept
    {
        const void* table = nullptr;
        std::memcpy(&table, static_cast<const void*>(image), sizeof table);
        return table;
    }

    static inline std::atomic<const void*> table_{nullptr};  // null until an image of Class is made

    Raster raster_;
};

}  // namespace tvx
