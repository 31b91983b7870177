// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <type_traits>
#include <utility>
#include <variant>

namespace tvx::host
{

// What went wrong, for programs that choose by it. A new kind goes to the end.
enum class ErrorKind
{
    CannotRead,     // the file is missing, of the wrong sort, or refuses to be read
    NotAModule,     // the file is readable but of no module format
    DamagedModule,  // the module format contradicts itself or the file's size
    NoDocument,     // a sound module without a configuration document
    BadDocument,    // the configuration document is not what it has to be
    CannotLoad,     // the system refuses to map the module
    NotExported,    // no installed module has such an export, contract or format
    MissingImport,  // a required import that no installed module fulfils
    Misbehaved,     // the module does not keep what its document promises
    BadSettings,    // a settings file that is no settings file, or a map that no settings file can say
    BadPicture,     // a picture file that is no picture, or an image that no picture file can say
};

// A failure: the kind for programs, and for people one line that names the file concerned.
struct Error
{
    ErrorKind kind;       // for programs
    std::string message;  // for people, one line
};

// Text that files or users supplied, fit to be shown: a control character becomes '?', so that it stays one line and no file
// can send commands to a terminal.
inline std::string MakeOneLine(std::string text)
{
    for (char& character : text)
    {
        const auto code = static_cast<unsigned char>(character);
        if (code < 0x20 || code == 0x7F)
        {
            character = '?';
        }
    }
    return text;
}

// The one way to make an error from such text.
inline Error MakeError(ErrorKind kind, std::string message)
{
    return {kind, MakeOneLine(std::move(message))};
}

// The result of an operation that gives a T or fails with an error.
//
// Taking the value of a failure, or the error of a success, throws std::bad_variant_access.
template <class T>
class [[nodiscard]] Outcome
{
    static_assert(!std::is_same_v<T, Error>, "an error is never a value");

public:
    // A success.
    Outcome(T value) : state_(std::in_place_index<0>, std::move(value)) {}

    // A failure.
    Outcome(Error error) : state_(std::in_place_index<1>, std::move(error)) {}

    // Whether it is a success.
    explicit operator bool() const { return state_.index() == 0; }

    // The value of a success.
    T& operator*() & { return std::get<0>(state_); }

    const T& operator*() const& { return std::get<0>(state_); }

    // The value of a success. By value, so that a reference to the content of a temporary outcome does not dangle.
    T operator*() && { return std::get<0>(std::move(state_)); }

    // The value of a success.
    T* operator->() { return &std::get<0>(state_); }

    const T* operator->() const { return &std::get<0>(state_); }

    // The error of a failure.
    const Error& GetError() const { return std::get<1>(state_); }

private:
    std::variant<T, Error> state_;
};

}  // namespace tvx::host
