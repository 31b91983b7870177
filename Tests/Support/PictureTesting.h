// SPDX-License-Identifier: MIT
#pragma once

#include "Host/Picture.h"

#include <cstddef>

namespace tvx::test
{

// A picture in which no two samples beside or below each other are equal.
inline host::Picture MakePicture(const host::PictureFormat& format)
{
    host::Picture picture(format);
    for (unsigned number = 0; auto& byte : picture.GetPixels())
    {
        byte = static_cast<std::byte>(number * 37 + number / 251);
        ++number;
    }
    return picture;
}

}  // namespace tvx::test
