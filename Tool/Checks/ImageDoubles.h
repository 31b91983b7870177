// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Interfaces/IImage.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tvx::check
{

// An image of the caller's own make: 2 x 2 pixels 1, 2, 3, 4 of one channel and one byte. It notes what is done with its lock
// and pixels.
template <class Face>
class ForeignImageImpl : public Face
{
public:
    std::int32_t GetWidth() override { return width; }
    std::int32_t GetHeight() override { return height; }
    std::int32_t GetColorFormat() override { return ColorFormat::OneChannel; }
    std::int32_t GetDataType() override { return DataType::OneByte; }
    std::int32_t GetRowOrder() override { return 5; }
    std::int32_t GetPixelSize() override { return 1; }
    std::int32_t GetStride() override { return width; }
    const void* GetData() override
    {
        calls.emplace_back("GetData");
        return pixels;
    }

    std::int32_t width = 2;
    std::int32_t height = 2;
    std::uint8_t pixels[4] = {1, 2, 3, 4};
    std::vector<std::string> calls;

protected:
    ~ForeignImageImpl() = default;
};

class ForeignConstImage final : public ForeignImageImpl<ClassImpl<ForeignConstImage, IConstImage>>
{
public:
    using Interfaces = InterfaceList<IConstImage, IImageBase, IObject, IObjectBase>;
};

class ForeignImage final : public ForeignImageImpl<ClassImpl<ForeignImage, IImage>>
{
public:
    using Interfaces = InterfaceList<IImage, IImageBase, IObject, IObjectBase>;

    void* GetWritableData() override { return pixels; }
    void LockRead() override { calls.emplace_back("LockRead"); }
    void LockWrite() override { calls.emplace_back("LockWrite"); }
    void Unlock() override { calls.emplace_back("Unlock"); }
    bool IsLocked() override { return true; }
    bool IsWriteLocked() override { return true; }
    Result SetColorFormat(std::int32_t) override { return TVX_OK; }
    Result SetRowOrder(std::int32_t) override { return TVX_OK; }
};

}  // namespace tvx::check
