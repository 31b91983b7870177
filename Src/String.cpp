// SPDX-License-Identifier: MIT
#include "Src/String.h"

#include <algorithm>

namespace tvx
{

String::String(std::string_view text) noexcept : length_(static_cast<std::uint32_t>(text.size()))
{
    *std::copy(text.begin(), text.end(), GetTail()) = '\0';
}

const char* String::GetText()
{
    return GetTail();
}

std::uint32_t String::GetLength()
{
    return length_;
}

char* String::GetTail() noexcept
{
    return reinterpret_cast<char*>(this + 1);
}

std::string_view ToText(const char* text) noexcept
{
    return text == nullptr ? std::string_view() : std::string_view(text);
}

}  // namespace tvx
