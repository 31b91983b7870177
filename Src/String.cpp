// SPDX-License-Identifier: MIT
#include "Src/String.h"

namespace tvx
{

const char* String::GetText()
{
    return GetTail();
}

std::uint32_t String::GetLength()
{
    return length_;
}

}  // namespace tvx
