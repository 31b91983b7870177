// SPDX-License-Identifier: MIT
#include "Host/PngRun.h"

#include <bit>
#include <cstdio>

namespace tvx::host
{

void PngRun::OnError(png_structp png, png_const_charp problem)
{
    static_cast<PngRun*>(png_get_error_ptr(png))->Leave(problem);
}

void PngRun::OnWarning(png_structp, png_const_charp) {}

void PngRun::Leave(const char* problem)
{
    std::snprintf(problem_, sizeof problem_, "%s", problem);
    std::longjmp(jump_, 1);
}

void PngRun::SwapWhereNeeded(unsigned bits)
{
    if (bits == 16 && std::endian::native == std::endian::little)
        png_set_swap(png_);
}

}  // namespace tvx::host
