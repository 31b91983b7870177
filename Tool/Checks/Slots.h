// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/CCalls.h"
#include "Tool/Checks/Objects.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

// What the checks of single slots share. Such a check calls one operation by its number and judges it by what only that
// operation does, so that a table in which two operations have changed places fails the checks of those two.
namespace tvx::check
{

// An out parameter with room behind it: what stands at a wrong slot may write more than the right operation does.
template <class Value>
struct RoomyOut
{
    Value value{};
    std::byte room[16]{};
};

// Whether a text may stand there: what comes from a wrong slot is mostly a small number.
inline bool IsAddress(const void* pointer)
{
    return reinterpret_cast<std::uintptr_t>(pointer) >= 0x10000;
}

// Whether an object may stand there.
inline bool IsObjectAddress(const void* pointer)
{
    return IsAddress(pointer) && reinterpret_cast<std::uintptr_t>(pointer) % alignof(void*) == 0;
}

// A truth as it came, 0 or 1: what comes from a wrong slot may be the lowest byte of anything.
inline std::uint8_t GetByte(bool came)
{
    std::uint8_t byte = 0;
    std::memcpy(&byte, &came, sizeof byte);
    return byte;
}

// What came as a text by a slot.
inline void ExpectText(Trial& trial, const std::string& what, const char* came, const char* expected)
{
    trial.Expect(IsAddress(came), what + " to give a text", "a pointer to nowhere");
    trial.Equal(what, came, expected);
}

// The text of a string that came by a slot. A string whose own table is wrong has checks of its own: it is passed over.
inline void ExpectTextOf(Trial& trial, const std::string& what, const Ref<IString>& string, const char* expected)
{
    const char* const text = string->GetText();
    if (IsAddress(text))
        trial.Equal("the text of what " + what + " gives", text, expected);
}

// What a call by a slot hands out with the expected result.
template <class Interface, class Call>
Ref<Interface> TakeFromC(Trial& trial, const std::string& what, Result expected, Call&& call)
{
    RoomyOut<void*> out;
    trial.Gives(what, call(&out.value), expected);
    trial.Expect(IsObjectAddress(out.value), what + " to give an object", "none");
    return Ref<Interface>::Adopt(static_cast<Interface*>(out.value));
}

// A text known to the compiler, so that the rows of a table can be put together from parts.
template <std::size_t Size>
struct FixedText
{
    constexpr FixedText(const char (&text)[Size]) { std::copy_n(text, Size, characters); }

    char characters[Size]{};
};

template <FixedText... Parts>
struct JoinedText
{
    constexpr JoinedText()
    {
        char* end = characters;
        ((end = std::copy_n(Parts.characters, sizeof Parts.characters - 1, end)), ...);
    }

    char characters[(0 + ... + (sizeof Parts.characters - 1)) + 1]{};
};

template <FixedText... Parts>
constexpr JoinedText<Parts...> Joined;

}  // namespace tvx::check
