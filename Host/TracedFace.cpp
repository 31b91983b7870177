// SPDX-License-Identifier: MIT
#include "Host/TracedFace.h"

#include "Host/TracedObjects.h"

#include <atomic>

namespace tvx::host
{

void TracedFace::Widen(const TracedInterface& as)
{
    if (as_ == &as || !as.IsA(*as_))
        return;
    as_ = &as;
    std::atomic_ref(slots_).store(as.slots, std::memory_order_release);
}

std::uint32_t TracedFace::CountUp()
{
    if (!IsUsable(&GetOperationName<&IObjectBase::AddRef>))
        return 0;
    const auto count = std::invoke(&IObjectBase::AddRef, real_);
    objects_->AddHeld(*object_);
    return count;
}

// The reference is off the books before it is off the object, which may go with it.
std::uint32_t TracedFace::CountDown()
{
    const bool wasHeld = objects_->TakeHeld(*object_);
    if (!wasHeld && object_->state != TracedObject::State::Unloaded)
    {
        objects_->AddFinding(*object_, [] { return "was released more often than it was held"; });
        return 0;
    }
    if (!IsUsable(&GetOperationName<&IObjectBase::Release>))
        return 0;
    const auto count = std::invoke(&IObjectBase::Release, real_);
    if (count == 0)
        objects_->NoteZero(*object_);
    return count;
}

// An interface that the tracer does not know cannot be stood in for.
Result TracedFace::Answer(Result result, const char* id, void* answer, OperationNamer operation, void** out)
{
    if (answer == *out)
        return result;
    const auto* const as = TVX_FAILED(result) || id == nullptr ? nullptr : FindTracedInterface(id);
    if (as != nullptr)
        answer = objects_->Give(static_cast<IObjectBase*>(answer), *as, {*object_->exportId, operation, object_});
    *out = answer;
    return result;
}

bool TracedFace::IsUsable(OperationNamer operation) const
{
    const auto state = object_->state.load(std::memory_order_acquire);
    if (state == TracedObject::State::Alive)
        return true;
    const bool unloaded = state == TracedObject::State::Unloaded;
    const auto tell = [&] {
        return (unloaded ? "was used after its module was unloaded: " : "was used after its last release: ") +
               operation();
    };
    objects_->AddFinding(*object_, tell);
    return false;
}

IObjectBase* TracedCall::GetReal(IObjectBase* given) const
{
    return face.GetObjects().GetReal(given);
}

IEventHandler* TracedCall::GetGuard(IEventHandler* handler) const
{
    return face.GetObjects().GetGuard(handler, subscribes);
}

void TracedCall::AfterSubscribing(const IEventHandler* handler) const
{
    if (handler == nullptr && !subscribes)
        face.GetObjects().ListenAgain(face.GetObject());
}

IObjectBase* TracedCall::GiveFace(IObjectBase* given, const TracedInterface& as) const
{
    return face.GetObjects().Give(given, as, {*face.GetObject().exportId, operation, nullptr});
}

}  // namespace tvx::host
