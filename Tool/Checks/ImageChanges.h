// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/ImageBench.h"

#include <cstdint>

namespace tvx::check
{

// An operation that changes an image, which only the image's writer may do.
struct ImageChange
{
    const char* name;
    Result (IImage::*set)(std::int32_t wanted);
    std::int32_t same;  // what an image of format 1 and row order 0 has already
};

// Without the write lock the change is refused, whatever is wanted, and the image stays as it is.
void ExpectNeedsWriteLock(Trial& trial, const ImageChange& change);

// Of an image whose pixels were moved away the change is refused, also to the -1 that it tells.
void ExpectNeedsPixels(Trial& trial, const ImageChange& change);

}  // namespace tvx::check
