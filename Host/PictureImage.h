// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/Ref.h"
#include "Host/Outcome.h"
#include "Host/Picture.h"
#include "Interfaces/IImage.h"

namespace tvx::host
{

// The identifier of the export that makes images.
constexpr const char ImageExport[] = "com.talvere.general.tvx.GenericImageImplementation/1.0";

// What becomes of three channels in reversed order, which no picture has.
enum class ReversedChannels
{
    PutBack,  // red is red again
    Keep,     // the bytes stay as they stand in memory, so that the picture shows red and blue exchanged
};

// An image with the pixels of the picture: elements of one or two bytes, one, three or four channels, row order 0.
// Fails: BadPicture when it does not fit into memory; Misbehaved when the factory makes none, or one that does not hold them.
Outcome<Ref<IImage>> MakeImage(IImageFactory& factory, const Picture& picture);

// The picture of any image, the first row at the top. An image that can change is locked for reading meanwhile, unless the
// calling thread holds its lock already.
// Fails: BadPicture for an image that no picture can show, such as one without pixels or with larger elements, and for one
// that does not fit into memory; Misbehaved for an image that gives no pixels but should.
Outcome<Picture> MakePicture(IConstImage& image, ReversedChannels reversed = ReversedChannels::PutBack);

}  // namespace tvx::host
