// SPDX-License-Identifier: MIT
#include "Src/Image.h"

#include "Helpers/Results.h"
#include "Src/RowKernels.h"

namespace tvx
{

namespace
{

constexpr bool HasThreeChannels(std::int32_t format) noexcept
{
    return format == ColorFormat::ThreeChannels || format == ColorFormat::ThreeChannelsReversed;
}

}  // namespace

const void* Image::GetData()
{
    return IsLocked() ? GetRaster().GetPixels() : nullptr;
}

void* Image::GetWritableData()
{
    return IsWriteLocked() ? GetRaster().GetPixels() : nullptr;
}

void Image::LockRead()
{
    if (GetRaster().IsValid())
        lock_.LockRead();
}

void Image::LockWrite()
{
    if (GetRaster().IsValid())
        lock_.LockWrite();
}

void Image::Unlock()
{
    if (GetRaster().IsValid())
        lock_.Unlock();
}

bool Image::IsLocked()
{
    return GetRaster().IsValid() && lock_.GetState() != LockState::Unlocked;
}

bool Image::IsWriteLocked()
{
    return GetRaster().IsValid() && lock_.GetState() == LockState::WriteLocked;
}

Result Image::SetColorFormat(std::int32_t format)
{
    TVX_CHECK_PRECOND(GetRaster().IsValid());
    TVX_CHECK_PRECOND(IsWriteLocked());
    if (format == GetColorFormat())
        return TVX_OK;
    TVX_CHECK_PRECOND(HasThreeChannels(format));
    TVX_CHECK_PRECOND(HasThreeChannels(GetColorFormat()));
    const auto reversed = GetHeight() < 1 ? TVX_OK : ReverseChannels();
    if (TVX_FAILED(reversed))
        return reversed;
    GetRaster().SetColorFormat(format);
    return TVX_OK;
}

Result Image::SetRowOrder(std::int32_t order)
{
    TVX_CHECK_PRECOND(GetRaster().IsValid());
    TVX_CHECK_PRECOND(IsWriteLocked());
    if (order == GetRowOrder())
        return TVX_OK;
    const auto size = GetRaster().GetSize();
    TVX_RETURN_FAIL_IF(GetHeight() < 2 || size == 0);
    ReverseRows(GetRaster().GetPixels(), static_cast<std::size_t>(GetStride()), static_cast<std::size_t>(GetHeight()));
    GetRaster().SetRowOrder(order);
    return TVX_OK;
}

// A row is looked at before its elements are: one without any bytes fails before elements of a size that is not handled.
Result Image::ReverseChannels()
{
    TVX_RETURN_FAIL_IF(GetStride() <= 0);
    const auto reverse = FindChannelReversal(GetElementSize(GetDataType()));
    if (reverse == nullptr)
        return TVX_E_UNSUPPORTED_FORMAT;
    reverse(GetRaster().GetPixels(), GetRaster().GetSize() / static_cast<std::size_t>(GetPixelSize()));
    return TVX_OK;
}

}  // namespace tvx
