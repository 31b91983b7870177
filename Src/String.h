// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Helpers/TailAllocated.h"
#include "Interfaces/IString.h"

#include <algorithm>
#include <string_view>

namespace tvx
{

// An 8-bit text, fixed at construction, in one allocation with its object.
class String final : public ClassImpl<String, IString>, public MostlyUnshared, public TailAllocated
{
public:
    // IObject is left out on purpose: a string refuses it.
    using Interfaces = InterfaceList<IString, IObjectBase>;

    // Keeps a copy of text, which has no NUL in it.
    explicit String(std::string_view text) noexcept : length_(static_cast<std::uint32_t>(text.size()))
    {
        *std::copy(text.begin(), text.end(), GetTail()) = '\0';
    }

    const char* GetText() override;
    std::uint32_t GetLength() override;

    static TailSize GetTailSize(std::string_view text) noexcept { return {text.size() + 1}; }

private:
    char* GetTail() noexcept { return reinterpret_cast<char*>(this + 1); }

    std::uint32_t length_;
};

// The text behind a pointer that may be null, which counts as the empty text.
inline std::string_view ToText(const char* text) noexcept
{
    return text == nullptr ? std::string_view() : std::string_view(text);
}

}  // namespace tvx
