// SPDX-License-Identifier: MIT
#pragma once

#include "Src/ImageBase.h"
#include "Src/ImageLock.h"

namespace tvx
{

// An image that can change, under its own lock for many readers or one writer. Lives by its references; pixels and lock any
// thread, as IImage says.
class Image final : public ImageBase<Image, IImage>
{
public:
    // IConstImage is left out on purpose: only images that never change answer it.
    using Interfaces = InterfaceList<IImage, IImageBase, IObject, IObjectBase>;

    explicit Image(Raster&& raster) : ImageBase(std::move(raster)) { KeepTable(*this); }

    const void* GetData() override;
    void* GetWritableData() override;
    void LockRead() override;
    void LockWrite() override;
    void Unlock() override;
    bool IsLocked() override;
    bool IsWriteLocked() override;
    Result SetColorFormat(std::int32_t format) override;
    Result SetRowOrder(std::int32_t order) override;

private:
    Result ReverseChannels();

    ImageLock lock_;
};

// An image that never changes. Lives by its references; any thread.
class ConstImage final : public ImageBase<ConstImage, IConstImage>
{
public:
    using Interfaces = InterfaceList<IConstImage, IImageBase, IObject, IObjectBase>;

    explicit ConstImage(Raster&& raster) noexcept : ImageBase(std::move(raster)) { KeepTable(*this); }

    const void* GetData() override { return GetRaster().GetPixels(); }
};

}  // namespace tvx
