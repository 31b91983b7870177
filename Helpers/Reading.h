// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/ISimpleMap.h"
#include "Interfaces/IVariant.h"
#include "Interfaces/Ref.h"

#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <type_traits>
#include <utility>

namespace tvx
{

// What a strict read found: a value, or why there is none. Absent: nothing is there. Malformed: something else is
// there, a text that is no number or a variant of another type. Else the read itself failed, and GetResult says how.
template <class T>
class [[nodiscard]] Reading
{
public:
    // A value.
    Reading(T value) : value_(std::move(value)) {}
    // No value, because something else is there.
    static Reading Malformed() { return Reading(std::nullopt, TVX_E_FAIL, true); }
    // No value for the reason that code gives: absent with 101, else failed.
    static Reading None(Result code) { return Reading(std::nullopt, code, false); }

    // Whether there is a value.
    explicit operator bool() const noexcept { return value_.has_value(); }

    // The value, which must be there.
    const T& operator*() const noexcept { return *value_; }
    T& operator*() noexcept { return *value_; }
    const T* operator->() const noexcept { return &*value_; }
    T* operator->() noexcept { return &*value_; }

    // The value, or other when there is none, for whatever reason.
    T ValueOr(T other) const& { return value_.value_or(std::move(other)); }
    T ValueOr(T other) && { return std::move(value_).value_or(std::move(other)); }

    // Whether nothing is there; the map knows no such key.
    bool IsAbsent() const noexcept { return result_ == TVX_S_NOKEY; }
    // Whether something else is there than what was asked for.
    bool IsMalformed() const noexcept { return malformed_; }

    // 0 with a value, 101 when absent, -1 when malformed, else the code of the operation that failed.
    Result GetResult() const noexcept { return result_; }

private:
    Reading(std::nullopt_t none, Result result, bool malformed) : value_(none), result_(result), malformed_(malformed)
    {
    }

