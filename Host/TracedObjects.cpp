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
      listener_(MakeRef<EndListener>([this](std::uint64_t userData) { NoteEnd(ToObject(userData)); })),
      guards_(*this)
{
}

// Whatever outlives the tracer has nobody to tell its end any more.
TracedObjects::~TracedObjects()
{
    NoteUnloaded();
    for (const auto* const object : GetAlive())
    {
        if (object->listenedAt != nullptr)
            object->listenedAt->UnsubscribeDestroyed(listener_.Get());
    }
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

// One that is only unsubscribed may have gone already, so nothing is asked of it.
IEventHandler* TracedObjects::GetGuard(IEventHandler* handler, bool subscribes) noexcept
try
{
    auto* const real = GetReal(handler);
    if (real != handler)
        return static_cast<IEventHandler*>(real);
    const bool isOwn = handler == nullptr || (subscribes && modules_.Find(Platform::GetTable(*handler)) != nullptr);
    return isOwn ? handler : guards_.Get(*handler, subscribes);
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
    const bool isCertain = object.held > 0 || object.listenedAt != nullptr;
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

// There may be a subscription already; a second one would tell twice.
void TracedObjects::Listen(const TracedObject& object) const
{
    if (object.listenedAt == nullptr)
        return;
    object.listenedAt->UnsubscribeDestroyed(listener_.Get());
    object.listenedAt->SubscribeDestroyed(listener_.Get(), reinterpret_cast<std::uintptr_t>(&object));
}

void TracedObjects::AddFinding(const TracedObject& object, const std::string& what)
{
    log_.AddFinding(*object.className + " of " + object.module->name + " (export " + *object.exportId + ") " + what);
}

void TracedObjects::NoteEnd(TracedObject& object)
{
    std::uint32_t held = 0;
    {
        const Guard guard(lock_);
        object.state = TracedObject::State::Dead;
        held = object.held;
    }
    if (held > 0)
        AddFinding(object, "was destroyed while the host program held " + std::to_string(held) + " of its references");
}

std::vector<TracedObject*> TracedObjects::GetAlive()
{
    std::vector<TracedObject*> alive;
    const Guard guard(lock_);
    for (auto& object : objects_)
    {
        if (object.IsAlive())
            alive.push_back(&object);
    }
    return alive;
}

void TracedObjects::NoteUnloaded()
{
    for (auto* const object : GetAlive())
    {
        if (modules_.Find(object->table) != object->module)
            object->state = TracedObject::State::Unloaded;
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
    Hold(object, source);
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
    Hold(face->GetObject(), source);
    return *face;
}

TracedFace* TracedObjects::FindKnown(const void* real) const
{
    const auto found = byReal_.find(real);
    return found != byReal_.end() && found->second->GetObject().IsAlive() ? found->second : nullptr;
}

// One of another class that has been known at the address has gone without telling.
TracedObject& TracedObjects::FindOrAddObject(IObjectBase& real, const TracedModule& module, const TracedView& view,
                                             const TracedSource& source)
{
    if (source.object != nullptr)
        return *source.object;
    const auto* const className = Keep(GetClassName(real));
    const auto known = byIdentity_.find(view.identity);
    if (known != byIdentity_.end() && known->second->IsAlive() && known->second->className == className)
        return *known->second;
    auto& object = objects_.emplace_back();
    object.module = &module;
    object.table = Platform::GetTable(real);
    object.className = className;
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

void TracedObjects::Hold(TracedObject& object, const TracedSource& source)
{
    if (object.held == 0)
    {
        object.exportId = Keep(std::string(source.exportId));
        object.givenBy = Keep(source.operation());
    }
    ++object.held;
}

}  // namespace tvx::host
