// SPDX-License-Identifier: MIT
#pragma once

#include "Host/Outcome.h"
#include "Host/Picture.h"

#include <cstddef>
#include <filesystem>

namespace tvx::host
{

// The picture in a PNG file, interlaced or not. The samples are as the file has them: nothing is done about gamma and colour
// profiles. What a picture has no form for is spread out without loss:
//
//   grey of 1, 2 or 4 bits          grey of 8 bits, the lightest staying the lightest
//   palette                         3 channels of 8 bits; black for a pixel outside the palette
//   transparent colour or entries   4 channels, alpha 0 where transparent; so grey becomes three equal channels
//   grey with alpha                 4 channels
//
// Nothing in the file is trusted: broken ones are refused, also when only a checksum is wrong or the end is missing. Chunks that
// say nothing of the pixels are skipped, and what follows the end of the picture is ignored.
// Fails: CannotRead; BadPicture, also for more than MaxPicturePixels or MaxPictureSide.
Outcome<Picture> ReadPng(const std::filesystem::path& file);

// Makes a PNG file or replaces it as a whole, as WriteTextFile does. Gives the number of bytes.
// Fails: CannotRead; BadPicture for a picture that is not sound; the file is as it was then.
Outcome<std::size_t> WritePng(const std::filesystem::path& file, const Picture& picture);

}  // namespace tvx::host