    std::optional<T> value_;
    Result result_ = TVX_OK;
    bool malformed_ = false;
};

namespace detail
{

template <class T, class... Listed>
constexpr bool IsOneOf = (std::is_same_v<T, Listed> || ...);

// A foreign string may break the promise that its text is never null.
inline std::string_view ViewText(IString& string)
{
    const char* const text = string.GetText();
    return text == nullptr ? std::string_view() : std::string_view(text, string.GetLength());
}

// The whole text is one number. from_chars knows no plus sign.
template <class T>
Reading<T> ToNumber(const Ref<IString>& string)
{
    auto text = ViewText(*string);
    if (text.size() > 1 && text[0] == '+' && text[1] != '-')
        text.remove_prefix(1);
    const char* const end = text.data() + text.size();
    T number{};
    const auto parsed = std::from_chars(text.data(), end, number);
    if (parsed.ec != std::errc() || parsed.ptr != end)
        return Reading<T>::Malformed();
    return number;
}

inline Reading<std::string> ToCopy(const Ref<IString>& string)
try
{
    return std::string(ViewText(*string));
}
catch (...)  // want of memory
{
    return Reading<std::string>::None(TVX_E_POINTER);
}

// Reads by an operation of the map that gives an object. A success without one breaks the operation's promise.
template <class Interface>
Reading<Ref<Interface>> ReadUnder(ISimpleMap& map, const char* key, Result (ISimpleMap::*get)(const char*, Interface**))
{
    Ref<Interface> object;
    const auto result = (map.*get)(key, object.Receive());
    if (TVX_FAILED(result) || result == TVX_S_NOKEY)
        return Reading<Ref<Interface>>::None(result);
    if (!object)
        return Reading<Ref<Interface>>::None(TVX_E_FAIL);
    return Reading<Ref<Interface>>(std::move(object));
}

template <class T>
Reading<T> ReadText(ISimpleMap& map, const char* key, Reading<T> (*convert)(const Ref<IString>&))
{
    const auto text = ReadUnder(map, key, &ISimpleMap::GetString);
    return text ? convert(*text) : Reading<T>::None(text.GetResult());
}

// -1 is how a variant refuses what is not of its type.
template <class T>
Reading<T> ToRefusal(Result result)
{
    return result == TVX_E_FAIL ? Reading<T>::Malformed() : Reading<T>::None(result);
}

template <class T>
Reading<T> ReadOwn(IVariant& variant, Result (IVariant::*get)(T*))
{
    T value{};
    const auto result = (variant.*get)(&value);
    return TVX_FAILED(result) ? ToRefusal<T>(result) : Reading<T>(value);
}

template <class Interface>
Reading<Ref<Interface>> ReadOwn(IVariant& variant, Result (IVariant::*get)(Interface**))
{
    Ref<Interface> object;
    const auto result = (variant.*get)(object.Receive());
    return TVX_FAILED(result) ? ToRefusal<Ref<Interface>>(result) : Reading<Ref<Interface>>(std::move(object));
}

inline Reading<std::string> ReadOwnText(IVariant& variant)
{
    const auto string = ReadOwn(variant, &IVariant::GetString);
    if (!string)
        return ToRefusal<std::string>(string.GetResult());
    return *string ? ToCopy(*string) : std::string();
}

}  // namespace detail

// Reads what stands under key, silently when that is absent or malformed; a null key fails as the map's operation does.
//
// A number is the whole text, with nothing around it, not even white space. std::int32_t: an optional sign and decimal
// digits. double: an optional sign and decimal digits with an optional point and exponent, or inf or nan in any case;
// what is read is what GetDouble gives. A number that T cannot hold, also one too close to 0, is malformed. std::string
// takes every text, with -4 for want of memory. Ref<IObject> is read by GetObject, whose failures are passed on.
// Threads: one at a time.
template <class T>
Reading<T> Read(ISimpleMap& map, const char* key)
{
    static_assert(detail::IsOneOf<T, std::int32_t, double, std::string, Ref<IString>, Ref<IObject>>,
                  "a settings map is read as std::int32_t, double, std::string, Ref<IString> or Ref<IObject>");
    if constexpr (std::is_same_v<T, Ref<IObject>>)
        return detail::ReadUnder(map, key, &ISimpleMap::GetObject);
    else if constexpr (std::is_same_v<T, Ref<IString>>)
        return detail::ReadUnder(map, key, &ISimpleMap::GetString);
    else if constexpr (std::is_same_v<T, std::string>)
        return detail::ReadText<T>(map, key, detail::ToCopy);
    else
        return detail::ReadText<T>(map, key, detail::ToNumber<T>);
}

// Reads the value of a variant of exactly the type of T; every other variant is malformed, and none is absent. A
// variant may hold a null string or object: that is a value, an empty Ref, and the empty text as a std::string.
// Threads: any.
template <class T>
Reading<T> Read(IVariant& variant)
{
    static_assert(detail::IsOneOf<T, bool, std::int32_t, float, double, std::string, Ref<IString>, Ref<IObject>>,
                  "a variant is read as bool, std::int32_t, float, double, std::string, Ref<IString> or Ref<IObject>");
    if constexpr (std::is_same_v<T, bool>)
        return detail::ReadOwn(variant, &IVariant::GetBool);
    else if constexpr (std::is_same_v<T, std::int32_t>)
        return detail::ReadOwn(variant, &IVariant::GetInt);
    else if constexpr (std::is_same_v<T, float>)
        return detail::ReadOwn(variant, &IVariant::GetFloat);
    else if constexpr (std::is_same_v<T, double>)
        return detail::ReadOwn(variant, &IVariant::GetDouble);
    else if constexpr (std::is_same_v<T, std::string>)
        return detail::ReadOwnText(variant);
    else if constexpr (std::is_same_v<T, Ref<IString>>)
        return detail::ReadOwn(variant, &IVariant::GetString);
    else
        return detail::ReadOwn(variant, &IVariant::GetObject);
}

}  // namespace tvx
