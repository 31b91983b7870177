// SPDX-License-Identifier: MIT
#include "Host/TracedObjects.h"

#include "Platform/ClassName.h"

namespace tvx::host
{

namespace
{

using Guard = std::lock_guard<std::mutex>;

TracedObject& ToObject(std::uint64_t userData)
{
    return *reinterpret_cast<TracedObject*>(static_cast<std::uintptr_t>(userData));
}

std::string GetClassName(const IObjectBase& object)
{
    auto name = Platform::GetClassNameOf(object);
    return name.empty() ? "a class without a name" : name;
}

}  // namespace

TracedObjects::TracedObjects(TraceLog& log)
    : log_(log),
      listener_(EndListener::Make([this](std::uint64_t userData) { NoteEnd(ToObject(userData)); })),
      guards_(*this)
{
}

// Whatever outlives the tracer tells its end to a listener that has nobody to tell. The objects are left alone: one
// that had no memory to subscribe the listener may have gone unheard.
TracedObjects::~TracedObjects()
{
    listener_->Forget();
}

// Without memory the object goes untraced.
IObjectBase* TracedObjects::Give(IObjectBase* real, const TracedInterface& as, const TracedSource& source) noexcept
try
{
    if (real == nullptr || GetReal(real) != real)
        return real;
    if (auto* const known = TakeKnown(*real, as, source))
        return known->GetInterface();
    const auto* const module = modules_.Find(Platform::GetTable(*real));
    if (module == nullptr)
        return real;
    auto& face = Take(*real, *module, ExamineObject(*real, as), source);
    Listen(face.GetObject());
    return face.GetInterface();
}
catch (...)
{
    return real;
}

IObjectBase* TracedObjects::GetReal(IObjectBase* given) const
{
    const Guard guard(lock_);
    const bool isFace = faceAddresses_.count(given) != 0;
    return isFace ? reinterpret_cast<TracedFace*>(given)->GetReal() : given;
}

// One that is only unsubscribed may have gone already, so nothing is asked of it. One that has a guard is known by it,
// also when there is no memory to find out more.
IEventHandler* TracedObjects::GetGuard(IEventHandler* handler, bool subscribes) noexcept
try
{
    auto* const real = GetReal(handler);
    if (real != handler)
        return static_cast<IEventHandler*>(real);
    if (auto* const known = guards_.FindKnown(handler, subscribes))
        return known;
    const bool isOwn = handler == nullptr || !subscribes || modules_.Find(Platform::GetTable(*handler)) != nullptr;
    return isOwn ? handler : guards_.Make(*handler);
}
catch (...)  // want of memory
{
    return handler;
}

// An object that neither tells its end nor is held may have gone, and something else stand at its address.
std::uint64_t TracedObjects::FindFace(std::uint64_t address) const
{
    const Guard guard(lock_);
    auto* const face = FindKnown(reinterpret_cast<const void*>(static_cast<std::uintptr_t>(address)));
    if (face == nullptr)
        return address;
    const auto& object = face->GetObject();
    const bool isCertain = object.held > 0 || object.isListening;
    return isCertain ? reinterpret_cast<std::uintptr_t>(face->GetInterface()) : address;
}

void TracedObjects::AddHeld(TracedObject& object)
{
    const Guard guard(lock_);
    ++object.held;
}

bool TracedObjects::TakeHeld(TracedObject& object)
{
    const Guard guard(lock_);
    if (object.held == 0)
        return false;
    --object.held;
    return true;
}

// With references again it is another object of the same class, which got the same address in the meantime.
void TracedObjects::NoteZero(TracedObject& object)
{
    const Guard guard(lock_);
    if (object.held == 0)
        object.state = TracedObject::State::Dead;
}

// Of several threads one subscribes.
void TracedObjects::Listen(TracedObject& object) const
{
    if (object.listenedAt != nullptr && !object.isListening.exchange(true))
        object.listenedAt->SubscribeDestroyed(listener_.Get(), reinterpret_cast<std::uintptr_t>(&object));
}

// The subscription may still be there, when it was another event that the object was told to forget.
void TracedObjects::ListenAgain(const TracedObject& object) const
{
    if (!object.isListening)
        return;
    object.listenedAt->UnsubscribeDestroyed(listener_.Get());
    object.listenedAt->SubscribeDestroyed(listener_.Get(), reinterpret_cast<std::uintptr_t>(&object));
}

std::string TracedObjects::GetName(const TracedObject& object)
{
    return *object.className + " of " + object.module->name + " (export " + *object.exportId + ")";
}

// Threads that listened again at the same time are told more than once.
void TracedObjects::NoteEnd(TracedObject& object)
{
    std::uint32_t held = 0;
    {
        const Guard guard(lock_);
        if (object.End(TracedObject::State::Dead))
            held = object.held;
    }
    const auto tell = [held]
    { return "was destroyed while the host program held " + std::to_string(held) + " of its references"; };
    if (held > 0)
        AddFinding(object, tell);
}

// Objects stay where they are when others come.
TracedObject* TracedObjects::FindObject(std::size_t index) noexcept
{
    const Guard guard(lock_);
    return index < objects_.size() ? &objects_[index] : nullptr;
}

// Without the memory to find out, the object stays as it is to a program that is in order.
bool TracedObjects::IsMapped(const TracedObject& object) const noexcept
try
{
    return modules_.Find(object.table) == object.module;
}
catch (...)
{
    return true;
}

// The system is not asked under the lock: it may be running the start code of a module.
void TracedObjects::NoteUnloaded() noexcept
{
    std::size_t index = 0;
    while (auto* const object = FindObject(index++))
    {
        if (object->IsAlive() && !IsMapped(*object))
            object->End(TracedObject::State::Unloaded);
    }
}

void TracedObjects::VisitHeld(const std::function<void(const TracedObject&)>& visit) const
{
    const Guard guard(lock_);
    for (const auto& object : objects_)
    {
        if (object.held > 0 && object.state != TracedObject::State::Dead)
            visit(object);
    }
}

TracedFace* TracedObjects::TakeKnown(IObjectBase& real, const TracedInterface& as, const TracedSource& source)
{
    const Guard guard(lock_);
    auto* const face = FindKnown(&real);
    if (face == nullptr)
        return nullptr;
    auto& object = face->GetObject();
    if (!face->IsSameClass())  // that one has gone without telling
    {
        object.state = TracedObject::State::Dead;
        return nullptr;
    }
    face->Widen(as);
    NoteGivenAgain(object, source);
    ++object.held;
    return face;
}

// Another thread may have come first with the same interface.
TracedFace& TracedObjects::Take(IObjectBase& real, const TracedModule& module, const TracedView& view,
                                const TracedSource& source)
{
    const Guard guard(lock_);
    auto* face = FindKnown(&real);
    if (face == nullptr)
        face = &AddFace(real, *view.longest, FindOrAddObject(real, module, view, source));
    ++face->GetObject().held;
    return *face;
}

TracedFace* TracedObjects::FindKnown(const void* real) const
{
    const auto found = byReal_.find(real);
    return found != byReal_.end() && found->second->GetObject().IsAlive() ? found->second : nullptr;
}

// One of another class that has been known at the address has gone without telling. A new one has all its names before
// anybody finds it.
TracedObject& TracedObjects::FindOrAddObject(IObjectBase& real, const TracedModule& module, const TracedView& view,
                                             const TracedSource& source)
{
    if (source.object != nullptr)
        return *source.object;
    const auto* const className = Keep(GetClassName(real));
    const auto known = byIdentity_.find(view.identity);
    if (known != byIdentity_.end() && known->second->IsAlive() && known->second->className == className)
    {
        NoteGivenAgain(*known->second, source);
        return *known->second;
    }
    const auto* const exportId = Keep(std::string(source.exportId));
    const auto* const givenBy = Keep(source.operation());
    auto& object = objects_.emplace_back();
    object.module = &module;
    object.table = Platform::GetTable(real);
    object.className = className;
    object.exportId = exportId;
    object.givenBy = givenBy;
    object.listenedAt = view.listenedAt;
    byIdentity_[view.identity] = &object;
    return object;
}

TracedFace& TracedObjects::AddFace(IObjectBase& real, const TracedInterface& as, TracedObject& object)
{
    auto& face = faces_.emplace_back(as, real, object, *this);
    faceAddresses_.insert(&face);
    byReal_[&real] = &face;
    return face;
}

// What the program had let go of has another giver from now on, where there is the memory to remember it.
void TracedObjects::NoteGivenAgain(TracedObject& object, const TracedSource& source) noexcept
try
{
    if (object.held > 0)
        return;
    const auto* const exportId = Keep(std::string(source.exportId));
    object.givenBy = Keep(source.operation());
    object.exportId = exportId;
}
catch (...)
{
}

}  // namespace tvx::host
