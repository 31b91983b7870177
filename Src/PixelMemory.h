// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>

namespace tvx
{

// What memory holds that nothing has been written to.
enum class Content
{
    Zeros,
    Anything,
};

// Gives the memory of pixels back.
struct PixelsFreeing
{
    std::size_t size = 0;

    void operator()(std::byte* pixels) const noexcept;
};

using Pixels = std::unique_ptr<std::byte, PixelsFreeing>;

// Memory for the pixels of an image. That of a large one comes straight from the system, in zeroes, and the last that was given
// back is kept for the next image of that size which needs no zeros: the system takes longer to fill such memory in than a copy
// of the pixels takes. No more than one is kept, none above 128 MB. The system takes its content when memory is short, and it
// goes when memory for pixels cannot be had, and with the module. Any thread. Throws std::bad_alloc when memory is exhausted.
//   size  not 0
Pixels AllocatePixels(std::size_t size, Content content);

}  // namespace tvx
