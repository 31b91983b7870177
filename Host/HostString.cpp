// SPDX-License-Identifier: MIT
#include "Host/HostString.h"

#include <utility>

namespace tvx::host
{

HostString::HostString(std::string text) noexcept : text_(std::move(text)) {}

const char* HostString::GetText()
{
    return text_.c_str();
}

std::uint32_t HostString::GetLength()
{
    return static_cast<std::uint32_t>(text_.size());
}

}  // namespace tvx::host
