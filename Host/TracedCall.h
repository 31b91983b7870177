// SPDX-License-Identifier: MIT
#pragma once

#include "Host/TracedInterface.h"
#include "Interfaces/IObject.h"
#include "Interfaces/Ref.h"

#include <concepts>
#include <string>
#include <type_traits>
#include <utility>

namespace tvx::host
{

class TracedFace;
class TracedObjects;
struct TracedObject;

// Gives the name of an operation; made only when somebody wants to read it.
using OperationNamer = std::string (*)();

template <class Interface>
const TracedInterface& GetTracedInterface();

template <class Type>
concept IsInterface = std::derived_from<std::remove_const_t<Type>, IObjectBase>;

// One call of the host program through a face, and what crosses with it.
struct TracedCall
{
    TracedFace& face;
    OperationNamer operation;
    bool subscribes;  // for a handler among the arguments: adds it; otherwise removes it

    // The module's own interface behind a face; anything else stays what it is.
    IObjectBase* GetReal(IObjectBase* given) const;

    IEventHandler* GetGuard(IEventHandler* handler) const;

    // After the operation ran: null removes everybody, also the tracer, from hearing of the object's end.
    void AfterSubscribing(const IEventHandler* handler) const;

    // A face for what came out of the module, with its reference.
    IObjectBase* GiveFace(IObjectBase* given, const TracedInterface& as) const;

    template <class Interface>
    Interface* GiveFace(Interface* given) const
    {
        using Plain = std::remove_const_t<Interface>;
        return static_cast<Plain*>(GiveFace(const_cast<Plain*>(given), GetTracedInterface<Plain>()));
    }

    // What an operation answers by its result.
    template <class Answered>
    Answered Give(Answered answer) const
    {
        return answer;
    }

    template <class Interface>
    Ref<Interface> Give(Ref<Interface> answer) const
    {
        return Ref<Interface>::Adopt(GiveFace(answer.Detach()));
    }
};

// An argument on its way into the module, and what has to be done with it when the operation is back.
template <class Type>
class TracedArgument
{
public:
    TracedArgument(const TracedCall&, Type value) : value_(value) {}

    Type Get() const { return value_; }
    void Finish(bool) {}

private:
    Type value_;
};

template <IsInterface Interface>
class TracedArgument<Interface*>
{
public:
    TracedArgument(const TracedCall& call, Interface* given)
    {
        auto* const real = call.GetReal(given);
        real_ = real == given ? given : static_cast<Interface*>(real);
    }

    Interface* Get() const { return real_; }
    void Finish(bool) {}

private:
    Interface* real_;
};

template <>
class TracedArgument<IEventHandler*>
{
public:
    TracedArgument(const TracedCall& call, IEventHandler* handler)
        : call_(call),
          handler_(handler),
          guard_(call.GetGuard(handler))
    {
    }

    IEventHandler* Get() const { return guard_; }
    void Finish(bool) { call_.AfterSubscribing(handler_); }

private:
    const TracedCall& call_;
    IEventHandler* handler_;
    IEventHandler* guard_;
};

// A place for a result. What the module does not write stays untouched, and what it reads there is what the host wrote.
template <IsInterface Interface>
class TracedArgument<Interface**>
{
public:
    TracedArgument(const TracedCall& call, Interface** out)
        : call_(call),
          out_(out),
          value_(out == nullptr ? nullptr : *out)
    {
    }

    Interface** Get() { return out_ == nullptr ? nullptr : &value_; }

    void Finish(bool succeeded)
    {
        if (out_ != nullptr && value_ != *out_)
            *out_ = succeeded ? call_.GiveFace(value_) : value_;
    }

private:
    const TracedCall& call_;
    Interface** out_;
    Interface* value_;
};

// Whether a call with these arguments adds a handler: the flag says it, or that there is a value to pass back.
constexpr bool Subscribes(IEventHandler*, std::uint64_t)
{
    return true;
}

constexpr bool Subscribes(IEventHandler*, std::uint64_t, bool subscribe)
{
    return subscribe;
}

template <class... Arguments>
constexpr bool Subscribes(const Arguments&...)
{
    return false;
}

// The results of operations are 32-bit integers, as other numbers are, but none of those comes with a place for a
// result.
template <class Answered>
constexpr bool IsFailure(const Answered& answer)
{
    if constexpr (std::is_same_v<Answered, Result>)
        return TVX_FAILED(answer);
    else
        return false;
}

// What a call gives that is not passed on.
template <class Answered>
Answered GetRefusal()
{
    if constexpr (std::is_same_v<Answered, Result>)
        return TVX_E_FAIL;
    else
        return Answered();
}

}  // namespace tvx::host
