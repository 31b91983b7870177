// SPDX-License-Identifier: MIT
#pragma once

#include "Host/OperationName.h"
#include "Host/TracedCall.h"
#include "Platform/OperationTable.h"

#include <functional>
#include <tuple>
#include <type_traits>

namespace tvx::host
{

// What the host program gets in place of a module's interface: an object that is called by the same slots, passes the
// call on and keeps the books. One stands for one interface pointer of the module; it stays when the object behind it
// has gone, so that a late call finds somebody who knows.
//
// It is no C++ object with virtual functions, only laid out as one: its first word is the table of the interface's
// slots. Nobody reaches it but through that table. Any thread.
class TracedFace
{
public:
    TracedFace(const TracedInterface& as, IObjectBase& real, TracedObject& object, TracedObjects& objects)
        : slots_(as.slots),
          as_(&as),
          real_(&real),
          realTable_(Platform::GetTable(real)),
          object_(&object),
          objects_(&objects)
    {
    }

    // As the host program holds it.
    IObjectBase* GetInterface() { return reinterpret_cast<IObjectBase*>(this); }

    IObjectBase* GetReal() const { return real_; }
    TracedObject& GetObject() const { return *object_; }
    TracedObjects& GetObjects() const { return *objects_; }

    // Whether what stands at the real pointer is of the class that stood there when the face was made.
    bool IsSameClass() const { return Platform::GetTable(*real_) == realTable_; }

    // Lets the face be called by the slots of as, too, when that derives from what it is. The new table has the slots
    // of the old one in front. Callers read the word of the table as every call of an operation does, without a lock:
    // all that can be done for them is that it changes as a whole and that the table is there before.
    void Widen(const TracedInterface& as);

    // What a table holds for an operation: code that takes the face as "this".
    template <auto Operation>
    static const void* GetCode();

private:
    std::uint32_t CountUp();
    std::uint32_t CountDown();

    template <auto Operation>
    Result Ask(const char* id, void** out);
    Result Answer(Result result, const char* id, void* answer, OperationNamer operation, void** out);

    template <auto Operation, class Interface, class Answered, class... Arguments>
    Answered Run(Arguments... arguments);

    template <auto Operation, class Interface, class Answered, class... Arguments>
    static const void* GetRunCode(Answered (Interface::*)(Arguments...))
    {
        return Platform::GetCodeAddress(&TracedFace::Run<Operation, Interface, Answered, Arguments...>);
    }

    bool IsUsable(OperationNamer operation) const;

    const void* const* slots_;  // the first word
    const TracedInterface* as_;
    IObjectBase* real_;
    const void* realTable_;
    TracedObject* object_;
    TracedObjects* objects_;
};

static_assert(std::is_standard_layout_v<TracedFace>, "the slots have to be the first word");

template <auto Operation>
const void* TracedFace::GetCode()
{
    if constexpr (IsSameOperation<Operation, &IObjectBase::AddRef>)
        return Platform::GetCodeAddress(&TracedFace::CountUp);
    else if constexpr (IsSameOperation<Operation, &IObjectBase::Release>)
        return Platform::GetCodeAddress(&TracedFace::CountDown);
    else if constexpr (IsSameOperation<Operation, &IObjectBase::QueryInterface> ||
                       IsSameOperation<Operation, &IObjectBase::DoQueryInterface>)
        return Platform::GetCodeAddress(&TracedFace::Ask<Operation>);
    else
        return GetRunCode<Operation>(Operation);
}

template <auto Operation>
Result TracedFace::Ask(const char* id, void** out)
{
    if (!IsUsable(&GetOperationName<Operation>))
        return TVX_E_FAIL;
    if (out == nullptr)
        return std::invoke(Operation, real_, id, out);
    void* answer = *out;
    const auto result = std::invoke(Operation, real_, id, &answer);
    return Answer(result, id, answer, &GetOperationName<Operation>, out);
}

template <auto Operation, class Interface, class Answered, class... Arguments>
Answered TracedFace::Run(Arguments... arguments)
{
    if (!IsUsable(&GetOperationName<Operation>))
        return GetRefusal<Answered>();
    TracedCall call = {*this, &GetOperationName<Operation>, Subscribes(arguments...)};
    std::tuple<TracedArgument<Arguments>...> passed(TracedArgument<Arguments>(call, arguments)...);
    const auto run = [&](auto&... argument) -> Answered
    {
        if constexpr (std::is_void_v<Answered>)
        {
            Platform::CallBySlot<Operation, Interface>(real_, argument.Get()...);
            (argument.Finish(true), ...);
        }
        else
        {
            auto answer = Platform::CallBySlot<Operation, Interface>(real_, argument.Get()...);
            (argument.Finish(!IsFailure(answer)), ...);
            return call.Give(std::move(answer));
        }
    };
    return std::apply(run, passed);
}

}  // namespace tvx::host
