// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Interfaces/IString.h"

#include <string>

namespace tvx::host
{

// The string that this host's code hands out: an 8-bit text, fixed at construction. Any thread.
class HostString final : public ClassImpl<HostString, IString>
{
public:
    // IObject is left out on purpose: the modules' strings refuse it too.
    using Interfaces = InterfaceList<IString, IObjectBase>;

    // The text is shorter than 4 GiB. A NUL in it hides what follows from those who only use GetText.
    explicit HostString(std::string text) noexcept;

    const char* GetText() override;
    std::uint32_t GetLength() override;

private:
    const std::string text_;
};

}  // namespace tvx::host
